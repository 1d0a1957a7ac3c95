#include "evaluation.h"

#include <boost/unordered/unordered_flat_map.hpp>

#include <functional>
#include <map>
#include <vector>

namespace TV {
namespace {

/// How many terms one expression is worth, with those on the way.
constexpr std::size_t maximumWork = std::size_t(1) << 20;

/// Goes down an expression on a stack of its own, since expressions can be deeper than that of the
/// process; computes each part once, since they can be shared.
class Evaluation {
  public:
    using Result = std::optional<Fraction>;

    Evaluation(const SymbolicExprTable::Contents& contents, const NormalForms& known)
        : contents_(contents), names_(contents), known_(known) {}

    Result of(std::uint32_t root) {
        stack_.push_back(stepFor(root));
        while (!stack_.empty()) {
            if (const auto missing = nextMissing(stack_.back())) {
                stack_.push_back(stepFor(*missing));
                continue;
            }
            Result result = compute(stack_.back());
            // Whatever it is a part of has no value either.
            if (!result || !isWithinBounds(*result)) {
                return std::nullopt;
            }
            results_.insert_or_assign(stack_.back().id, std::move(*result));
            stack_.pop_back();
        }
        return std::move(results_.at(root));
    }

  private:
    /// An expression that is being evaluated, and the parts that it is computed from.
    struct Step {
        struct Part {
            std::uint32_t id;
            Integer multiplicity; ///< in a sum
        };
        std::uint32_t id;
        std::vector<Part> parts;
        std::size_t next = 0;
    };

    static bool isSum(SymbolicOp op) {
        return op == SymbolicPlusOp || op == SymbolicMinusOp || op == SymbolicUnaryMinusOp;
    }

    Step stepFor(std::uint32_t id) const {
        Step step{id, {}};
        const SymbolicExpr& expr = contents_[id];
        if (isSum(expr.op())) {
            step.parts = addendsOf(id);
        } else if (expr.op() == SymbolicMultiplyOp || expr.op() == SymbolicDivideOp) {
            step.parts = {{operand(expr, 0), 1}, {operand(expr, 1), 1}};
        }
        return step;
    }

    static std::uint32_t operand(const SymbolicExpr& expr, unsigned long index) {
        return static_cast<std::uint32_t>(expr.getArg(index));
    }

    /// What a sum of sums adds up, each addend once. So a long sum is not computed by way of all
    /// its beginnings. Parts have lower ids than the whole; going down from the highest, all that
    /// adds to an addend has come before it.
    std::vector<Step::Part> addendsOf(std::uint32_t root) const {
        std::vector<Step::Part> addends;
        std::map<std::uint32_t, Integer, std::greater<>> open;
        open.try_emplace(root, 1);
        while (!open.empty()) {
            const auto [id, multiplicity] = std::move(*open.begin());
            open.erase(open.begin());
            const SymbolicExpr& expr = contents_[id];
            if (!isSum(expr.op()) || (id != root && known_.find(id) != nullptr)) {
                addends.push_back({id, multiplicity});
                continue;
            }
            Integer negative = multiplicity;
            negative.negate();
            if (expr.op() == SymbolicUnaryMinusOp) {
                open[operand(expr, 0)] += negative;
            } else {
                open[operand(expr, 0)] += multiplicity;
                open[operand(expr, 1)] += expr.op() == SymbolicPlusOp ? multiplicity : negative;
            }
        }
        return addends;
    }

    std::optional<std::uint32_t> nextMissing(Step& step) const {
        for (; step.next < step.parts.size(); ++step.next) {
            const std::uint32_t id = step.parts[step.next].id;
            if (known_.find(id) == nullptr && results_.find(id) == results_.end()) {
                return id;
            }
        }
        return std::nullopt;
    }

    /// The value of a part. Null if it has none.
    const Fraction* valueOf(std::uint32_t id) const {
        if (const NormalForms::Entry* entry = known_.find(id)) {
            return known_.find(entry->simplified)->fraction.get();
        }
        return &results_.at(id);
    }

    Result compute(const Step& step) const {
        const SymbolicExpr& expr = contents_[step.id];
        std::vector<Addend> parts;
        parts.reserve(step.parts.size());
        for (const Step::Part& part : step.parts) {
            const Fraction* value = valueOf(part.id);
            if (value == nullptr) {
                return std::nullopt;
            }
            parts.push_back({part.multiplicity, value});
        }
        switch (expr.op()) {
        case SymbolicNameOp:
            return Fraction{Polynomial(step.id)};
        case SymbolicNumberOp:
            return Fraction{Integer(static_cast<const SymbolicIntValue&>(expr).text())};
        case SymbolicUnaryMinusOp:
        case SymbolicPlusOp:
        case SymbolicMinusOp:
            return sum(parts, names_);
        case SymbolicMultiplyOp:
            return product(*parts[0].fraction, *parts[1].fraction, names_);
        case SymbolicDivideOp:
            return quotient(*parts[0].fraction, *parts[1].fraction, names_);
        default:
            return std::nullopt;
        }
    }

    bool isWithinBounds(const Fraction& fraction) {
        work_ += fraction.numerator.terms().size() + fraction.denominator.terms().size();
        return work_ <= maximumWork;
    }

    const SymbolicExprTable::Contents& contents_;
    Names names_;
    const NormalForms& known_;
    boost::unordered_flat_map<std::uint32_t, Fraction> results_;
    std::vector<Step> stack_;
    std::size_t work_ = 0;
};

} // namespace

std::optional<Fraction> evaluate(std::uint32_t id, const SymbolicExprTable::Contents& contents,
                                 const NormalForms& known) {
    return Evaluation(contents, known).of(id);
}

} // namespace TV
