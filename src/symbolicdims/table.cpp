#include "services/errors.h"
#include "symbolicdims/ids.h"

#include <tvtypes/symbolicdims/table.h>

#include <limits>
#include <ostream>
#include <utility>

namespace TVTypeSys {

SymbolicDimsTable::SymbolicDimsTable() : expressions_(std::make_unique<TV::SymbolicExprTable>()) {
    initialize();
    constraints_ = std::make_unique<SymbolicDimsConstraints>(this);
}

SymbolicDimsTable::~SymbolicDimsTable() = default;

void SymbolicDimsTable::initialize() {
    for (const char* name : {"INHERIT", "NOSYMBOLIC"}) {
        registerSymbolicDims(name);
    }
}

void SymbolicDimsTable::resetToBuiltin() {
    auto expressions = std::exchange(expressions_, std::make_unique<TV::SymbolicExprTable>());
    try {
        initialize();
        constraints_ = std::make_unique<SymbolicDimsConstraints>(this);
    } catch (...) {
        expressions_ = std::move(expressions);
        throw;
    }
    displayStrings_.clear();
}

bool SymbolicDimsTable::isSymbolicDimsIdValid(int id) const {
    return id >= -1 && id < getNumSymbolicDimss() - 1;
}

bool SymbolicDimsTable::isSymbolicDimsIdValid_NotInherit(int id) const {
    return id >= 0 && isSymbolicDimsIdValid(id);
}

void SymbolicDimsTable::checkSymbolicDimsId(int id) const {
    if (!isSymbolicDimsIdValid(id)) {
        throwError(general::InvalidDataTypeId(id));
    }
}

int SymbolicDimsTable::getNumSymbolicDimss() const {
    return static_cast<int>(expressions_->size());
}

SymbolicDims SymbolicDimsTable::getSymbolicDims(int id) const {
    // A value only adds expressions to the table, which is allowed on a const table.
    return {const_cast<SymbolicDimsTable*>(this), id};
}

SymbolicDims SymbolicDimsTable::getSymbolicDims(const char* name) {
    return SymbolicDimsString(this, orEmpty(name));
}

SymbolicDims SymbolicDimsTable::getSymbolicDimsAt(unsigned long index) const {
    // Not an id of any table.
    constexpr int last = std::numeric_limits<int>::max();
    return getSymbolicDims(index <= static_cast<unsigned long>(last) ? toDimsId(index) : last);
}

const TV::SymbolicExpr& SymbolicDimsTable::getSymbolicExpr(unsigned long expressionId) const {
    return expressions_->get(expressionId);
}

const char* SymbolicDimsTable::getDisplayString(int id) {
    checkSymbolicDimsId(id);
    displayStrings_.resize(expressions_->size());
    std::string& text = displayStrings_[toExpressionId(id)];
    if (text.empty()) {
        text = SymbolicDims(this, id).toString();
    }
    return text.c_str();
}

void SymbolicDimsTable::print(std::ostream& stream) const {
    stream << "SymbolicDimsTable" << std::endl;
    stream << "Number of SymbolicDimss : " << getNumSymbolicDimss() << std::endl << std::endl;
    for (unsigned long i = 0; i < expressions_->size(); ++i) {
        getSymbolicDimsAt(i).print(stream);
    }
    stream << std::endl;
}

std::ostream& operator<<(std::ostream& stream, const SymbolicDimsTable& table) {
    table.print(stream);
    return stream;
}

} // namespace TVTypeSys
