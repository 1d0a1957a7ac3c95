// The one place that calls FLINT. It ends the process where it is asked for what cannot be done; so
// divisors are not zero here, and what is multiplied has been found to be within bounds.
#include "algebra/flint.h"

#include "algebra/integer.h"

#include <boost/unordered/unordered_flat_set.hpp>

#include <flint/fmpz.h>
#include <flint/fmpz_mpoly.h>

#include <algorithm>
#include <new>
#include <numeric>
#include <utility>

namespace TV {

struct Integer::Big {
    Big() { fmpz_init(value); }
    ~Big() { fmpz_clear(value); }
    Big(const Big&) = delete;
    Big& operator=(const Big&) = delete;

    fmpz_t value;
};

/// An integer as FLINT has it.
class FlintInteger {
  public:
    FlintInteger() { fmpz_init(value_); }
    explicit FlintInteger(const Integer& integer) : FlintInteger() {
        if (integer.big_) {
            fmpz_set(value_, integer.big_->value);
        } else {
            fmpz_set_si(value_, integer.value_);
        }
    }
    ~FlintInteger() { fmpz_clear(value_); }
    FlintInteger(const FlintInteger&) = delete;
    FlintInteger& operator=(const FlintInteger&) = delete;

    fmpz* get() { return value_; }

    Integer integer() const {
        Integer integer;
        if (fmpz_fits_si(value_)) {
            integer.value_ = fmpz_get_si(value_);
        } else {
            integer.value_ = 0;
            integer.big_.reset(new Integer::Big);
            fmpz_set(integer.big_->value, value_);
        }
        return integer;
    }

  private:
    fmpz_t value_;
};

namespace {

std::uint64_t magnitudeOf(std::int64_t value) {
    return value < 0 ? 0 - static_cast<std::uint64_t>(value) : static_cast<std::uint64_t>(value);
}

/// The names of two polynomials, and memory for the powers of one term.
class Context {
  public:
    Context(const Polynomial& a, const Polynomial& b, const Names& names) {
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
        // In byte order, so that nothing depends on which name came first.
        std::sort(names_.begin(), names_.end(),
                  [&](std::uint32_t x, std::uint32_t y) { return names.isBefore(x, y); });
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

/// A polynomial as FLINT has it. Terms have the same order there.
class FlintPolynomial {
  public:
    explicit FlintPolynomial(Context& context) : context_(&context) {
        fmpz_mpoly_init(value_, context.get());
    }
    FlintPolynomial(const Polynomial& polynomial, Context& context) : FlintPolynomial(context) {
        for (const Term& term : polynomial.terms()) {
            std::vector<ulong>& powers = context.powers();
            std::fill(powers.begin(), powers.end(), 0);
            // The factors of a term are in the order of the names.
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

} // namespace

Integer::Integer(const std::string& digits) : value_(0) {
    FlintInteger value;
    if (fmpz_set_str(value.get(), digits.c_str(), 10) == 0) {
        *this = value.integer();
    }
}

void Integer::Destroy::operator()(Big* big) const { delete big; }

Integer::BigPointer Integer::copyOf(const Big& big) {
    BigPointer copy(new Big);
    fmpz_set(copy->value, big.value);
    return copy;
}

bool Integer::isBigNegative() const { return fmpz_sgn(big_->value) < 0; }

Integer& Integer::operator+=(const Integer& other) {
    std::int64_t sum = 0;
    if (!big_ && !other.big_ && !__builtin_add_overflow(value_, other.value_, &sum)) {
        value_ = sum;
        return *this;
    }
    FlintInteger result(*this);
    fmpz_add(result.get(), result.get(), FlintInteger(other).get());
    return *this = result.integer();
}

Integer& Integer::operator*=(const Integer& other) {
    std::int64_t product = 0;
    if (!big_ && !other.big_ && !__builtin_mul_overflow(value_, other.value_, &product)) {
        value_ = product;
        return *this;
    }
    FlintInteger result(*this);
    fmpz_mul(result.get(), result.get(), FlintInteger(other).get());
    return *this = result.integer();
}

void Integer::negate() { *this *= Integer(-1); }

void Integer::divideExactly(const Integer& divisor) {
    if (!big_ && !divisor.big_ && divisor.value_ != -1) {
        value_ /= divisor.value_;
        return;
    }
    FlintInteger quotient(*this);
    fmpz_divexact(quotient.get(), quotient.get(), FlintInteger(divisor).get());
    *this = quotient.integer();
}

bool Integer::operator==(const Integer& other) const {
    if (!big_ || !other.big_) {
        return value_ == other.value_ && !big_ == !other.big_;
    }
    return fmpz_equal(big_->value, other.big_->value) != 0;
}

std::size_t Integer::bits() const {
    return big_ ? fmpz_bits(big_->value) : FLINT_BIT_COUNT(magnitudeOf(value_));
}

std::string Integer::text() const {
    if (!big_) {
        return std::to_string(value_);
    }
    std::string digits(fmpz_sizeinbase(big_->value, 10) + 2, '\0'); // with a sign and a null
    fmpz_get_str(digits.data(), 10, big_->value);
    digits.resize(digits.find('\0'));
    return digits;
}

Integer greatestCommonDivisor(const Integer& a, const Integer& b) {
    if (!a.big_ && !b.big_) {
        const std::uint64_t divisor = std::gcd(magnitudeOf(a.value_), magnitudeOf(b.value_));
        if (divisor <= INT64_MAX) {
            return static_cast<std::int64_t>(divisor);
        }
    }
    FlintInteger divisor(a);
    fmpz_gcd(divisor.get(), divisor.get(), FlintInteger(b).get());
    return divisor.integer();
}

Integer leastCommonMultiple(const Integer& a, const Integer& b) {
    FlintInteger multiple(a);
    fmpz_lcm(multiple.get(), multiple.get(), FlintInteger(b).get());
    return multiple.integer();
}

Polynomial multiply(const Polynomial& a, const Polynomial& b, const Names& names) {
    Context context(a, b, names);
    FlintPolynomial product(context);
    fmpz_mpoly_mul(product.get(), FlintPolynomial(a, context).get(),
                   FlintPolynomial(b, context).get(), context.get());
    return product.polynomial();
}

Polynomial raise(const Polynomial& base, std::uint32_t exponent, const Names& names) {
    Context context(base, base, names);
    FlintPolynomial power(context);
    if (fmpz_mpoly_pow_ui(power.get(), FlintPolynomial(base, context).get(), exponent,
                          context.get()) == 0) {
        throw std::bad_alloc(); // it fails for powers beyond all memory alone
    }
    return power.polynomial();
}

Polynomial takeCommonDivisor(Polynomial& a, Polynomial& b, const Names& names) {
    Context context(a, b, names);
    FlintPolynomial divisor(context);
    FlintPolynomial left(a, context);
    FlintPolynomial right(b, context);
    if (fmpz_mpoly_gcd_cofactors(divisor.get(), left.get(), right.get(), left.get(), right.get(),
                                 context.get()) == 0) {
        throw std::bad_alloc(); // it fails for powers beyond all memory alone
    }
    a = left.polynomial();
    b = right.polynomial();
    return divisor.polynomial();
}

} // namespace TV
