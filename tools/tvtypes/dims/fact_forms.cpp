#include "dims/fact_forms.h"

#include <symbolicexpr/expr.h>

#include <algorithm>
#include <utility>

namespace tvtool::dims {

namespace {

using solver::Constraint;
using solver::Monomial;
using solver::Number;
using solver::Polynomial;

/// The digits of a number beyond which a size is compared as it is.
constexpr std::size_t mostDigits = 4000;

/// The terms of products of sides and divisors beyond which a fact is compared as it is.
constexpr std::size_t mostTerms = 10'000;

unsigned long expressionOf(int id) { return static_cast<unsigned long>(id) + 1; }

std::optional<Number> numberIn(const TV::SymbolicExpr& expression) {
    const std::string& digits = static_cast<const TV::SymbolicIntValue&>(expression).text();
    return digits.size() <= mostDigits ? std::optional(Number(exact::Integer(digits)))
                                       : std::nullopt;
}

bool arePositive(const Polynomial& polynomial) {
    return std::ranges::all_of(polynomial.terms(),
                               [](const auto& term) { return term.second > 0; });
}

} // namespace

Constraint FactForms::constraint(const Fact& fact, bool areNegative) {
    const Quotient& left = quotient(fact.left);
    const Quotient& right = quotient(fact.right);
    const bool isEqual = fact.relation == Relation::Equal;
    const Constraint::Sign sign = isEqual ? Constraint::Sign::Zero : Constraint::Sign::Positive;
    const auto count = [](const Polynomial& polynomial) { return polynomial.terms().size(); };
    Polynomial difference;
    if (left.denominator == right.denominator) {
        difference = left.numerator;
        difference.add(right.numerator, -1);
    } else if (count(left.numerator) * count(right.denominator) +
                   count(right.numerator) * count(left.denominator) >
               mostTerms) {
        difference.add(Monomial{unknownOf(expressionOf(fact.left))}, 1);
        difference.add(Monomial{unknownOf(expressionOf(fact.right))}, -1);
        return {std::move(difference), sign};
    } else {
        difference = left.numerator * right.denominator;
        difference.add(right.numerator * left.denominator, -1);
    }
    if (!isEqual) {
        for (const Polynomial* divisor : {&left.denominator, &right.denominator}) {
            const bool isPositive =
                divisor->isConstant() || (!areNegative && arePositive(*divisor));
            const bool isCounted =
                divisor == &left.denominator || !(left.denominator == right.denominator);
            if (!isPositive && isCounted) {
                difference = difference * *divisor;
            }
        }
    }
    difference = primitive(difference);
    // An equation and its negation are the same.
    if (isEqual && !difference.terms().empty() && difference.terms().rbegin()->second < 0) {
        difference = -difference;
    }
    return {std::move(difference), sign};
}

const Quotient& FactForms::quotient(int id) {
    const auto [known, isNew] = quotients_.try_emplace(id);
    if (!isNew) {
        return known->second;
    }
    std::optional<Polynomial> numerator;
    std::optional<Polynomial> denominator(Polynomial(Number(1)));
    const TV::SymbolicExpr& expression = table_.getSymbolicExpr(expressionOf(id));
    if (namedDivisor(id)) {
        numerator = polynomial(expression.getArg(0));
        denominator = polynomial(expression.getArg(1));
    } else {
        numerator = polynomial(expressionOf(id));
    }
    if (!numerator || !denominator || denominator->terms().empty()) {
        numerator = Polynomial(Monomial{unknownOf(expressionOf(id))});
        denominator = Polynomial(Number(1));
    }
    known->second = {*std::move(numerator), *std::move(denominator)};
    return known->second;
}

std::optional<int> FactForms::namedDivisor(int id) {
    const TV::SymbolicExpr& expression = table_.getSymbolicExpr(expressionOf(id));
    if (expression.op() != TV::SymbolicDivideOp ||
        table_.getSymbolicExpr(expression.getArg(1)).isNumValue()) {
        return std::nullopt;
    }
    return static_cast<int>(expression.getArg(1)) - 1;
}

/// Returns a sum of products; empty for any other form.
std::optional<Polynomial> FactForms::polynomial(unsigned long expression) {
    Polynomial sum;
    std::vector<std::pair<unsigned long, Number>> pending{{expression, 1}};
    while (!pending.empty()) {
        const auto [id, factor] = std::move(pending.back());
        pending.pop_back();
        const TV::SymbolicExpr& part = table_.getSymbolicExpr(id);
        switch (part.op()) {
        case TV::SymbolicPlusOp:
        case TV::SymbolicMinusOp:
            pending.emplace_back(part.getArg(0), factor);
            pending.emplace_back(part.getArg(1),
                                 part.op() == TV::SymbolicPlusOp ? factor : Number(-factor));
            break;
        case TV::SymbolicUnaryMinusOp:
            pending.emplace_back(part.getArg(0), -factor);
            break;
        case TV::SymbolicDivideOp: {
            const TV::SymbolicExpr& divisor = table_.getSymbolicExpr(part.getArg(1));
            const std::optional<Number> number =
                divisor.isNumValue() ? numberIn(divisor) : std::nullopt;
            if (!number || *number == 0) {
                return std::nullopt;
            }
            pending.emplace_back(part.getArg(0), factor / *number);
            break;
        }
        default: {
            const std::optional<Polynomial> term = product(id);
            if (!term) {
                return std::nullopt;
            }
            sum.add(*term, factor);
        }
        }
    }
    return sum;
}

/// Returns a product of names and numbers; empty for any other form.
std::optional<Polynomial> FactForms::product(unsigned long expression) {
    Number coefficient = 1;
    Monomial names;
    std::vector<unsigned long> pending{expression};
    while (!pending.empty()) {
        const unsigned long id = pending.back();
        pending.pop_back();
        const TV::SymbolicExpr& part = table_.getSymbolicExpr(id);
        if (part.op() == TV::SymbolicMultiplyOp) {
            pending.push_back(part.getArg(0));
            pending.push_back(part.getArg(1));
        } else if (part.op() == TV::SymbolicUnaryMinusOp) {
            coefficient = -coefficient;
            pending.push_back(part.getArg(0));
        } else if (part.isNumValue()) {
            const std::optional<Number> number = numberIn(part);
            if (!number) {
                return std::nullopt;
            }
            coefficient *= *number;
        } else if (part.op() == TV::SymbolicNameOp) {
            names.push_back(unknownOf(id));
        } else {
            return std::nullopt;
        }
    }
    std::ranges::sort(names);
    Polynomial product;
    product.add(names, coefficient);
    return product;
}

solver::Unknown FactForms::unknownOf(unsigned long expression) {
    return unknowns_.try_emplace(expression, static_cast<solver::Unknown>(unknowns_.size()))
        .first->second;
}

} // namespace tvtool::dims
