#include "dims/reading.h"

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
#include <vector>

namespace tvtool::dims {

namespace {

/// The byte at which the parser leaves what is an expression.
std::size_t positionIn(const std::string& text, const fnd::except::IException& refusal) {
    const std::vector<std::string>& arguments = refusal.diagnostic().arguments(0);
    const std::size_t column = arguments.size() == 2 ? std::stoull(arguments[1]) : 1;
    return std::min(column - 1, text.size());
}

unsigned long parsed(const std::string& text, TV::SymbolicExprTable& expressions) {
    try {
        return TV::SymbolicExprParser(expressions)(text);
    } catch (const fnd::except::IException& refusal) {
        const std::size_t position = positionIn(text, refusal);
        const std::size_t longest = std::size_t{1} << 20;
        const char* const sentence =
            text.size() > longest ? "an expression ends after at most 1 MiB"
            : text.find_first_not_of(" \t\r\n", position) == std::string::npos
                ? "the expression is not complete"
                : "an expression does not go on like this";
        throw text::ParseError(sentence, text, position);
    }
}

/// What an expression is made of, each part once, parts first.
std::vector<unsigned long> partsOf(unsigned long id, const TV::SymbolicExprTable& expressions) {
    std::vector<bool> isSeen(expressions.size());
    std::vector<unsigned long> parts{id};
    isSeen[id] = true;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        const TV::SymbolicExpr& expr = expressions.get(parts[i]);
        const auto add = [&](unsigned long part) {
            if (!isSeen[part]) {
                isSeen[part] = true;
                parts.push_back(part);
            }
        };
        for (unsigned long a = 0; a < expr.getNumArgs(); ++a) {
            add(expr.getArg(a));
        }
        for (unsigned long e = 0; e < expr.getNumInputs(); ++e) {
            add(expr.getInput(e));
        }
    }
    std::ranges::sort(parts);
    return parts;
}

/// Why an expression has no simplest form.
std::string obstacleOf(unsigned long id, TV::SymbolicExprTable& expressions) {
    const TV::SymbolicExprSimplify simplify(expressions);
    const TV::SymbolicExprPrinter print(expressions);
    // Each divisor may take long to multiply out.
    int divisorsLeft = 100;
    for (const unsigned long part : partsOf(id, expressions)) {
        const TV::SymbolicExpr& expr = expressions.get(part);
        for (unsigned long a = 0; a < expr.getNumArgs(); ++a) {
            if (expressions.get(expr.getArg(a)).isMultiExpr()) {
                return "a list stands inside arithmetic";
            }
        }
        if (expr.op() == TV::SymbolicDivideOp && divisorsLeft-- > 0) {
            unsigned long isSimplified = 0;
            const unsigned long divisor = simplify.simplify(expr.getArg(1), isSimplified);
            if (expressions.get(divisor).isNumValue() && print(expressions.get(divisor)) == "0") {
                constexpr std::size_t longest = 60;
                return fmt::format(
                    "it divides by {}, which is 0",
                    text::shortened(print(expressions.get(expr.getArg(1))), longest));
            }
        }
    }
    return "it has too many terms to be multiplied out";
}

} // namespace

Reading readDims(const std::string& text, TVTypeSys::SymbolicDimsTable& table) {
    // A table of its own, so that the model's gets no more than the two.
    TV::SymbolicExprTable expressions;
    const unsigned long written = parsed(text, expressions);
    unsigned long isSimplified = 0;
    const unsigned long simplest =
        TV::SymbolicExprSimplify(expressions).simplify(written, isSimplified);
    Reading reading;
    reading.id = table.registerSymbolicDimsExpr(text.c_str());
    reading.simplified = reading.id;
    if (isSimplified == 0) {
        reading.obstacle = obstacleOf(written, expressions);
    }
    if (simplest != written) {
        try {
            const std::string form =
                TV::SymbolicExprPrinter(expressions)(expressions.get(simplest));
            reading.simplified = table.registerSymbolicDimsExpr(form.c_str());
        } catch (const fnd::except::IException&) {
            reading.obstacle = "its simplest form is longer than the library reads";
        }
    }
    return reading;
}

int sizeOf(const TVTypeSys::SymbolicDimsTable& table, int id) {
    // A list of one entry is this entry.
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

} // namespace tvtool::dims
