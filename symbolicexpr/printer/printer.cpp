#include <symbolicexpr/printer.h>

#include "table/operands.h"

#include <tv_utility/identifier.h>

#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

namespace TV {
namespace {

constexpr std::size_t maximumLength = std::size_t{16} << 20;

/// Precedence. An expression of lower precedence than its context requires is put in parentheses.
enum class Rank { Relation, Text, Sum, Product, UnaryMinus, Operand, Parentheses };

/// Syntax of an operation: its precedence, its tokens, and the precedence that its first and its
/// other operands require.
struct Form {
    Rank rank;
    std::string_view prefix, infix, postfix;
    Rank first, others;
};

/// Indexed by SymbolicOp. Operators are left-associative, so right operands require a higher rank.
constexpr std::array<Form, 10> forms{{
    {Rank::Operand, "", "", "", Rank::Relation, Rank::Relation},
    {Rank::Operand, "", "", "", Rank::Relation, Rank::Relation},
    {Rank::UnaryMinus, "-", "", "", Rank::UnaryMinus, Rank::UnaryMinus},
    {Rank::Sum, "", "+", "", Rank::Sum, Rank::Product},
    {Rank::Sum, "", "-", "", Rank::Sum, Rank::Product},
    {Rank::Product, "", "*", "", Rank::Product, Rank::UnaryMinus},
    {Rank::Product, "", "/", "", Rank::Product, Rank::UnaryMinus},
    {Rank::Relation, "", "==", "", Rank::Text, Rank::Text},
    {Rank::Relation, "", ">", "", Rank::Text, Rank::Text},
    {Rank::Operand, "[", ",", "]", Rank::Relation, Rank::Relation},
}};

const std::string& nameText(const SymbolicExpr& expr) {
    return static_cast<const SymbolicString&>(expr).text();
}

const SymbolicIntValue& asNumber(const SymbolicExpr& expr) {
    return static_cast<const SymbolicIntValue&>(expr);
}

bool isIdentifier(const std::string& name) {
    // A name may contain null characters, where tvIsValidANSICIdentifier stops reading.
    return tvIsValidANSICIdentifier(name.c_str(), true) && name.find('\0') == name.npos;
}

/// Depth-first traversal with an explicit stack of incomplete expressions.
class Writer {
  public:
    explicit Writer(const SymbolicExprTable& table) : table_(&table) {}

    std::string write(const SymbolicExpr& expr, Rank needed) {
        begin(expr, needed);
        while (!open_.empty()) {
            advance();
        }
        return std::move(text_);
    }

  private:
    struct Open {
        const SymbolicExpr* expr;
        unsigned long next; ///< index of the next operand
        bool isEnclosed;
    };

    void begin(const SymbolicExpr& expr, Rank needed) {
        if (text_.size() > maximumLength) {
            text_ += "...";
            return;
        }
        const Form& form = forms[expr.op()];
        const bool isText = expr.op() == SymbolicNameOp && !isIdentifier(nameText(expr));
        const bool isEnclosed = (isText ? Rank::Text : form.rank) < needed;
        text_ += isEnclosed ? "(" : "";
        text_ += form.prefix;
        if (expr.op() == SymbolicNameOp) {
            text_ += nameText(expr);
        } else if (expr.op() == SymbolicNumberOp) {
            text_ += asNumber(expr).text();
        }
        open_.push_back({&expr, 0, isEnclosed});
    }

    void advance() {
        Open& last = open_.back();
        const SymbolicExpr& expr = *last.expr;
        const Form& form = forms[expr.op()];
        const unsigned long next = last.next++;
        if (next == numberOfOperands(expr)) {
            text_ += form.postfix;
            text_ += last.isEnclosed ? ")" : "";
            open_.pop_back();
            return;
        }
        text_ += next > 0 ? form.infix : "";
        const SymbolicExpr& inner = table_->get(operandId(expr, next));
        // Directly after a minus, a number without a sign would be parsed as a negative number.
        const bool absorbsMinus = expr.op() == SymbolicUnaryMinusOp &&
                                  inner.op() == SymbolicNumberOp && !asNumber(inner).isNegative();
        begin(inner, absorbsMinus ? Rank::Parentheses : next == 0 ? form.first : form.others);
    }

    const SymbolicExprTable* table_;
    std::string text_;
    std::vector<Open> open_;
};

} // namespace

std::string SymbolicExprPrinter::operator()(const SymbolicExpr& expr) const {
    constexpr std::array<Rank, 3> ranks{Rank::Relation, Rank::Sum, Rank::Product};
    return Writer(*table_).write(expr, ranks[static_cast<std::size_t>(std::clamp(rank_, 0, 2))]);
}

} // namespace TV
