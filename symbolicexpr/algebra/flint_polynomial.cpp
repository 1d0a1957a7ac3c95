#include "algebra/flint_polynomial.h"

#include "algebra/flint_integer.h"
#include "algebra/flint_memory.h"
#include "algebra/limits.h"

#include <boost/unordered/unordered_flat_set.hpp>

#include <flint/fmpz_mpoly.h>

#include <algorithm>
#include <cassert>
#include <new>
#include <vector>

namespace TV {

namespace {

/// The names of two polynomials as variables of FLINT, and scratch memory for the powers of one
/// term.
class Context {
  public:
    Context(const Polynomial& a, const Polynomial& b, const NameOrder& order) {
        boost::unordered_flat_set<std::uint32_t> known;
        for (const Polynomial* polynomial : {&a, &b}) {
            for (const Term& term : polynomial->terms()) {
                for (const Monomial::Factor& factor : term.monomial.factors) {
                    if (known.insert(factor.name).second) {
                        names_.push_back(factor.name);
                    }
                }
            }
        }
        // In byte order, so that results do not depend on the order in which names were registered.
        std::sort(names_.begin(), names_.end(),
                  [&](std::uint32_t x, std::uint32_t y) { return order.isBefore(x, y); });
        powers_.resize(names_.size());
        fmpz_mpoly_ctx_init(context_, static_cast<slong>(names_.size()), ORD_DEGLEX);
    }
    ~Context() { fmpz_mpoly_ctx_clear(context_); }
    Context(const Context&) = delete;
    Context& operator=(const Context&) = delete;

    const fmpz_mpoly_ctx_struct* get() const { return context_; }
    const std::vector<std::uint32_t>& names() const { return names_; }
    std::vector<ulong>& powers() { return powers_; }

  private:
    fmpz_mpoly_ctx_t context_;
    std::vector<std::uint32_t> names_;
    std::vector<ulong> powers_;
};

/// A polynomial as an fmpz_mpoly_t. Its term order, ORD_DEGLEX, is that of Polynomial.
class FlintPolynomial {
  public:
    explicit FlintPolynomial(Context& context) : context_(&context) {
        fmpz_mpoly_init(value_, context.get());
    }
    FlintPolynomial(const Polynomial& polynomial, Context& context) : FlintPolynomial(context) {
        for (const Term& term : polynomial.terms()) {
            std::vector<ulong>& powers = context.powers();
            std::fill(powers.begin(), powers.end(), 0);
            // The factors of a term are in the order of the context's names.
            std::size_t place = 0;
            for (const Monomial::Factor& factor : term.monomial.factors) {
                while (context.names()[place] != factor.name) {
                    ++place;
                }
                powers[place] = factor.power;
            }
            fmpz_mpoly_push_term_fmpz_ui(value_, FlintInteger(term.coefficient).get(),
                                         powers.data(), context.get());
        }
    }
    ~FlintPolynomial() { fmpz_mpoly_clear(value_, context_->get()); }
    FlintPolynomial(const FlintPolynomial&) = delete;
    FlintPolynomial& operator=(const FlintPolynomial&) = delete;

    fmpz_mpoly_struct* get() { return value_; }

    Polynomial polynomial() const {
        const slong length = fmpz_mpoly_length(value_, context_->get());
        Polynomial::Terms terms(static_cast<std::size_t>(length));
        FlintInteger coefficient;
        for (slong i = 0; i < length; ++i) {
            Term& term = terms[static_cast<std::size_t>(i)];
            fmpz_mpoly_get_term_coeff_fmpz(coefficient.get(), value_, i, context_->get());
            term.coefficient = coefficient.integer();
            std::vector<ulong>& powers = context_->powers();
            fmpz_mpoly_get_term_exp_ui(powers.data(), value_, i, context_->get());
            for (std::size_t place = 0; place < powers.size(); ++place) {
                if (powers[place] != 0) {
                    const auto power = static_cast<std::uint32_t>(powers[place]);
                    term.monomial.factors.push_back({context_->names()[place], power});
                    term.monomial.degree += power;
                }
            }
        }
        return Polynomial(std::move(terms));
    }

  private:
    Context* context_;
    fmpz_mpoly_t value_;
};

std::size_t largestCoefficientBits(const Polynomial& a, const Polynomial& b) {
    std::size_t bits = 0;
    for (const Polynomial* polynomial : {&a, &b}) {
        for (const Term& term : polynomial->terms()) {
            bits = std::max(bits, term.coefficient.bits());
        }
    }
    return bits;
}

/// Requires the memory for both operands and a result with so many terms and coefficients of so
/// many times the bits.
void requireMemoryFor(const Context& context, const Polynomial& a, const Polynomial& b,
                      std::size_t resultTerms, std::size_t timesBits) {
    const std::size_t terms =
        a.terms().size() + b.terms().size() + std::min(resultTerms, limits::maximumMonomials);
    requirePolynomialMemory(terms, context.names().size(),
                            timesBits * largestCoefficientBits(a, b));
}

} // namespace

Polynomial multiply(const Polynomial& a, const Polynomial& b, const NameOrder& order) {
    assert(limits::mayMultiply(a, b));
    Context context(a, b, order);
    requireMemoryFor(context, a, b, a.terms().size() * b.terms().size(), 2);
    FlintPolynomial product(context);
    fmpz_mpoly_mul(product.get(), FlintPolynomial(a, context).get(),
                   FlintPolynomial(b, context).get(), context.get());
    return product.polynomial();
}

Polynomial raise(const Polynomial& base, std::uint32_t exponent, const NameOrder& order) {
    assert(limits::mayRaise(base, exponent));
    Context context(base, base, order);
    requireMemoryFor(context, base, base, limits::termsOfPower(base.terms().size(), exponent),
                     exponent);
    FlintPolynomial power(context);
    if (fmpz_mpoly_pow_ui(power.get(), FlintPolynomial(base, context).get(), exponent,
                          context.get()) == 0) {
        throw std::bad_alloc(); // fails only for powers beyond all memory
    }
    return power.polynomial();
}

Polynomial divideByCommonDivisor(Polynomial& a, Polynomial& b, const NameOrder& order) {
    assert(!a.isZero() && !b.isZero());
    Context context(a, b, order);
    // Images modulo several primes and evaluations of all names but one.
    constexpr std::size_t images = 16;
    requireMemoryFor(context, a, b, images * (a.terms().size() + b.terms().size()), 2);
    FlintPolynomial divisor(context);
    FlintPolynomial left(a, context);
    FlintPolynomial right(b, context);
    if (fmpz_mpoly_gcd_cofactors(divisor.get(), left.get(), right.get(), left.get(), right.get(),
                                 context.get()) == 0) {
        throw std::bad_alloc(); // fails only for powers beyond all memory
    }
    a = left.polynomial();
    b = right.polynomial();
    return divisor.polynomial();
}

} // namespace TV
