#include "canonical.h"

#include <algorithm>

namespace TV {
namespace {

class Writer {
  public:
    explicit Writer(const SymbolicExprTable& table) : table_(table) {}

    unsigned long fraction(const Fraction& fraction) const {
        if (fraction.denominator.isConstant()) {
            return sum(fraction.numerator, fraction.denominator.constant());
        }
        const unsigned long numerator = sum(fraction.numerator, 1);
        return enter<SymbolicDivideExpr>(numerator, sum(fraction.denominator, 1));
    }

  private:
    template <class Expr, class... Parts>
    unsigned long enter(const Parts&... parts) const {
        return Expr(table_, parts...).getId(table_);
    }

    unsigned long number(const Integer& value) const {
        const auto small = value.small();
        return small ? enter<SymbolicIntValue>(*small) : enter<SymbolicIntValue>(value.text());
    }

    unsigned long sum(const Polynomial& polynomial, const Integer& denominator) const {
        const auto& terms = polynomial.terms();
        if (terms.empty()) {
            return number(0);
        }
        // A sum begins with a minus just if all is negative.
        const auto positive = std::find_if(terms.begin(), terms.end(), [](const Term& term) {
            return !term.coefficient.isNegative();
        });
        const auto first = positive == terms.end() ? terms.begin() : positive;
        unsigned long sum = term(*first, first->coefficient, denominator);
        for (auto next = terms.begin(); next != terms.end(); ++next) {
            if (next == first) {
                continue;
            }
            if (next->coefficient.isNegative()) {
                Integer magnitude = next->coefficient;
                magnitude.negate();
                sum = enter<SymbolicMinusExpr>(sum, term(*next, std::move(magnitude), denominator));
            } else {
                sum = enter<SymbolicPlusExpr>(sum, term(*next, next->coefficient, denominator));
            }
        }
        return sum;
    }

    unsigned long term(const Term& term, Integer coefficient, Integer denominator) const {
        if (!denominator.isOne()) {
            const Integer common = greatestCommonDivisor(coefficient, denominator);
            coefficient.divideExactly(common);
            denominator.divideExactly(common);
        }
        const unsigned long whole = product(coefficient, term.monomial);
        return denominator.isOne() ? whole : enter<SymbolicDivideExpr>(whole, number(denominator));
    }

    unsigned long product(const Integer& coefficient, const Monomial& monomial) const {
        if (monomial.factors.empty()) {
            return number(coefficient);
        }
        auto factor = monomial.factors.begin();
        std::uint32_t power = factor->power;
        unsigned long product = 0;
        if (coefficient.isOne() || coefficient.isMinusOne()) {
            product = factor->name;
            --power;
            if (coefficient.isMinusOne()) {
                product = enter<SymbolicUnaryMinusExpr>(product);
            }
        } else {
            product = number(coefficient);
        }
        while (true) {
            for (; power > 0; --power) {
                product = enter<SymbolicMultiplyExpr>(product, (unsigned long)(factor->name));
            }
            if (++factor == monomial.factors.end()) {
                return product;
            }
            power = factor->power;
        }
    }

    const SymbolicExprTable& table_;
};

} // namespace

std::uint32_t enterCanonicalForm(const Fraction& fraction, const SymbolicExprTable& table) {
    return static_cast<std::uint32_t>(Writer(table).fraction(fraction));
}

} // namespace TV
