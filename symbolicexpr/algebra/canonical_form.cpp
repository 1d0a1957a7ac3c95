#include "algebra/canonical_form.h"

#include <algorithm>

namespace TV {
namespace {

/// Builds the canonical form: the order of terms is that of the polynomial, except that a positive
/// term comes first where there is one.
class CanonicalFormBuilder {
  public:
    explicit CanonicalFormBuilder(const SymbolicExprTable& table) : table_(table) {}

    unsigned long fraction(Fraction& fraction) const {
        if (fraction.denominator.isConstant()) {
            return sum(fraction.numerator, fraction.denominator.constant());
        }
        const unsigned long numerator = sum(fraction.numerator, 1);
        return intern<SymbolicDivideExpr>(numerator, sum(fraction.denominator, 1));
    }

  private:
    template <class Expr, class... Operands>
    unsigned long intern(const Operands&... operands) const {
        return Expr(table_, operands...).getId(table_);
    }

    unsigned long number(const Integer& value) const {
        const auto small = value.small();
        return small ? intern<SymbolicIntValue>(*small) : intern<SymbolicIntValue>(value.text());
    }

    unsigned long sum(Polynomial& polynomial, const Integer& denominator) const {
        Polynomial::Terms& terms = polynomial.terms();
        if (terms.empty()) {
            return number(0);
        }
        // A sum begins with a minus only if all its terms are negative.
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
            sum = next->coefficient.isNegative() ? intern<SymbolicMinusExpr>(sum, addend)
                                                 : intern<SymbolicPlusExpr>(sum, addend);
        }
        return sum;
    }

    /// Interns a term without its sign, or returns the id that an earlier call has stored in it.
    unsigned long magnitude(Term& source, const Integer& denominator) const {
        if (denominator.isOne() && source.internedId != 0) {
            return source.internedId;
        }
        Integer coefficient = source.coefficient;
        if (coefficient.isNegative()) {
            coefficient.negate();
        }
        const unsigned long id = term(std::move(coefficient), source.monomial, denominator);
        if (denominator.isOne()) {
            source.internedId = static_cast<std::uint32_t>(id);
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
        return denominator.isOne() ? whole : intern<SymbolicDivideExpr>(whole, number(denominator));
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
                product = intern<SymbolicUnaryMinusExpr>(product);
            }
        } else {
            product = number(coefficient);
        }
        while (true) {
            for (; power > 0; --power) {
                product =
                    intern<SymbolicMultiplyExpr>(product, static_cast<unsigned long>(factor->name));
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

std::uint32_t internCanonicalForm(Fraction& fraction, const SymbolicExprTable& table) {
    return static_cast<std::uint32_t>(CanonicalFormBuilder(table).fraction(fraction));
}

} // namespace TV
