#include "algebra/equal_operands.h"

#include "table/operands.h"

#include <algorithm>
#include <array>
#include <queue>

namespace TV {
namespace {

bool isSumOperator(SymbolicOp op) {
    return op == SymbolicPlusOp || op == SymbolicMinusOp || op == SymbolicUnaryMinusOp;
}

bool isProductOperator(SymbolicOp op) {
    return op == SymbolicMultiplyOp || op == SymbolicDivideOp || op == SymbolicUnaryMinusOp;
}

bool isZero(const SymbolicExpr& expr) {
    return expr.op() == SymbolicNumberOp && static_cast<const SymbolicIntValue&>(expr).isSmall() &&
           static_cast<const SymbolicIntValue&>(expr).value() == 0;
}

Integer valueOf(const SymbolicExpr& number) {
    const auto& value = static_cast<const SymbolicIntValue&>(number);
    return value.isSmall() ? Integer(value.value()) : Integer(value.text());
}

std::uint32_t internNumber(const Integer& value, const SymbolicExprTable& table) {
    const auto small = value.small();
    const unsigned long id = small ? SymbolicIntValue(table, *small).getId(table)
                                   : SymbolicIntValue(table, value.text()).getId(table);
    return static_cast<std::uint32_t>(id);
}

std::uint32_t argument(const SymbolicExpr& expr, unsigned long index) {
    return static_cast<std::uint32_t>(expr.getArg(index));
}

/// Returns whether an expression is the product of a number and another one.
bool isMultiple(const SymbolicExpr& expr, const SymbolicExprTable::Contents& contents) {
    return expr.op() == SymbolicMultiplyOp && contents[argument(expr, 0)].isNumValue();
}

/// Returns the id that equal operands have in common.
std::uint32_t simplifiedId(std::uint32_t leaf, const NormalForms& forms) {
    const NormalForms::Entry* entry = forms.find(leaf);
    return entry == nullptr ? leaf : entry->simplified;
}

bool isReplaced(std::uint32_t leaf, const NormalForms& forms) {
    const NormalForms::Entry* entry = forms.find(leaf);
    return entry != nullptr && entry->isCombined;
}

} // namespace

OperandTree::OperandTree(std::uint32_t root, const SymbolicExprTable::Contents& contents)
    : root_(root), contents_(contents), isSum_(isSumOperator(contents[root].op())) {
    // Operands have lower ids than their operators, so the uses of an expression are known when it
    // is the highest one left.
    boost::unordered_flat_map<std::uint32_t, std::size_t> uses{{root, 1}};
    boost::unordered_flat_set<std::uint32_t> found{root};
    std::priority_queue<std::uint32_t> pending;
    pending.push(root);
    while (!pending.empty()) {
        const std::uint32_t id = pending.top();
        pending.pop();
        const SymbolicExpr& expr = contents[id];
        const bool canOpen = isSum_ ? isSumOperator(expr.op()) : isProductOperator(expr.op());
        if (!canOpen || uses[id] > 1) {
            leaves_.push_back(id);
            if (isSum_ && isMultiple(expr, contents)) {
                ++uses[argument(expr, 1)]; // 2*X is combined with X
            }
            continue;
        }
        opened_.insert(id);
        for (unsigned long i = 0; i < expr.getNumArgs(); ++i) {
            ++uses[argument(expr, i)];
            if (found.insert(argument(expr, i)).second) {
                pending.push(argument(expr, i));
            }
        }
    }
}

std::vector<OperandTree::Occurrence> OperandTree::occurrences() const {
    std::vector<Occurrence> found;
    std::vector<Occurrence> pending{{root_, false}};
    while (!pending.empty()) {
        const auto [id, isInverse] = pending.back();
        pending.pop_back();
        if (!isOpened(id)) {
            found.emplace_back(id, isInverse);
            continue;
        }
        const SymbolicExpr& expr = contents_[id];
        for (unsigned long i = expr.getNumArgs(); i-- > 0;) {
            const bool inverts =
                (i == 1 && (expr.op() == SymbolicMinusOp || expr.op() == SymbolicDivideOp)) ||
                (isSum_ && expr.op() == SymbolicUnaryMinusOp);
            pending.emplace_back(static_cast<std::uint32_t>(expr.getArg(i)), isInverse != inverts);
        }
    }
    return found;
}

/// The leaves of a sum, as multiples of expressions. The first of equal leaves gets the total.
class OperandTree::SumLeaves {
  public:
    SumLeaves(const OperandTree& tree, const NormalForms& forms)
        : contents_(tree.contents_), forms_(forms) {
        for (const auto& [leaf, isSubtracted] : tree.occurrences()) {
            Multiple multiple = multipleOf(leaf);
            if (isSubtracted) {
                multiple.factor.negate();
            }
            Total& total = totals_[multiple.expression];
            total.factor += multiple.factor;
            ++total.count;
            isChanged_ = isChanged_ || total.count > 1 || multiple.factor.isZero() ||
                         isReplaced(leaf, forms);
        }
    }

    bool isChanged() const { return isChanged_; }

    Part part(std::uint32_t leaf, bool isSubtracted, const SymbolicExprTable& table) {
        Total& total = totals_[multipleOf(leaf).expression];
        if (total.isPlaced || total.factor.isZero()) {
            return {};
        }
        total.isPlaced = true;
        if (total.count == 1 && !isReplaced(leaf, forms_)) {
            return {leaf};
        }
        Integer factor = total.factor;
        if (isSubtracted) {
            factor.negate();
        }
        const bool isNegative = factor.isNegative();
        if (isNegative) {
            factor.negate();
        }
        const std::uint32_t expression = multipleOf(leaf).expression;
        if (expression == numbers) {
            return {internNumber(factor, table), isNegative};
        }
        if (factor.isOne()) {
            return {expression, isNegative};
        }
        const unsigned long product =
            internBinary(table, SymbolicMultiplyOp, internNumber(factor, table), expression);
        return {static_cast<std::uint32_t>(product), isNegative};
    }

  private:
    /// Stands for 1, of which numbers are multiples. No expression has this id.
    static constexpr std::uint32_t numbers = 0xffffffff;
    struct Multiple {
        std::uint32_t expression;
        Integer factor;
    };
    struct Total {
        Integer factor;
        std::size_t count = 0;
        bool isPlaced = false;
    };

    Multiple multipleOf(std::uint32_t leaf) const {
        const std::uint32_t id = simplifiedId(leaf, forms_);
        const SymbolicExpr& expr = contents_[id];
        if (expr.op() == SymbolicNumberOp) {
            return {numbers, valueOf(expr)};
        }
        if (isMultiple(expr, contents_)) {
            return {argument(expr, 1), valueOf(contents_[argument(expr, 0)])};
        }
        if (expr.op() == SymbolicUnaryMinusOp) {
            return {argument(expr, 0), -1};
        }
        return {id, 1};
    }

    const SymbolicExprTable::Contents& contents_;
    const NormalForms& forms_;
    boost::unordered_flat_map<std::uint32_t, Total> totals_;
    bool isChanged_ = false;
};

/// The factors and divisors of a product. Equal ones cancel in pairs.
class OperandTree::ProductLeaves {
  public:
    ProductLeaves(const OperandTree& tree, const NormalForms& forms, Residues& residues)
        : contents_(tree.contents_), forms_(forms) {
        for (const auto& [leaf, isDivisor] : tree.occurrences()) {
            const std::uint32_t id = simplifiedId(leaf, forms);
            ++counts_[id][isDivisor ? 1 : 0];
            isChanged_ = isChanged_ || isReplaced(leaf, forms);
            hasZeroFactor_ = hasZeroFactor_ || (!isDivisor && isZero(contents_[id]));
        }
        for (auto& [id, counts] : counts_) {
            const std::size_t pairs = residues.isNonZero(id) ? std::min(counts[0], counts[1]) : 0;
            counts[0] = counts[1] = pairs;
            isChanged_ = isChanged_ || pairs > 0;
        }
    }

    bool isChanged() const { return isChanged_ || hasZeroFactor_; }
    bool hasZeroFactor() const { return hasZeroFactor_; }

    Part part(std::uint32_t leaf, bool isDivisor, const SymbolicExprTable&) {
        const std::uint32_t id = simplifiedId(leaf, forms_);
        std::size_t& cancelled = counts_[id][isDivisor ? 1 : 0];
        if (cancelled > 0) {
            --cancelled;
            return {};
        }
        return {isReplaced(leaf, forms_) ? id : leaf};
    }

  private:
    const SymbolicExprTable::Contents& contents_;
    const NormalForms& forms_;
    /// Factors and divisors with an id; then those of them that cancel.
    boost::unordered_flat_map<std::uint32_t, std::array<std::size_t, 2>> counts_;
    bool isChanged_ = false;
    bool hasZeroFactor_ = false;
};

std::uint32_t OperandTree::combined(const SymbolicExprTable& table, const NormalForms& forms,
                                    Residues& residues) const {
    Part part;
    if (isSum_) {
        SumLeaves leaves(*this, forms);
        if (!leaves.isChanged()) {
            return root_;
        }
        part = rebuilt(leaves, table);
    } else {
        ProductLeaves leaves(*this, forms, residues);
        if (!leaves.isChanged()) {
            return root_;
        }
        if (leaves.hasZeroFactor()) {
            return internNumber(0, table);
        }
        part = rebuilt(leaves, table);
    }
    const std::uint32_t id = part.id ? *part.id : internNumber(isSum_ ? 0 : 1, table);
    return part.isNegative
               ? static_cast<std::uint32_t>(SymbolicUnaryMinusExpr(table, id).getId(table))
               : id;
}

/// Builds the expression anew from what is left of its leaves, from left to right.
template <class Leaves>
OperandTree::Part OperandTree::rebuilt(Leaves& leaves, const SymbolicExprTable& table) const {
    struct Frame {
        std::uint32_t id;
        unsigned long next = 0;
        std::array<Part, 2> parts{};
    };
    // Operands and leaves are visited in the same order.
    const std::vector<Occurrence> places = occurrences();
    std::size_t place = 0;
    std::vector<Frame> stack{{root_}};
    while (true) {
        Frame& frame = stack.back();
        // A reference into the table would not survive the interning of a leaf.
        const SymbolicOp op = contents_[frame.id].op();
        if (frame.next < contents_[frame.id].getNumArgs()) {
            const auto operand = static_cast<std::uint32_t>(contents_[frame.id].getArg(frame.next));
            if (isOpened(operand)) {
                stack.push_back({operand});
            } else {
                frame.parts[frame.next++] = leaves.part(operand, places[place].second, table);
                ++place;
            }
            continue;
        }
        const Part part = joined(op, frame.parts[0], frame.parts[1], table);
        stack.pop_back();
        if (stack.empty()) {
            return part;
        }
        stack.back().parts[stack.back().next++] = part;
    }
}

/// Returns an operator with what is left of its operands.
OperandTree::Part OperandTree::joined(SymbolicOp op, Part left, Part right,
                                      const SymbolicExprTable& table) const {
    const auto intern = [&table](SymbolicOp binary, std::uint32_t a, std::uint32_t b) {
        return static_cast<std::uint32_t>(internBinary(table, binary, a, b));
    };
    if (op == SymbolicUnaryMinusOp) {
        return {left.id, !left.isNegative};
    }
    if (!isSum_) {
        const bool isNegative = left.isNegative != right.isNegative;
        if (!right.id) {
            return {left.id, isNegative};
        }
        if (!left.id) {
            return {op == SymbolicDivideOp ? intern(op, internNumber(1, table), *right.id)
                                           : *right.id,
                    isNegative};
        }
        return {intern(op, *left.id, *right.id), isNegative};
    }
    right.isNegative = right.isNegative != (op == SymbolicMinusOp);
    if (!left.id || !right.id) {
        return left.id ? left : right;
    }
    if (left.isNegative == right.isNegative) {
        return {intern(SymbolicPlusOp, *left.id, *right.id), left.isNegative};
    }
    return left.isNegative ? Part{intern(SymbolicMinusOp, *right.id, *left.id), false}
                           : Part{intern(SymbolicMinusOp, *left.id, *right.id), false};
}

} // namespace TV
