#include "parser/expression_builder.h"

#include "table/operands.h"

#include <array>
#include <cassert>
#include <string>
#include <vector>

namespace TV {
namespace {

constexpr int sumPrecedence = 1;
constexpr int productPrecedence = 2;
constexpr int unaryPrecedence = 3;

struct Operator {
    int precedence; ///< 0 for parentheses and brackets, where a reduction stops
    SymbolicOp op;
};

/// Indexed by Pending.
constexpr std::array<Operator, 7> operators{{{0, SymbolicNameOp},
                                             {0, SymbolicNDOp},
                                             {sumPrecedence, SymbolicPlusOp},
                                             {sumPrecedence, SymbolicMinusOp},
                                             {productPrecedence, SymbolicMultiplyOp},
                                             {productPrecedence, SymbolicDivideOp},
                                             {unaryPrecedence, SymbolicUnaryMinusOp}}};

} // namespace

bool ExpressionBuilder::prefix(char token) {
    if (token == '-') {
        pending_.push_back({Pending::UnaryMinus, 0});
        return true;
    }
    if (depth_ == maximumNesting) {
        return false;
    }
    ++depth_;
    pending_.push_back({token == '(' ? Pending::Group : Pending::List, 0});
    return true;
}

bool ExpressionBuilder::infix(char token) {
    if (token == ',') {
        reduce(sumPrecedence);
        if (!isLast(Pending::List)) {
            return false;
        }
        ++pending_.back().entries;
        return true;
    }
    const Pending kind = token == '+'   ? Pending::Plus
                         : token == '-' ? Pending::Minus
                         : token == '*' ? Pending::Multiply
                                        : Pending::Divide;
    reduce(operators[static_cast<std::size_t>(kind)].precedence);
    pending_.push_back({kind, 0});
    return true;
}

bool ExpressionBuilder::postfix(char token) {
    reduce(sumPrecedence);
    if (!isLast(token == ')' ? Pending::Group : Pending::List)) {
        return false;
    }
    if (token == ']') {
        steps_.push_back({SymbolicNDOp, false, 0, pending_.back().entries + 1});
    }
    --depth_;
    pending_.pop_back();
    return true;
}

bool ExpressionBuilder::closeEmptyList() {
    if (!isLast(Pending::List) || pending_.back().entries > 0) {
        return false;
    }
    steps_.push_back({SymbolicNDOp, false, 0, 0});
    --depth_;
    pending_.pop_back();
    return true;
}

bool ExpressionBuilder::isLast(Pending kind) const {
    return !pending_.empty() && pending_.back().kind == kind;
}

void ExpressionBuilder::reduce(int precedence) {
    while (!pending_.empty()) {
        const Operator& last = operators[static_cast<std::size_t>(pending_.back().kind)];
        if (last.precedence < precedence) {
            return;
        }
        steps_.push_back({last.op, false, 0, 0});
        pending_.pop_back();
    }
}

void ExpressionBuilder::name(std::string_view name) { addOperand(SymbolicNameOp, false, name); }

void ExpressionBuilder::number(std::string_view digits) {
    const bool isNegative = isLast(Pending::UnaryMinus);
    if (isNegative) {
        pending_.pop_back();
    }
    addOperand(SymbolicNumberOp, isNegative, digits);
}

void ExpressionBuilder::addOperand(SymbolicOp op, bool isNegative, std::string_view text) {
    steps_.push_back({op, isNegative, static_cast<std::uint32_t>(text.data() - text_.data()),
                      static_cast<std::uint32_t>(text.size())});
}

bool ExpressionBuilder::end() {
    reduce(sumPrecedence);
    return pending_.empty();
}

unsigned long ExpressionBuilder::intern(const SymbolicExprTable& table) const {
    boost::container::small_vector<unsigned long, 32> ids;
    const auto pop = [&ids] {
        const unsigned long last = ids.back();
        ids.pop_back();
        return last;
    };
    assert(pending_.empty() && !steps_.empty());
    std::string text;
    for (const Step& step : steps_) {
        switch (step.op) {
        case SymbolicNameOp:
            text = text_.substr(step.offset, step.size);
            ids.push_back(SymbolicString(table, text).getId(table));
            break;
        case SymbolicNumberOp:
            text.assign(step.isNegative ? 1 : 0, '-');
            text += text_.substr(step.offset, step.size);
            ids.push_back(SymbolicIntValue(table, text).getId(table));
            break;
        case SymbolicUnaryMinusOp:
            ids.push_back(SymbolicUnaryMinusExpr(table, pop()).getId(table));
            break;
        case SymbolicNDOp: {
            const std::vector<unsigned long> entries(ids.end() - step.size, ids.end());
            ids.erase(ids.end() - step.size, ids.end());
            ids.push_back(SymbolicNDExpr(table, entries).getId(table));
            break;
        }
        default: {
            const unsigned long right = pop();
            const unsigned long left = pop();
            ids.push_back(internBinary(table, step.op, left, right));
        }
        }
    }
    return ids.back();
}

} // namespace TV
