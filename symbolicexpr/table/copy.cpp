#include <symbolicexpr/copy.h>

#include "table/parts.h"

#include <symbolicexpr/expr.h>

#include <boost/unordered/unordered_flat_map.hpp>

#include <vector>

namespace TV {
namespace {

/// A part of an expression, on the way to its own parts.
struct Visit {
    unsigned long id;
    const SymbolicExpr* expr;
    unsigned long next; ///< the part that comes next
};

} // namespace

unsigned long SymbolicExprCopy::operator()(unsigned long id) const {
    boost::unordered_flat_map<unsigned long, unsigned long> copies;
    const auto copyOfPart = [&](const SymbolicExpr& expr, unsigned long index) {
        return copies.at(part(expr, index));
    };
    const auto copyOf = [&](const SymbolicExpr& expr) {
        switch (expr.op()) {
        case SymbolicNameOp:
        case SymbolicNumberOp:
            return expr.getId(*destination_);
        case SymbolicUnaryMinusOp:
            return SymbolicUnaryMinusExpr(*destination_, copyOfPart(expr, 0)).getId(*destination_);
        case SymbolicNDOp: {
            std::vector<unsigned long> entries(expr.getNumInputs());
            for (std::size_t i = 0; i < entries.size(); ++i) {
                entries[i] = copyOfPart(expr, i);
            }
            return SymbolicNDExpr(*destination_, entries).getId(*destination_);
        }
        default:
            return binaryId(*destination_, expr.op(), copyOfPart(expr, 0), copyOfPart(expr, 1));
        }
    };

    std::vector<Visit> visits{{id, &source_->get(id), 0}};
    while (!visits.empty()) {
        Visit& visit = visits.back();
        if (visit.next < numberOfParts(*visit.expr)) {
            const unsigned long inside = part(*visit.expr, visit.next++);
            if (!copies.contains(inside)) {
                visits.push_back({inside, &source_->get(inside), 0});
            }
        } else {
            copies.emplace(visit.id, copyOf(*visit.expr));
            visits.pop_back();
        }
    }
    return copies.at(id);
}

} // namespace TV
