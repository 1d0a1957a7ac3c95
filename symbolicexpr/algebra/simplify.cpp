#include <symbolicexpr/simplify.h>

#include "algebra/canonical_form.h"
#include "algebra/equal_operands.h"
#include "algebra/evaluation.h"
#include "algebra/limits.h"
#include "algebra/normal_forms.h"
#include "algebra/residues.h"
#include "table/contents.h"
#include "table/operands.h"

#include <boost/unordered/unordered_flat_set.hpp>

#include <algorithm>
#include <iterator>
#include <optional>
#include <unordered_map>
#include <utility>
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
                simplifyArithmetic(id, open);
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

    void simplifyArithmetic(std::uint32_t id, std::vector<std::uint32_t>& open) {
        if (const auto known = failed_.find(id); known != failed_.end()) {
            combineOperands(id, known->second, open);
            return;
        }
        const std::size_t least = leastTerms(contents_[id]);
        if (least > limits::maximumTerms) {
            Failure failure({id, false, true, least, nullptr});
            if (sharesOperand(contents_[id])) {
                failed_.emplace(id, std::move(failure));
            } else {
                forms_.add(id, std::move(failure.entry));
            }
            return;
        }
        Value value = evaluate(id, contents_, forms_);
        if (!value.fraction || !limits::admits(*value.fraction)) {
            const bool isPolynomial = value.fraction && value.fraction->denominator.isConstant();
            Failure failure({id, false, value.operandsHaveValues,
                             isPolynomial ? value.fraction->numerator.terms().size() : 0, nullptr});
            if (value.hasDistinctOperands) {
                forms_.add(id, std::move(failure.entry));
            } else {
                failed_.emplace(id, std::move(failure));
            }
            return;
        }
        const std::uint32_t simplified = internCanonicalForm(*value.fraction, table_);
        forms_.addCanonical(simplified, std::move(*value.fraction));
        forms_.add(id, {simplified, true});
    }

    /// An expression without a canonical form.
    struct Failure {
        NormalForms::Entry entry;              ///< if no operands are combined
        std::optional<std::uint32_t> combined; ///< id of the expression with combined operands
        bool areOperandsOpen = false;          ///< whether the operands were pushed

        explicit Failure(NormalForms::Entry uncombined) : entry(std::move(uncombined)) {}
    };

    /// Combines equal operands of an expression without a canonical form, in steps: its operands
    /// are simplified first, as long as few of them fail, and then the result.
    void combineOperands(std::uint32_t id, Failure& failure, std::vector<std::uint32_t>& open) {
        if (!failure.combined) {
            const OperandTree tree(id, contents_);
            if (!failure.areOperandsOpen && failed_.size() < mostFailures) {
                failure.areOperandsOpen = true;
                const std::size_t size = open.size();
                std::copy_if(tree.leaves().begin(), tree.leaves().end(), std::back_inserter(open),
                             [this](std::uint32_t leaf) { return forms_.find(leaf) == nullptr; });
                if (open.size() > size) {
                    return;
                }
            }
            failure.combined =
                residues_.valueOf(id) ? tree.combined(table_, forms_, residues_) : id;
        }
        if (failure.combined == id) {
            forms_.add(id, std::move(failure.entry));
        } else if (const NormalForms::Entry* result = forms_.find(*failure.combined)) {
            NormalForms::Entry entry{result->simplified, result->isCanonical, result->isTooLong,
                                     result->leastTerms, nullptr};
            entry.isCombined = true;
            forms_.add(id, std::move(entry));
        } else {
            open.push_back(*failure.combined);
        }
    }

    /// Returns whether a sum has operands in common with the operand of a long sum.
    bool sharesOperand(const SymbolicExpr& expr) const {
        const auto left = static_cast<std::uint32_t>(expr.getArg(0));
        const auto right = static_cast<std::uint32_t>(expr.getArg(1));
        const bool isLeftLonger = forms_.find(left)->leastTerms != 0;
        const std::uint32_t shorter = isLeftLonger ? right : left;
        if (forms_.find(forms_.find(shorter)->simplified)->fraction->numerator.isZero()) {
            return true;
        }
        boost::unordered_flat_set<std::uint32_t> operands;
        walkSum(shorter, [&operands](std::uint32_t operand) {
            operands.insert(operand);
            return true;
        });
        return !walkSum(isLeftLonger ? left : right,
                        [&operands](std::uint32_t operand) { return !operands.contains(operand); });
    }

    /// Calls a function for the operators and operands of a nested sum until it returns false.
    /// Returns whether it did for none of them.
    template <class Function>
    bool walkSum(std::uint32_t root, const Function& function) const {
        std::vector<std::uint32_t> pending{root};
        for (std::size_t visits = 0; !pending.empty() && visits < mostVisits; ++visits) {
            const std::uint32_t id = pending.back();
            pending.pop_back();
            if (!function(id)) {
                return false;
            }
            const SymbolicExpr& expr = contents_[id];
            const bool isSum = expr.op() == SymbolicPlusOp || expr.op() == SymbolicMinusOp ||
                               expr.op() == SymbolicUnaryMinusOp;
            for (unsigned long i = 0; isSum && i < expr.getNumArgs(); ++i) {
                pending.push_back(static_cast<std::uint32_t>(expr.getArg(i)));
            }
        }
        return true;
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

    /// The expressions without a canonical form whose operands are simplified, in one call.
    static constexpr std::size_t mostFailures = 100;
    /// The operators of a sum that are searched for equal operands.
    static constexpr std::size_t mostVisits = std::size_t(1) << 20;

    const SymbolicExprTable& table_;
    SymbolicExprTable::Contents& contents_;
    NormalForms& forms_;
    Residues residues_{contents_};
    std::unordered_map<std::uint32_t, Failure> failed_;
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
