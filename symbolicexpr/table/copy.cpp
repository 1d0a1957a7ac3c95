#include <symbolicexpr/copy.h>

#include "table/contents.h"
#include "table/operands.h"

#include <symbolicexpr/expr.h>

#include <boost/unordered/unordered_flat_map.hpp>

#include <vector>

namespace TV {
namespace {

/// An expression on the stack of the depth-first traversal.
struct Visit {
    unsigned long id;
    const SymbolicExpr* expr;
    unsigned long next; ///< index of the next operand to visit
};

} // namespace

unsigned long SymbolicExprCopy::operator()(unsigned long id) const {
    boost::unordered_flat_map<unsigned long, unsigned long> copies;
    const auto copiedOperand = [&](const SymbolicExpr& expr, unsigned long index) {
        return copies.at(operandId(expr, index));
    };
    const auto internCopy = [&](const SymbolicExpr& expr) {
        switch (expr.op()) {
        case SymbolicNameOp:
        case SymbolicNumberOp:
            return expr.getId(*destination_);
        case SymbolicUnaryMinusOp:
            return SymbolicUnaryMinusExpr(*destination_, copiedOperand(expr, 0))
                .getId(*destination_);
        case SymbolicNDOp: {
            std::vector<unsigned long> entries(expr.getNumInputs());
            for (std::size_t i = 0; i < entries.size(); ++i) {
                entries[i] = copiedOperand(expr, i);
            }
            return SymbolicNDExpr(*destination_, entries).getId(*destination_);
        }
        default:
            return internBinary(*destination_, expr.op(), copiedOperand(expr, 0),
                                copiedOperand(expr, 1));
        }
    };

    Transaction transaction(*destination_->contents_);
    // Post-order with an explicit stack: expressions can be deeper than the call stack allows.
    std::vector<Visit> visits{{id, &source_->get(id), 0}};
    while (!visits.empty()) {
        Visit& visit = visits.back();
        if (visit.next < numberOfOperands(*visit.expr)) {
            const unsigned long operand = operandId(*visit.expr, visit.next++);
            if (!copies.contains(operand)) {
                visits.push_back({operand, &source_->get(operand), 0});
            }
        } else {
            copies.emplace(visit.id, internCopy(*visit.expr));
            visits.pop_back();
        }
    }
    transaction.commit();
    return copies.at(id);
}

} // namespace TV
