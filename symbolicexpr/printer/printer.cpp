#include <symbolicexpr/printer.h>

#include "table/parts.h"

#include <tv_utility/identifier.h>

#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

namespace TV {
namespace {

constexpr std::size_t maximumLength = std::size_t{16} << 20;

/// How firmly an expression holds together. Where a firmer one is needed, it is in parentheses.
enum class Rank { relation, text, sum, product, unaryMinus, operand, parentheses };

/// How an expression with parts is written, and what the first part and the others need to be.
struct Form {
    Rank rank;
    std::string_view before, between, behind;
    Rank first, others;
};

/// By SymbolicOp. Operators take their operands from the left, so a right one has to be firmer.
constexpr std::array<Form, 10> forms{{
    {Rank::operand, "", "", "", Rank::relation, Rank::relation},
    {Rank::operand, "", "", "", Rank::relation, Rank::relation},
    {Rank::unaryMinus, "-", "", "", Rank::unaryMinus, Rank::unaryMinus},
    {Rank::sum, "", "+", "", Rank::sum, Rank::product},
    {Rank::sum, "", "-", "", Rank::sum, Rank::product},
    {Rank::product, "", "*", "", Rank::product, Rank::unaryMinus},
    {Rank::product, "", "/", "", Rank::product, Rank::unaryMinus},
    {Rank::relation, "", "==", "", Rank::text, Rank::text},
    {Rank::relation, "", ">", "", Rank::text, Rank::text},
    {Rank::operand, "[", ",", "]", Rank::relation, Rank::relation},
}};

const std::string& nameOf(const SymbolicExpr& expr) {
    return static_cast<const SymbolicString&>(expr).text();
}

const SymbolicIntValue& numberOf(const SymbolicExpr& expr) {
    return static_cast<const SymbolicIntValue&>(expr);
}

bool isIdentifier(const std::string& name) {
    // A name may hold nulls, and then it is not what a text that ends there says.
    return tvIsValidANSICIdentifier(name.c_str(), true) && name.find('\0') == name.npos;
}

/// Writes expressions and keeps those that are not complete, so that nothing recurs.
class Writer {
  public:
    explicit Writer(const SymbolicExprTable& table) : table_(&table) {}

    std::string write(const SymbolicExpr& expr, Rank needed) {
        begin(expr, needed);
        while (!begun_.empty()) {
            advance();
        }
        return std::move(text_);
    }

  private:
    struct Begun {
        const SymbolicExpr* expr;
        unsigned long next; ///< the part that comes next
        bool isEnclosed;
    };

    void begin(const SymbolicExpr& expr, Rank needed) {
        if (text_.size() > maximumLength) {
            text_ += "...";
            return;
        }
        const Form& form = forms[expr.op()];
        const bool isText = expr.op() == SymbolicNameOp && !isIdentifier(nameOf(expr));
        const bool isEnclosed = (isText ? Rank::text : form.rank) < needed;
        text_ += isEnclosed ? "(" : "";
        text_ += form.before;
        if (expr.op() == SymbolicNameOp) {
            text_ += nameOf(expr);
        } else if (expr.op() == SymbolicNumberOp) {
            text_ += numberOf(expr).text();
        }
        begun_.push_back({&expr, 0, isEnclosed});
    }

    void advance() {
        Begun& last = begun_.back();
        const SymbolicExpr& expr = *last.expr;
        const Form& form = forms[expr.op()];
        const unsigned long next = last.next++;
        if (next == numberOfParts(expr)) {
            text_ += form.behind;
            text_ += last.isEnclosed ? ")" : "";
            begun_.pop_back();
            return;
        }
        text_ += next > 0 ? form.between : "";
        const SymbolicExpr& inner = table_->get(part(expr, next));
        // Straight behind a minus a number without a sign would take it for its own.
        const bool takesMinus = expr.op() == SymbolicUnaryMinusOp &&
                                inner.op() == SymbolicNumberOp && !numberOf(inner).isNegative();
        begin(inner, takesMinus ? Rank::parentheses : next == 0 ? form.first : form.others);
    }

    const SymbolicExprTable* table_;
    std::string text_;
    std::vector<Begun> begun_;
};

} // namespace

std::string SymbolicExprPrinter::operator()(const SymbolicExpr& expr) const {
    constexpr std::array<Rank, 3> ranks{Rank::relation, Rank::sum, Rank::product};
    return Writer(*table_).write(expr, ranks[static_cast<std::size_t>(std::clamp(rank_, 0, 2))]);
}

} // namespace TV
