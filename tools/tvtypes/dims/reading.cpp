#include "dims/reading.h"

#include "dims/names.h"
#include "text/quote.h"

#include <fnd/except.h>
#include <symbolicexpr/expr.h>
#include <symbolicexpr/parser.h>
#include <symbolicexpr/printer.h>
#include <symbolicexpr/simplify.h>
#include <symbolicexpr/table.h>
#include <tv_services/diagnostics.h>

#include <fmt/format.h>

#include <algorithm>
#include <set>
#include <utility>
#include <vector>

namespace tvtool::dims {

namespace {

/// Returns the byte at which the parser has rejected the text.
std::size_t errorPosition(const std::string& text, const fnd::except::IException& error) {
    const std::vector<std::string>& arguments = error.diagnostic().arguments(0);
    const std::size_t column = arguments.size() == 2 ? std::stoull(arguments[1]) : 1;
    return std::min(column - 1, text.size());
}

unsigned long parse(const std::string& text, const EncodedText& encoded,
                    TV::SymbolicExprTable& expressions) {
    try {
        return TV::SymbolicExprParser(expressions)(encoded.text);
    } catch (const fnd::except::IException& error) {
        const std::size_t position = encoded.givenPosition(errorPosition(encoded.text, error));
        const std::size_t longest = std::size_t{1} << 20;
        const char* const sentence =
            encoded.text.size() > longest ? "an expression ends after at most 1 MiB"
            : text.find_first_not_of(" \t\r\n", position) == std::string::npos
                ? "the expression is not complete"
                : "an expression does not go on like this";
        throw text::ParseError(sentence, text, position);
    }
}

/// Returns the ids of an expression and of its parts, each once, in ascending order.
std::set<unsigned long> partsOf(unsigned long id, const TV::SymbolicExprTable& expressions) {
    std::set<unsigned long> parts{id};
    std::vector<unsigned long> pending{id};
    while (!pending.empty()) {
        const TV::SymbolicExpr& expr = expressions.get(pending.back());
        pending.pop_back();
        const auto add = [&](unsigned long part) {
            if (parts.insert(part).second) {
                pending.push_back(part);
            }
        };
        for (unsigned long a = 0; a < expr.getNumArgs(); ++a) {
            add(expr.getArg(a));
        }
        for (unsigned long e = 0; e < expr.getNumInputs(); ++e) {
            add(expr.getInput(e));
        }
    }
    return parts;
}

/// Stores in the dimension why an expression has no simplest form.
void findObstacle(RegisteredDims& dims, unsigned long id, TV::SymbolicExprTable& expressions) {
    const TV::SymbolicExprSimplify simplify(expressions);
    const TV::SymbolicExprPrinter print(expressions);
    // Limits the time, because a divisor may take long to multiply out.
    int divisorsLeft = 100;
    for (const unsigned long part : partsOf(id, expressions)) {
        const TV::SymbolicExpr& expr = expressions.get(part);
        for (unsigned long a = 0; a < expr.getNumArgs(); ++a) {
            if (expressions.get(expr.getArg(a)).isMultiExpr()) {
                dims.obstacle = "a list stands inside arithmetic";
                return;
            }
        }
        if (expr.op() == TV::SymbolicDivideOp && divisorsLeft-- > 0) {
            unsigned long isSimplified = 0;
            const unsigned long divisor = simplify.simplify(expr.getArg(1), isSimplified);
            if (expressions.get(divisor).isNumValue() && print(expressions.get(divisor)) == "0") {
                constexpr std::size_t longest = 60;
                const std::string text = decodeNames(print(expressions.get(expr.getArg(1))));
                dims.isDivisionByZero = true;
                dims.obstacle = text == "0" ? "division by zero"
                                            : fmt::format("division by zero: {} is 0",
                                                          text::shortened(text, longest));
                return;
            }
        }
    }
    dims.obstacle = "it has too many terms to be multiplied out";
}

std::optional<exact::Integer> integerAt(const TVTypeSys::SymbolicDimsTable& table,
                                        unsigned long expressionId) {
    constexpr std::size_t longest = 4000;
    const TV::SymbolicExpr& expr = table.getSymbolicExpr(expressionId);
    if (!expr.isNumValue()) {
        return std::nullopt;
    }
    const std::string& digits = static_cast<const TV::SymbolicIntValue&>(expr).text();
    return digits.size() <= longest ? std::optional(exact::Integer(digits)) : std::nullopt;
}

} // namespace

RegisteredDims registerDims(const std::string& text, TVTypeSys::SymbolicDimsTable& table) {
    // Parsed in a table of its own, so that only the two results enter the model's table.
    TV::SymbolicExprTable expressions;
    const EncodedText encoded = encodeNames(text);
    const unsigned long written = parse(text, encoded, expressions);
    unsigned long isSimplified = 0;
    const unsigned long simplest =
        TV::SymbolicExprSimplify(expressions).simplify(written, isSimplified);
    RegisteredDims dims;
    dims.id = table.registerSymbolicDimsExpr(encoded.text.c_str());
    dims.simplified = dims.id;
    if (isSimplified == 0) {
        findObstacle(dims, written, expressions);
    }
    if (simplest != written) {
        try {
            const std::string form =
                TV::SymbolicExprPrinter(expressions)(expressions.get(simplest));
            dims.simplified = table.registerSymbolicDimsExpr(form.c_str());
        } catch (const fnd::except::IException&) {
            dims.obstacle = "its simplest form is longer than the library reads";
        }
    }
    return dims;
}

int sizeOf(const TVTypeSys::SymbolicDimsTable& table, int id) {
    // A list of one entry has the size of this entry, which may be a list again. The entry of a
    // single dimension is the dimension itself.
    TVTypeSys::SymbolicDims dims = table.getSymbolicDims(id);
    for (int entry = id; dims.getNumDimensions() == 1; id = entry) {
        dims = dims.getDimension(0);
        entry = dims.getId();
        if (entry == id) {
            return id;
        }
    }
    return dims.getSize().getId();
}

int flattened(TVTypeSys::SymbolicDimsTable& table, int id) {
    std::vector<int> entries;
    std::vector<int> pending{id};
    while (!pending.empty()) {
        const int next = pending.back();
        pending.pop_back();
        const TV::SymbolicExpr& expression =
            table.getSymbolicExpr(static_cast<unsigned long>(next) + 1);
        if (!expression.isMultiExpr()) {
            entries.push_back(next);
            continue;
        }
        for (unsigned long i = expression.getNumInputs(); i > 0; --i) {
            pending.push_back(static_cast<int>(expression.getInput(i - 1)) - 1);
        }
    }
    return entries.size() == 1 ? entries.front()
                               : TVTypeSys::SymbolicDimsND(table, entries).getId();
}

std::optional<exact::Number> numberOf(const TVTypeSys::SymbolicDimsTable& table, int id) {
    const auto expressionId = static_cast<unsigned long>(id) + 1;
    const TV::SymbolicExpr& expr = table.getSymbolicExpr(expressionId);
    const bool isQuotient = expr.op() == TV::SymbolicDivideOp;
    const auto numerator = integerAt(table, isQuotient ? expr.getArg(0) : expressionId);
    const auto denominator =
        isQuotient ? integerAt(table, expr.getArg(1)) : std::optional(exact::Integer(1));
    return numerator && denominator && *denominator != 0
               ? std::optional(exact::Number(*numerator, *denominator))
               : std::nullopt;
}

std::optional<exact::Number> differenceOf(const TVTypeSys::SymbolicDimsTable& table, int a, int b) {
    return numberOf(table, (table.getSymbolicDims(a) - table.getSymbolicDims(b)).getId());
}

void addDetails(const std::string& text, TVTypeSys::SymbolicDimsTable& table,
                std::vector<DimsDetails>& details) {
    const RegisteredDims dims = registerDims(text, table);
    const TVTypeSys::SymbolicDims simplified = table.getSymbolicDims(dims.simplified);
    DimsDetails added;
    added.text = text;
    added.id = dims.id;
    added.simplified = decodeNames(simplified.toString());
    added.simplifiedId = dims.simplified;
    added.obstacle = dims.obstacle;
    if (simplified.getNumDimensions() > 1) {
        added.sizeId = sizeOf(table, dims.simplified);
        added.size = decodeNames(table.getSymbolicDims(*added.sizeId).toString());
    }
    const auto first = std::ranges::find(details, dims.simplified, &DimsDetails::simplifiedId);
    if (first != details.end()) {
        added.equal = static_cast<std::size_t>(first - details.begin());
    }
    details.push_back(std::move(added));
}

} // namespace tvtool::dims
