#include "solver/roots.h"

#include <flint/fmpz_poly.h>
#include <flint/fmpz_poly_factor.h>

#include <algorithm>
#include <cassert>
#include <string>

namespace tvtool::solver {

namespace {

class FlintPolynomial {
  public:
    explicit FlintPolynomial(const std::vector<Integer>& coefficients) {
        fmpz_poly_init(value_);
        fmpz_poly_factor_init(factors_);
        fmpz_t number;
        fmpz_init(number);
        for (std::size_t i = 0; i < coefficients.size(); ++i) {
            fmpz_set_str(number, coefficients[i].str().c_str(), 10);
            fmpz_poly_set_coeff_fmpz(value_, static_cast<slong>(i), number);
        }
        fmpz_clear(number);
        fmpz_poly_factor(factors_, value_);
    }
    ~FlintPolynomial() {
        fmpz_poly_factor_clear(factors_);
        fmpz_poly_clear(value_);
    }
    FlintPolynomial(const FlintPolynomial&) = delete;
    FlintPolynomial& operator=(const FlintPolynomial&) = delete;

    Roots roots() const {
        Roots roots;
        for (slong i = 0; i < factors_->num; ++i) {
            const fmpz_poly_struct* const factor = factors_->p + i;
            if (fmpz_poly_degree(factor) == 1) {
                roots.fractions.emplace_back(-coefficient(factor, 0), coefficient(factor, 1));
                continue;
            }
            slong negative = 0;
            slong positive = 0;
            _fmpz_poly_num_real_roots_sturm(&negative, &positive, factor->coeffs, factor->length);
            roots.hasNegativeIrrational = roots.hasNegativeIrrational || negative > 0;
            roots.hasPositiveIrrational = roots.hasPositiveIrrational || positive > 0;
        }
        std::ranges::sort(roots.fractions);
        return roots;
    }

  private:
    static Integer coefficient(const fmpz_poly_struct* polynomial, slong power) {
        fmpz* const number = fmpz_poly_get_coeff_ptr(polynomial, power);
        if (number == nullptr) {
            return 0;
        }
        std::string digits(fmpz_sizeinbase(number, 10) + 2, '\0');
        fmpz_get_str(digits.data(), 10, number);
        return Integer(digits.c_str());
    }

    fmpz_poly_t value_;
    fmpz_poly_factor_t factors_;
};

} // namespace

std::optional<Roots> realRoots(const std::vector<Integer>& coefficients) {
    assert(coefficients.size() > 1 && coefficients.back() != 0);
    constexpr std::size_t highestDegree = 16;
    constexpr std::size_t mostBits = 1000;
    const bool isTooLarge = std::ranges::any_of(coefficients, [](const Integer& coefficient) {
        return coefficient != 0 && msb(abs(coefficient)) >= mostBits;
    });
    if (coefficients.size() > highestDegree + 1 || isTooLarge) {
        return std::nullopt;
    }
    return FlintPolynomial(coefficients).roots();
}

} // namespace tvtool::solver
