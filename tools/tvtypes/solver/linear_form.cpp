#include "solver/linear_form.h"

#include <algorithm>

namespace tvtool::solver {

const LinearForm::Term* LinearForm::find(Column column) const {
    const auto term = std::ranges::lower_bound(terms_, column, {}, &Term::column);
    return term != terms_.end() && term->column == column ? &*term : nullptr;
}

void LinearForm::add(const LinearForm& other, const Number& factor) {
    constant_ += other.constant_ * factor;
    std::vector<Term> sum;
    sum.reserve(terms_.size() + other.terms_.size());
    auto left = terms_.begin();
    auto right = other.terms_.begin();
    while (left != terms_.end() || right != other.terms_.end()) {
        if (right == other.terms_.end() || (left != terms_.end() && left->column < right->column)) {
            sum.push_back(std::move(*left++));
        } else if (left == terms_.end() || right->column < left->column) {
            sum.push_back({right->column, right->coefficient * factor});
            ++right;
        } else {
            left->coefficient += right->coefficient * factor;
            if (left->coefficient != 0) {
                sum.push_back(std::move(*left));
            }
            ++left;
            ++right;
        }
    }
    terms_ = std::move(sum);
}

void LinearForm::scale(const Number& factor) {
    constant_ *= factor;
    for (Term& term : terms_) {
        term.coefficient *= factor;
    }
}

std::uint64_t LinearForm::weight() const {
    std::uint64_t weight = weightOf(constant_);
    for (const Term& term : terms_) {
        weight += weightOf(term.coefficient);
    }
    return weight;
}

bool LinearForm::substitute(Column column, const LinearForm& form) {
    const auto term = std::ranges::lower_bound(terms_, column, {}, &Term::column);
    if (term == terms_.end() || term->column != column) {
        return false;
    }
    const Number factor = std::move(term->coefficient);
    terms_.erase(term);
    add(form, factor);
    return true;
}

LinearForm LinearForm::solvedFor(Column column) const {
    LinearForm form = *this;
    const Number coefficient = find(column)->coefficient;
    std::erase_if(form.terms_, [column](const Term& term) { return term.column == column; });
    form.scale(-1 / coefficient);
    return form;
}

void LinearForm::makePrimitive() {
    if (terms_.empty()) {
        return;
    }
    Integer content = 0;
    Integer multiple = 1;
    for (const Term& term : terms_) {
        content = gcd(content, abs(numerator(term.coefficient)));
        multiple = lcm(multiple, denominator(term.coefficient));
    }
    if (content != 1 || multiple != 1) {
        scale(Number(multiple, content));
    }
}

std::uint64_t weightOf(const Number& number) {
    const std::uint64_t limbs =
        numerator(number).backend().size() + denominator(number).backend().size();
    // Small numbers have one limb each.
    return 1 + (limbs - 2) * (limbs - 2);
}

Integer floorOf(const Number& number) {
    Integer quotient;
    Integer remainder;
    divide_qr(numerator(number), denominator(number), quotient, remainder);
    return remainder < 0 ? Integer(quotient - 1) : quotient;
}

} // namespace tvtool::solver
