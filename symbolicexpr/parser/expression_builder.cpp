#include "parser/expression_builder.h"

#include "table/parts.h"

#include <array>
#include <string>
#include <vector>

namespace TV {
namespace {

constexpr int sumRank = 1;
constexpr int unaryRank = 3;

struct Operator {
    int rank; ///< 0 for brackets, which no operator reaches beyond
    SymbolicOp op;
};

/// In the order of what waits.
constexpr std::array<Operator, 7> operators{{{0, SymbolicNameOp},
                                             {0, SymbolicNDOp},
                                             {sumRank, SymbolicPlusOp},
                                             {sumRank, SymbolicMinusOp},
                                             {2, SymbolicMultiplyOp},
                                             {2, SymbolicDivideOp},
                                             {unaryRank, SymbolicUnaryMinusOp}}};

} // namespace

bool ExpressionBuilder::before(char token) {
    if (token == '-') {
        waiting_.push_back({Waiting::unaryMinus, 0});
        return true;
    }
    if (depth_ == maximumNesting) {
        return false;
    }
    ++depth_;
    waiting_.push_back({token == '(' ? Waiting::group : Waiting::list, 0});
    return true;
}

bool ExpressionBuilder::between(char token) {
    if (token == ',') {
        complete(sumRank);
        if (!isLast(Waiting::list)) {
            return false;
        }
        ++waiting_.back().entries;
        return true;
    }
    const Waiting kind = token == '+'   ? Waiting::plus
                         : token == '-' ? Waiting::minus
                         : token == '*' ? Waiting::multiply
                                        : Waiting::divide;
    complete(operators[static_cast<std::size_t>(kind)].rank);
    waiting_.push_back({kind, 0});
    return true;
}

bool ExpressionBuilder::behind(char token) {
    complete(sumRank);
    if (!isLast(token == ')' ? Waiting::group : Waiting::list)) {
        return false;
    }
    if (token == ']') {
        steps_.push_back({SymbolicNDOp, false, 0, waiting_.back().entries + 1});
    }
    --depth_;
    waiting_.pop_back();
    return true;
}

bool ExpressionBuilder::closeEmptyList() {
    if (!isLast(Waiting::list) || waiting_.back().entries > 0) {
        return false;
    }
    steps_.push_back({SymbolicNDOp, false, 0, 0});
    --depth_;
    waiting_.pop_back();
    return true;
}

bool ExpressionBuilder::isLast(Waiting kind) const {
    return !waiting_.empty() && waiting_.back().kind == kind;
}

void ExpressionBuilder::complete(int rank) {
    while (!waiting_.empty()) {
        const Operator& last = operators[static_cast<std::size_t>(waiting_.back().kind)];
        if (last.rank < rank) {
            return;
        }
        steps_.push_back({last.op, false, 0, 0});
        waiting_.pop_back();
    }
}

void ExpressionBuilder::name(std::string_view name) { addText(SymbolicNameOp, false, name); }

void ExpressionBuilder::number(std::string_view digits) {
    const bool isNegative = isLast(Waiting::unaryMinus);
    if (isNegative) {
        waiting_.pop_back();
    }
    addText(SymbolicNumberOp, isNegative, digits);
}

void ExpressionBuilder::addText(SymbolicOp op, bool isNegative, std::string_view text) {
    steps_.push_back({op, isNegative, static_cast<std::uint32_t>(text.data() - text_.data()),
                      static_cast<std::uint32_t>(text.size())});
}

bool ExpressionBuilder::end() {
    complete(sumRank);
    return waiting_.empty();
}

unsigned long ExpressionBuilder::enter(const SymbolicExprTable& table) const {
    boost::container::small_vector<unsigned long, 32> ids;
    const auto take = [&ids] {
        const unsigned long last = ids.back();
        ids.pop_back();
        return last;
    };
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
            ids.push_back(SymbolicUnaryMinusExpr(table, take()).getId(table));
            break;
        case SymbolicNDOp: {
            const std::vector<unsigned long> entries(ids.end() - step.size, ids.end());
            ids.erase(ids.end() - step.size, ids.end());
            ids.push_back(SymbolicNDExpr(table, entries).getId(table));
            break;
        }
        default: {
            const unsigned long right = take();
            const unsigned long left = take();
            ids.push_back(binaryId(table, step.op, left, right));
        }
        }
    }
    return ids.back();
}

} // namespace TV
