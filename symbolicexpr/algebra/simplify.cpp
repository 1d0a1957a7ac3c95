#include <symbolicexpr/simplify.h>

#include "algebra/canonical_form.h"
#include "algebra/evaluation.h"
#include "algebra/limits.h"
#include "algebra/normal_forms.h"
#include "table/contents.h"
#include "table/operands.h"

#include <vector>

namespace TV {
namespace {

/// Returns the memo of a table, which is created on first use.
NormalForms& normalForms(SymbolicExprTable::Contents& contents) {
    if (contents.normalForms == nullptr) {
        contents.normalForms = std::make_unique<NormalForms>();
    }
    return static_cast<NormalForms&>(*contents.normalForms);
}

class Simplifier {
  public:
    Simplifier(const SymbolicExprTable& table, SymbolicExprTable::Contents& contents)
        : table_(table), contents_(contents), forms_(normalForms(contents)) {}

    const NormalForms::Entry& simplify(std::uint32_t root) {
        // Lists can be nested deeper than the call stack allows.
        std::vector<std::uint32_t> open{root};
        while (!open.empty()) {
            const std::uint32_t id = open.back();
            const SymbolicExpr& expr = contents_[id];
            if (forms_.find(id) != nullptr) {
                open.pop_back();
            } else if (isArithmetic(expr)) {
                simplifyArithmetic(id);
            } else if (!pushUnsimplified(expr, open)) {
                simplifyOperands(id, expr);
            }
        }
        return *forms_.find(root);
    }

  private:
    static bool isArithmetic(const SymbolicExpr& expr) {
        return expr.op() != SymbolicNDOp && expr.op() != SymbolicEqualOp &&
               expr.op() != SymbolicGreaterThanOp;
    }

    void simplifyArithmetic(std::uint32_t id) {
        const std::size_t least = leastTerms(contents_[id]);
        if (least > limits::maximumTerms) {
            forms_.add(id, {id, false, true, least, nullptr});
            return;
        }
        Value value = evaluate(id, contents_, forms_);
        if (!value.fraction || !limits::admits(*value.fraction)) {
            const bool isPolynomial = value.fraction && value.fraction->denominator.isConstant();
            forms_.add(id, {id, false, value.operandsHaveValues,
                            isPolynomial ? value.fraction->numerator.terms().size() : 0, nullptr});
            return;
        }
        const std::uint32_t simplified = internCanonicalForm(*value.fraction, table_);
        forms_.addCanonical(simplified, std::move(*value.fraction));
        forms_.add(id, {simplified, true});
    }

    /// Returns a lower bound of the terms of a sum, of which one operand is known to be too long:
    /// at most as many terms cancel as the other operand has. So most steps that build a sum beyond
    /// the limits term by term evaluate nothing.
    std::size_t leastTerms(const SymbolicExpr& expr) const {
        if (expr.op() != SymbolicPlusOp && expr.op() != SymbolicMinusOp) {
            return 0;
        }
        const auto* left = forms_.find(static_cast<std::uint32_t>(expr.getArg(0)));
        const auto* right = forms_.find(static_cast<std::uint32_t>(expr.getArg(1)));
        if (left == nullptr || right == nullptr) {
            return 0;
        }
        const auto& longer = left->leastTerms != 0 ? *left : *right;
        const Fraction* shorter =
            forms_.find((&longer == left ? right : left)->simplified)->fraction.get();
        if (shorter == nullptr || !shorter->denominator.isConstant()) {
            return 0;
        }
        const std::size_t terms = shorter->numerator.terms().size();
        return longer.leastTerms > terms ? longer.leastTerms - terms : 0;
    }

    /// Pushes the operands that are not simplified yet. Returns whether there were any.
    bool pushUnsimplified(const SymbolicExpr& expr, std::vector<std::uint32_t>& open) const {
        const std::size_t size = open.size();
        for (unsigned long i = 0; i < numberOfOperands(expr); ++i) {
            const auto id = static_cast<std::uint32_t>(operandId(expr, i));
            if (forms_.find(id) == nullptr) {
                open.push_back(id);
            }
        }
        return open.size() > size;
    }

    void simplifyOperands(std::uint32_t id, const SymbolicExpr& expr) {
        std::vector<unsigned long> operands;
        bool isCanonical = true;
        for (unsigned long i = 0; i < numberOfOperands(expr); ++i) {
            const auto& form = *forms_.find(static_cast<std::uint32_t>(operandId(expr, i)));
            operands.push_back(form.simplified);
            isCanonical = isCanonical && form.isCanonical;
        }
        const unsigned long result =
            expr.op() == SymbolicNDOp ? SymbolicNDExpr(table_, operands).getId(table_)
                                      : internBinary(table_, expr.op(), operands[0], operands[1]);
        const auto simplified = static_cast<std::uint32_t>(result);
        forms_.add(simplified, {simplified, isCanonical});
        forms_.add(id, {simplified, isCanonical});
    }

    const SymbolicExprTable& table_;
    SymbolicExprTable::Contents& contents_;
    NormalForms& forms_;
};

} // namespace

unsigned long SymbolicExprSimplify::simplify(unsigned long id, unsigned long& simplified) const {
    table_->get(id); // throws if there is no such id
    SymbolicExprTable::Contents& contents = *table_->contents_;
    Transaction transaction(contents);
    const NormalForms::Entry& entry =
        Simplifier(*table_, contents).simplify(static_cast<std::uint32_t>(id));
    transaction.commit();
    simplified = entry.isCanonical ? 1 : 0;
    return entry.simplified;
}

} // namespace TV
