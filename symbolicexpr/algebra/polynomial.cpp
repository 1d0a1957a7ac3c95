#include "algebra/polynomial.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace TV {

Monomial multiply(const Monomial& a, const Monomial& b, const NameOrder& order) {
    if (a.factors.empty()) {
        return b;
    }
    Monomial product;
    product.factors.reserve(a.factors.size() + b.factors.size());
    product.degree = a.degree + b.degree;
    auto left = a.factors.begin();
    auto right = b.factors.begin();
    while (left != a.factors.end() && right != b.factors.end()) {
        if (left->name == right->name) {
            product.factors.push_back({left->name, left->power + right->power});
            ++left;
            ++right;
        } else {
            auto& first = order.isBefore(left->name, right->name) ? left : right;
            product.factors.push_back(*first);
            ++first;
        }
    }
    product.factors.insert(product.factors.end(), left, a.factors.end());
    product.factors.insert(product.factors.end(), right, b.factors.end());
    return product;
}

Monomial greatestCommonDivisor(const Monomial& a, const Monomial& b, const NameOrder& order) {
    Monomial divisor;
    auto left = a.factors.begin();
    auto right = b.factors.begin();
    while (left != a.factors.end() && right != b.factors.end()) {
        if (left->name == right->name) {
            const std::uint32_t power = std::min(left->power, right->power);
            divisor.factors.push_back({left->name, power});
            divisor.degree += power;
            ++left;
            ++right;
        } else {
            ++(order.isBefore(left->name, right->name) ? left : right);
        }
    }
    return divisor;
}

Monomial divideExactly(const Monomial& dividend, const Monomial& divisor) {
    if (divisor.factors.empty()) {
        return dividend;
    }
    Monomial quotient;
    quotient.degree = dividend.degree - divisor.degree;
    auto taken = divisor.factors.begin();
    for (Monomial::Factor factor : dividend.factors) {
        if (taken != divisor.factors.end() && taken->name == factor.name) {
            factor.power -= taken->power;
            ++taken;
        }
        if (factor.power != 0) {
            quotient.factors.push_back(factor);
        }
    }
    return quotient;
}

bool isBefore(const Monomial& a, const Monomial& b, const NameOrder& order) {
    if (a.degree != b.degree) {
        return a.degree > b.degree;
    }
    const auto [left, right] = std::mismatch(a.factors.begin(), a.factors.end(), //
                                             b.factors.begin(), b.factors.end());
    if (left == a.factors.end() || right == b.factors.end()) {
        return false; // equal: monomials of one degree end together
    }
    return left->name == right->name ? left->power > right->power
                                     : order.isBefore(left->name, right->name);
}

Polynomial::Polynomial(Integer constant) {
    if (!constant.isZero()) {
        terms_.push_back({std::move(constant), {}, 0});
    }
}

Polynomial::Polynomial(std::uint32_t name) {
    terms_.push_back({1, {}, 0});
    terms_.front().monomial.factors.push_back({name, 1});
    terms_.front().monomial.degree = 1;
}

void Polynomial::negate() {
    for (Term& term : terms_) {
        term.coefficient.negate();
    }
}

void Polynomial::multiplyBy(const Integer& factor) {
    if (factor.isZero()) {
        terms_.clear();
    }
    if (factor.isOne()) {
        return;
    }
    if (factor.isMinusOne()) {
        return negate();
    }
    for (Term& term : terms_) {
        term.coefficient *= factor;
        term.internedId = 0;
    }
}

void Polynomial::divideExactlyBy(const Term& divisor) {
    if (divisor.coefficient.isOne() && divisor.monomial.degree == 0) {
        return;
    }
    for (Term& term : terms_) {
        term.internedId = 0;
        if (!divisor.coefficient.isOne()) {
            term.coefficient.divideExactly(divisor.coefficient);
        }
        if (divisor.monomial.degree != 0) {
            term.monomial = divideExactly(term.monomial, divisor.monomial);
        }
    }
}

Polynomial add(Polynomial a, Polynomial b, const NameOrder& order) {
    Polynomial::Terms sum;
    sum.reserve(a.terms_.size() + b.terms_.size());
    auto left = a.terms_.begin();
    auto right = b.terms_.begin();
    while (left != a.terms_.end() && right != b.terms_.end()) {
        if (left->monomial == right->monomial) {
            left->coefficient += right->coefficient;
            left->internedId = 0;
            if (!left->coefficient.isZero()) {
                sum.push_back(std::move(*left));
            }
            ++left;
            ++right;
        } else {
            auto& first = isBefore(left->monomial, right->monomial, order) ? left : right;
            sum.push_back(std::move(*first));
            ++first;
        }
    }
    std::move(left, a.terms_.end(), std::back_inserter(sum));
    std::move(right, b.terms_.end(), std::back_inserter(sum));
    return Polynomial(std::move(sum));
}

Polynomial multiply(const Polynomial& a, const Term& b, const NameOrder& order) {
    // Graded lexicographic order is compatible with multiplication, so the terms stay in order.
    Polynomial::Terms product;
    product.reserve(a.terms().size());
    for (const Term& term : a.terms()) {
        product.push_back({term.coefficient, multiply(term.monomial, b.monomial, order), 0});
        product.back().coefficient *= b.coefficient;
    }
    return Polynomial(std::move(product));
}

} // namespace TV
