#include "services/errors.h"
#include "services/guard.h"
#include "services/names.h"
#include "symbolicdims/ids.h"

#include <tvtypes/symbolicdims/table.h>

#include <symbolicexpr/copy.h>
#include <symbolicexpr/parser.h>

#include <boost/lexical_cast.hpp>

#include <algorithm>
#include <cassert>
#include <cstdlib>
#include <optional>

namespace TVTypeSys {

namespace {

/// Whether strtol with base 0 reads the whole text, whatever the size of the number. True for "".
bool isNumber(const std::string& text) {
    char* end = nullptr;
    static_cast<void>(std::strtol(text.c_str(), &end, 0));
    return *end == '\0';
}

bool isDigits(const std::string& text) {
    return !text.empty() &&
           std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

} // namespace

int SymbolicDimsTable::registerSymbolicDims(const char* text) {
    const std::string name = orEmpty(text);
    if (isNumber(name)) {
        return registerSymbolicDims(boost::lexical_cast<int>(name));
    }
    return internExpression(*expressions_, TV::SymbolicString(*expressions_, name));
}

int SymbolicDimsTable::registerSymbolicDims(int value) {
    return internExpression(*expressions_, TV::SymbolicIntValue(*expressions_, value));
}

int SymbolicDimsTable::registerSymbolicDims(const std::vector<std::string>& sizes) {
    // Converted first, so that nothing is registered if a number is too large.
    std::vector<std::optional<int>> numbers;
    numbers.reserve(sizes.size());
    for (const std::string& size : sizes) {
        numbers.push_back(isDigits(size) ? std::optional(boost::lexical_cast<int>(size))
                                         : std::nullopt);
    }
    // Made in a table of its own and copied as a whole, so that a list is registered completely or
    // not at all. A copy has the order of registration: the sizes, then the list.
    TV::SymbolicExprTable list;
    std::vector<unsigned long> ids;
    ids.reserve(sizes.size());
    for (std::size_t i = 0; i < sizes.size(); ++i) {
        ids.push_back(numbers[i] ? TV::SymbolicIntValue(list, *numbers[i]).getId(list)
                                 : TV::SymbolicString(list, sizes[i]).getId(list));
    }
    const unsigned long id =
        ids.size() == 1 ? ids.front() : TV::SymbolicNDExpr(list, ids).getId(list);
    return toDimsId(TV::SymbolicExprCopy(list, *expressions_)(id));
}

int SymbolicDimsTable::registerSymbolicDimsExpr(const char* text) {
    return toDimsId(TV::SymbolicExprParser(*expressions_)(orEmpty(text)));
}

int SymbolicDimsTable::importSymbolicDims(const SymbolicDimsTable& source, int id) {
    return toDimsId(TV::SymbolicExprCopy(*source.expressions_, *expressions_)(toExpressionId(id)));
}

tvsvDiagnosticImpl* SymbolicDimsTable::RegisterSymbolicDims(SymbolicDimsTable* table,
                                                            const char* blockName, const char* dims,
                                                            int* idOut) {
    assert(table != nullptr && idOut != nullptr);
    return guarded(blockName, [&] { *idOut = table->registerSymbolicDims(dims); });
}

bool SymbolicDimsTable::isAValidSymbolicDims(const char* text) { return isIdentifier(text); }

void SymbolicDimsTable::validateSymbolicDimsExpr(const char* text) {
    if (!isAValidSymbolicDims(text)) {
        throwError(general::InvalidDataType(orEmpty(text)));
    }
}

} // namespace TVTypeSys
