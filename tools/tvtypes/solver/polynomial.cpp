#include "solver/polynomial.h"

#include <algorithm>
#include <iterator>

namespace tvtool::solver {

Monomial operator*(const Monomial& a, const Monomial& b) {
    Monomial product;
    product.reserve(a.size() + b.size());
    std::ranges::merge(a, b, std::back_inserter(product));
    return product;
}

void Polynomial::add(const Monomial& monomial, const Number& coefficient) {
    if (coefficient == 0) {
        return;
    }
    const auto [term, isNew] = terms_.try_emplace(monomial, coefficient);
    if (!isNew) {
        term->second += coefficient;
        if (term->second == 0) {
            terms_.erase(term);
        }
    }
}

void Polynomial::add(const Polynomial& other, const Number& factor) {
    for (const auto& [monomial, coefficient] : other.terms_) {
        add(monomial, coefficient * factor);
    }
}

bool Polynomial::isConstant() const {
    return terms_.empty() || (terms_.size() == 1 && terms_.begin()->first.empty());
}

Number Polynomial::constant() const {
    const auto term = terms_.find({});
    return term == terms_.end() ? Number(0) : term->second;
}

Polynomial Polynomial::operator-() const {
    Polynomial negated;
    negated.add(*this, -1);
    return negated;
}

Polynomial operator*(const Polynomial& a, const Polynomial& b) {
    Polynomial product;
    for (const auto& [monomial, coefficient] : a.terms_) {
        for (const auto& [otherMonomial, otherCoefficient] : b.terms_) {
            product.add(monomial * otherMonomial, coefficient * otherCoefficient);
        }
    }
    return product;
}

Polynomial primitive(const Polynomial& polynomial) {
    if (polynomial.terms().empty()) {
        return polynomial;
    }
    exact::Integer content = 0;
    exact::Integer multiple = 1;
    for (const auto& [monomial, coefficient] : polynomial.terms()) {
        content = gcd(content, abs(numerator(coefficient)));
        multiple = lcm(multiple, denominator(coefficient));
    }
    Polynomial result;
    result.add(polynomial, Number(multiple, content));
    return result;
}

} // namespace tvtool::solver
