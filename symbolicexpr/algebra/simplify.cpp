#include <symbolicexpr/simplify.h>

#include "algebra/bounds.h"
#include "algebra/canonical.h"
#include "table/contents.h"
#include "algebra/evaluation.h"
#include "algebra/normal_forms.h"
#include "table/parts.h"

#include <vector>

namespace TV {
namespace {

class Simplifier {
  public:
    Simplifier(const SymbolicExprTable& table, SymbolicExprTable::Contents& contents)
        : table_(table), contents_(contents), forms_(*contents.normalForms) {}

    const NormalForms::Entry& simplify(std::uint32_t root) {
        // Lists can be in lists deeper than the stack of the process.
        std::vector<std::uint32_t> open{root};
        while (!open.empty()) {
            const std::uint32_t id = open.back();
            const SymbolicExpr& expr = contents_[id];
            if (forms_.find(id) != nullptr) {
                open.pop_back();
            } else if (isArithmetic(expr)) {
                simplifyArithmetic(id);
            } else if (!openParts(expr, open)) {
                simplifyParts(id, expr);
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
        const std::size_t leastTerms = leastTermsOf(contents_[id]);
        if (leastTerms > bounds::maximumTerms) {
            forms_.add(id, {id, false, true, leastTerms, nullptr});
            return;
        }
        Value value = evaluate(id, contents_, forms_);
        if (!value.fraction || !bounds::hold(*value.fraction)) {
            const bool isPolynomial = value.fraction && value.fraction->denominator.isConstant();
            forms_.add(id, {id, false, value.hasParts,
                            isPolynomial ? value.fraction->numerator.terms().size() : 0, nullptr});
            return;
        }
        const std::uint32_t simplified = enterCanonicalForm(*value.fraction, table_);
        forms_.addCanonical(simplified, std::move(*value.fraction));
        forms_.add(id, {simplified, true});
    }

    /// How many terms are left, whatever cancels, where a sum that is too long gets one more part.
    /// So most of the steps by which it is made cost nothing.
    std::size_t leastTermsOf(const SymbolicExpr& expr) const {
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

    /// Whether there were parts to be simplified first.
    bool openParts(const SymbolicExpr& expr, std::vector<std::uint32_t>& open) const {
        const std::size_t size = open.size();
        for (unsigned long i = 0; i < numberOfParts(expr); ++i) {
            const auto id = static_cast<std::uint32_t>(part(expr, i));
            if (forms_.find(id) == nullptr) {
                open.push_back(id);
            }
        }
        return open.size() > size;
    }

    void simplifyParts(std::uint32_t id, const SymbolicExpr& expr) {
        std::vector<unsigned long> parts;
        bool isCanonical = true;
        for (unsigned long i = 0; i < numberOfParts(expr); ++i) {
            const auto& form = *forms_.find(static_cast<std::uint32_t>(part(expr, i)));
            parts.push_back(form.simplified);
            isCanonical = isCanonical && form.isCanonical;
        }
        const unsigned long found = expr.op() == SymbolicNDOp
                                        ? SymbolicNDExpr(table_, parts).getId(table_)
                                        : binaryId(table_, expr.op(), parts[0], parts[1]);
        const auto simplified = static_cast<std::uint32_t>(found);
        forms_.add(simplified, {simplified, isCanonical});
        forms_.add(id, {simplified, isCanonical});
    }

    const SymbolicExprTable& table_;
    SymbolicExprTable::Contents& contents_;
    NormalForms& forms_;
};

} // namespace

unsigned long SymbolicExprSimplify::simplify(unsigned long id, unsigned long& simplified) const {
    table_->get(id);
    SymbolicExprTable::Contents& contents = *table_->contents_;
    const NormalForms::Entry& entry =
        Simplifier(*table_, contents).simplify(static_cast<std::uint32_t>(id));
    simplified = entry.isCanonical ? 1 : 0;
    return entry.simplified;
}

} // namespace TV
