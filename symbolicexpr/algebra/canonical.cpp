#include "algebra/canonical.h"

#include <algorithm>

namespace TV {
namespace {

class Writer {
  public:
    explicit Writer(const SymbolicExprTable& table) : table_(table) {}

    unsigned long fraction(Fraction& fraction) const {
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

    unsigned long sum(Polynomial& polynomial, const Integer& denominator) const {
        Polynomial::Terms& terms = polynomial.terms();
        if (terms.empty()) {
            return number(0);
        }
        // A sum begins with a minus just if all is negative.
        const auto positive = std::find_if(terms.begin(), terms.end(), [](const Term& term) {
            return !term.coefficient.isNegative();
        });
        const auto first = positive == terms.end() ? terms.begin() : positive;
        unsigned long sum = first->coefficient.isNegative()
                                ? term(first->coefficient, first->monomial, denominator)
                                : magnitude(*first, denominator);
        for (auto next = terms.begin(); next != terms.end(); ++next) {
            if (next == first) {
                continue;
            }
            const unsigned long addend = magnitude(*next, denominator);
            sum = next->coefficient.isNegative() ? enter<SymbolicMinusExpr>(sum, addend)
                                                 : enter<SymbolicPlusExpr>(sum, addend);
        }
        return sum;
    }

    /// A term without its sign.
    unsigned long magnitude(Term& written, const Integer& denominator) const {
        if (denominator.isOne() && written.written != 0) {
            return written.written;
        }
        Integer coefficient = written.coefficient;
        if (coefficient.isNegative()) {
            coefficient.negate();
        }
        const unsigned long id = term(std::move(coefficient), written.monomial, denominator);
        if (denominator.isOne()) {
            written.written = static_cast<std::uint32_t>(id);
        }
        return id;
    }

    unsigned long term(Integer coefficient, const Monomial& monomial, Integer denominator) const {
        if (!denominator.isOne()) {
            const Integer common = greatestCommonDivisor(coefficient, denominator);
            coefficient.divideExactly(common);
            denominator.divideExactly(common);
        }
        const unsigned long whole = product(coefficient, monomial);
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

std::uint32_t enterCanonicalForm(Fraction& fraction, const SymbolicExprTable& table) {
    return static_cast<std::uint32_t>(Writer(table).fraction(fraction));
}

} // namespace TV
