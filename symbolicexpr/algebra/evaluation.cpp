#include "algebra/evaluation.h"

#include "algebra/limits.h"

#include <boost/container/small_vector.hpp>
#include <boost/unordered/unordered_flat_map.hpp>

#include <algorithm>
#include <vector>

namespace TV {
namespace {

/// Terms of all intermediate results of one evaluation.
constexpr std::size_t maximumWork = std::size_t(1) << 20;

/// Depth-first evaluation with an explicit stack, since expressions can be deeper than the call
/// stack allows. Each subexpression is computed once, since they can be shared.
class Evaluation {
  public:
    using Result = std::optional<Fraction>;

    Evaluation(const SymbolicExprTable::Contents& contents, NormalForms& forms)
        : contents_(contents), order_(contents), forms_(forms) {}

    Value valueOfRoot(std::uint32_t root) {
        stack_.reserve(8);
        stack_.push_back(makeFrame(root));
        while (true) {
            if (const auto missing = nextMissing(stack_.back())) {
                stack_.push_back(makeFrame(*missing));
                continue;
            }
            const bool operandsHaveValues = readOperands(stack_.back());
            Result result = operandsHaveValues ? compute(stack_.back()) : std::nullopt;
            if (stack_.size() == 1) {
                const bool isDistinct = result && hasDistinctOperands(stack_.back(), *result);
                return {std::move(result), operandsHaveValues, isDistinct};
            }
            // Without a value for an operand there is none for the root.
            if (!result || !limits::admits(*result) || !isWithinWork(*result)) {
                return {std::nullopt, false};
            }
            results_.insert_or_assign(stack_.back().id, std::move(*result));
            stack_.pop_back();
        }
    }

  private:
    /// An operand of a flattened sum or product.
    struct Operand {
        std::uint32_t id;
        Integer multiplicity; ///< times that it is added, or multiplied

        bool operator<(const Operand& other) const { return id < other.id; }
    };
    using Operands = boost::container::small_vector<Operand, 4>;

    /// An expression on the stack.
    struct Frame {
        std::uint32_t id;
        Operands operands;
        std::size_t next = 0; ///< index of the first operand that may lack a value
    };

    static bool isSum(SymbolicOp op) {
        return op == SymbolicPlusOp || op == SymbolicMinusOp || op == SymbolicUnaryMinusOp;
    }
    static bool canFlatten(SymbolicOp a, SymbolicOp b) {
        return (isSum(a) && isSum(b)) || (a == SymbolicMultiplyOp && b == SymbolicMultiplyOp);
    }

    static std::uint32_t argumentId(const SymbolicExpr& expr, unsigned long index) {
        return static_cast<std::uint32_t>(expr.getArg(index));
    }

    Frame makeFrame(std::uint32_t id) {
        const SymbolicExpr& expr = contents_[id];
        if (expr.op() == SymbolicDivideOp) {
            return {id, {{argumentId(expr, 0), 1}, {argumentId(expr, 1), 1}}};
        }
        return {id, flatten(id)};
    }

    /// Collects the operands of a sum of sums or a product of products, each once with its
    /// multiplicity, so that a long sum is not computed through all its prefixes. Operands have
    /// lower ids than their operators: in descending order of ids, taken from a heap, the
    /// multiplicity of an operand is complete when it is taken.
    Operands flatten(std::uint32_t root) {
        const SymbolicOp operation = contents_[root].op();
        Operands operands;
        open_.assign(1, {root, 1});
        while (!open_.empty()) {
            Operand operand = takeHighest();
            while (!open_.empty() && open_.front().id == operand.id) {
                operand.multiplicity += takeHighest().multiplicity;
            }
            const SymbolicExpr& expr = contents_[operand.id];
            if (operand.id != root &&
                (!canFlatten(operation, expr.op()) || isSettled(operand.id))) {
                operands.push_back(std::move(operand));
                continue;
            }
            for (unsigned long i = 0; i < expr.getNumArgs(); ++i) {
                open_.push_back({argumentId(expr, i), operand.multiplicity});
                if (expr.op() == SymbolicUnaryMinusOp || (expr.op() == SymbolicMinusOp && i == 1)) {
                    open_.back().multiplicity.negate();
                }
                std::push_heap(open_.begin(), open_.end());
            }
        }
        return operands;
    }

    /// Whether no two operands of a sum, whose values have been read, have a term in common.
    bool hasDistinctOperands(const Frame& frame, const Fraction& sum) const {
        std::size_t terms = 0;
        for (const Multiple& addend : values_) {
            const bool isSingle = addend.times.isOne() || addend.times.isMinusOne();
            if (!isSingle || !addend.fraction->denominator.isConstant() ||
                addend.fraction->numerator.isZero()) {
                return false;
            }
            terms += addend.fraction->numerator.terms().size();
        }
        return isSum(contents_[frame.id].op()) && sum.numerator.terms().size() == terms;
    }

    /// Whether an expression is used as one operand: it was simplified, and is not one that further
    /// operands can bring within the limits.
    bool isSettled(std::uint32_t id) const {
        const NormalForms::Entry* entry = forms_.find(id);
        return entry != nullptr && !entry->isTooLong;
    }

    Operand takeHighest() {
        std::pop_heap(open_.begin(), open_.end());
        Operand operand = std::move(open_.back());
        open_.pop_back();
        return operand;
    }

    /// Memoises the value of a name or number.
    void memoiseTerm(std::uint32_t id, const SymbolicExpr& expr) {
        if (expr.op() == SymbolicNameOp) {
            forms_.addCanonical(id, {Polynomial(id)});
        } else if (expr.op() == SymbolicNumberOp) {
            const auto& number = static_cast<const SymbolicIntValue&>(expr);
            forms_.addCanonical(
                id, {number.isSmall() ? Integer(number.value()) : Integer(number.text())});
        }
    }

    /// Returns the next operand that has operands itself and no value yet.
    std::optional<std::uint32_t> nextMissing(Frame& frame) {
        for (; frame.next < frame.operands.size(); ++frame.next) {
            const std::uint32_t id = frame.operands[frame.next].id;
            if (forms_.find(id) != nullptr || results_.find(id) != results_.end()) {
                continue;
            }
            const SymbolicExpr& expr = contents_[id];
            if (expr.getNumArgs() != 0 || expr.getNumInputs() != 0) {
                return id;
            }
            memoiseTerm(id, expr);
        }
        return std::nullopt;
    }

    /// Returns the value of an operand; null if it has none.
    const Fraction* valueOf(std::uint32_t id) const {
        if (const NormalForms::Entry* entry = forms_.find(id)) {
            return forms_.find(entry->simplified)->fraction.get();
        }
        const auto found = results_.find(id);
        return found == results_.end() ? nullptr : &found->second;
    }

    /// Collects the values of all operands. Returns false if one has none.
    bool readOperands(const Frame& frame) {
        values_.clear();
        for (const Operand& operand : frame.operands) {
            const Fraction* value = valueOf(operand.id);
            if (value == nullptr) {
                return false;
            }
            values_.push_back({operand.multiplicity, value});
        }
        return true;
    }

    Result compute(const Frame& frame) {
        const SymbolicExpr& expr = contents_[frame.id];
        switch (expr.op()) {
        case SymbolicNameOp:
        case SymbolicNumberOp:
            memoiseTerm(frame.id, expr);
            return *valueOf(frame.id);
        case SymbolicUnaryMinusOp:
        case SymbolicPlusOp:
        case SymbolicMinusOp:
            return sum(values_, order_);
        case SymbolicMultiplyOp:
            return product(values_, order_);
        case SymbolicDivideOp:
            return quotient(*values_[0].fraction, *values_[1].fraction, order_);
        default:
            return std::nullopt;
        }
    }

    bool isWithinWork(const Fraction& fraction) {
        work_ += fraction.numerator.terms().size() + fraction.denominator.terms().size();
        return work_ <= maximumWork;
    }

    const SymbolicExprTable::Contents& contents_;
    NameOrder order_;
    NormalForms& forms_;
    boost::unordered_flat_map<std::uint32_t, Fraction> results_; ///< by id
    std::vector<Frame> stack_;
    std::vector<Operand> open_;    ///< heap of flatten()
    std::vector<Multiple> values_; ///< operands of the expression that is computed
    std::size_t work_ = 0;
};

} // namespace

Value evaluate(std::uint32_t id, const SymbolicExprTable::Contents& contents, NormalForms& forms) {
    return Evaluation(contents, forms).valueOfRoot(id);
}

} // namespace TV
