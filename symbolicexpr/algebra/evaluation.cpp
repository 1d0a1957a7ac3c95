#include "algebra/evaluation.h"

#include "algebra/bounds.h"

#include <boost/container/small_vector.hpp>
#include <boost/unordered/unordered_flat_map.hpp>

#include <algorithm>
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

    Evaluation(const SymbolicExprTable::Contents& contents, NormalForms& forms)
        : contents_(contents), names_(contents), forms_(forms) {}

    Value of(std::uint32_t root) {
        stack_.reserve(8);
        stack_.push_back(stepFor(root));
        while (true) {
            if (const auto missing = nextMissing(stack_.back())) {
                stack_.push_back(stepFor(*missing));
                continue;
            }
            const bool hasParts = readParts(stack_.back());
            Result result = hasParts ? compute(stack_.back()) : std::nullopt;
            if (stack_.size() == 1) {
                return {std::move(result), hasParts};
            }
            // Whatever it is a part of has no value either.
            if (!result || !bounds::hold(*result) || !isWithinWork(*result)) {
                return {std::nullopt, false};
            }
            results_.insert_or_assign(stack_.back().id, std::move(*result));
            stack_.pop_back();
        }
    }

  private:
    /// What an expression is computed from.
    struct Part {
        std::uint32_t id;
        Integer multiplicity; ///< how often it is added, or multiplied

        bool operator<(const Part& other) const { return id < other.id; }
    };
    using Parts = boost::container::small_vector<Part, 4>;

    /// An expression that is being evaluated.
    struct Step {
        std::uint32_t id;
        Parts parts;
        std::size_t next = 0;
    };

    static bool isSum(SymbolicOp op) {
        return op == SymbolicPlusOp || op == SymbolicMinusOp || op == SymbolicUnaryMinusOp;
    }
    static bool isOneOperation(SymbolicOp a, SymbolicOp b) {
        return (isSum(a) && isSum(b)) || (a == SymbolicMultiplyOp && b == SymbolicMultiplyOp);
    }

    static std::uint32_t operand(const SymbolicExpr& expr, unsigned long index) {
        return static_cast<std::uint32_t>(expr.getArg(index));
    }

    Step stepFor(std::uint32_t id) {
        const SymbolicExpr& expr = contents_[id];
        if (expr.op() == SymbolicDivideOp) {
            return {id, {{operand(expr, 0), 1}, {operand(expr, 1), 1}}};
        }
        return {id, partsOf(id)};
    }

    /// What a sum of sums adds up, or a product of products multiplies, each once. So a long one is
    /// not computed by way of all its beginnings. Parts have lower ids than the whole: going down
    /// from the highest, all that a part stands in has come before it.
    Parts partsOf(std::uint32_t root) {
        const SymbolicOp operation = contents_[root].op();
        Parts parts;
        open_.assign(1, {root, 1});
        while (!open_.empty()) {
            Part part = takeHighest();
            while (!open_.empty() && open_.front().id == part.id) {
                part.multiplicity += takeHighest().multiplicity;
            }
            const SymbolicExpr& expr = contents_[part.id];
            if (part.id != root && (!isOneOperation(operation, expr.op()) || isKnown(part.id))) {
                parts.push_back(std::move(part));
                continue;
            }
            for (unsigned long i = 0; i < expr.getNumArgs(); ++i) {
                open_.push_back({operand(expr, i), part.multiplicity});
                if (expr.op() == SymbolicUnaryMinusOp || (expr.op() == SymbolicMinusOp && i == 1)) {
                    open_.back().multiplicity.negate();
                }
                std::push_heap(open_.begin(), open_.end());
            }
        }
        return parts;
    }

    bool isKnown(std::uint32_t id) const {
        const NormalForms::Entry* entry = forms_.find(id);
        return entry != nullptr && !entry->isTooLong;
    }

    Part takeHighest() {
        std::pop_heap(open_.begin(), open_.end());
        Part part = std::move(open_.back());
        open_.pop_back();
        return part;
    }

    /// Names and numbers have no parts, and are remembered at once.
    void rememberTerm(std::uint32_t id, const SymbolicExpr& expr) {
        if (expr.op() == SymbolicNameOp) {
            forms_.addCanonical(id, {Polynomial(id)});
        } else if (expr.op() == SymbolicNumberOp) {
            const auto& number = static_cast<const SymbolicIntValue&>(expr);
            forms_.addCanonical(
                id, {number.isSmall() ? Integer(number.value()) : Integer(number.text())});
        }
    }

    std::optional<std::uint32_t> nextMissing(Step& step) {
        for (; step.next < step.parts.size(); ++step.next) {
            const std::uint32_t id = step.parts[step.next].id;
            if (forms_.find(id) != nullptr || results_.find(id) != results_.end()) {
                continue;
            }
            const SymbolicExpr& expr = contents_[id];
            if (expr.getNumArgs() != 0 || expr.getNumInputs() != 0) {
                return id;
            }
            rememberTerm(id, expr);
        }
        return std::nullopt;
    }

    /// The value of a part. Null if it has none.
    const Fraction* valueOf(std::uint32_t id) const {
        if (const NormalForms::Entry* entry = forms_.find(id)) {
            return forms_.find(entry->simplified)->fraction.get();
        }
        const auto found = results_.find(id);
        return found == results_.end() ? nullptr : &found->second;
    }

    /// Whether all parts have values, which are then at hand.
    bool readParts(const Step& step) {
        values_.clear();
        for (const Part& part : step.parts) {
            const Fraction* value = valueOf(part.id);
            if (value == nullptr) {
                return false;
            }
            values_.push_back({part.multiplicity, value});
        }
        return true;
    }

    Result compute(const Step& step) {
        const SymbolicExpr& expr = contents_[step.id];
        switch (expr.op()) {
        case SymbolicNameOp:
        case SymbolicNumberOp:
            rememberTerm(step.id, expr);
            return *valueOf(step.id);
        case SymbolicUnaryMinusOp:
        case SymbolicPlusOp:
        case SymbolicMinusOp:
            return sum(values_, names_);
        case SymbolicMultiplyOp:
            return product(values_, names_);
        case SymbolicDivideOp:
            return quotient(*values_[0].fraction, *values_[1].fraction, names_);
        default:
            return std::nullopt;
        }
    }

    bool isWithinWork(const Fraction& fraction) {
        work_ += fraction.numerator.terms().size() + fraction.denominator.terms().size();
        return work_ <= maximumWork;
    }

    const SymbolicExprTable::Contents& contents_;
    Names names_;
    NormalForms& forms_;
    boost::unordered_flat_map<std::uint32_t, Fraction> results_; ///< of parts, by id
    std::vector<Step> stack_;
    std::vector<Part> open_;       ///< a heap
    std::vector<Multiple> values_; ///< of the parts of one expression
    std::size_t work_ = 0;
};

} // namespace

Value evaluate(std::uint32_t id, const SymbolicExprTable::Contents& contents, NormalForms& forms) {
    return Evaluation(contents, forms).of(id);
}

} // namespace TV
