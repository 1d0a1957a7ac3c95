#include "form.h"

#include "fault.h"

#include <fmt/format.h>

#include <algorithm>

namespace tvdata {

namespace {

struct Fraction {
    Integer numerator;
    Integer denominator;
};

bool fits(const Fraction& fraction, std::int32_t largest) {
    return fraction.numerator <= largest && fraction.denominator <= largest;
}

/// Returns the fraction nearest to a number, with parts from 1 to `largest`: the last convergent of
/// its continued fraction that fits, or the last semiconvergent after it.
std::optional<Fraction> nearestFraction(const Exact& number, std::int32_t largest) {
    Fraction before{0, 1};
    Fraction last{1, 0};
    Exact rest = number;
    while (true) {
        const Integer whole = numerator(rest) / denominator(rest);
        const auto step = [&](const Integer& count) {
            return Fraction{count * last.numerator + before.numerator,
                            count * last.denominator + before.denominator};
        };
        if (!fits(step(whole), largest)) {
            Integer count = whole;
            for (const auto& [part, earlier] : {std::pair(last.numerator, before.numerator),
                                                std::pair(last.denominator, before.denominator)}) {
                if (part != 0) {
                    count = std::min(count, Integer((largest - earlier) / part));
                }
            }
            const Fraction between = step(count);
            const auto isFraction = [](const Fraction& candidate) {
                return candidate.numerator > 0 && candidate.denominator > 0;
            };
            const auto distance = [&](const Fraction& candidate) {
                return abs(Exact(candidate.numerator, candidate.denominator) - number);
            };
            if (!isFraction(last)) {
                return isFraction(between) ? std::optional(between) : std::nullopt;
            }
            return isFraction(between) && distance(between) < distance(last) ? between : last;
        }
        before = std::exchange(last, step(whole));
        if (rest == whole) {
            return last;
        }
        rest = 1 / (rest - whole);
    }
}

} // namespace

std::vector<Form> exactForms(const Exact& number) {
    Integer top = numerator(number);
    Integer bottom = denominator(number);
    const int twos = divideOut(top, 2) - divideOut(bottom, 2);
    const int fives = divideOut(top, 5) - divideOut(bottom, 5);
    std::vector<Form> forms;
    for (int exponent = std::min(twos, fives); exponent <= std::max(twos, fives); ++exponent) {
        const Exact fraction = Exact(top, bottom) * raised(Exact(2), twos - exponent) *
                               raised(Exact(5), fives - exponent);
        if (abs(numerator(fraction)) <= largestPart && denominator(fraction) <= largestPart) {
            forms.push_back({static_cast<std::int32_t>(numerator(fraction)),
                             static_cast<std::int32_t>(denominator(fraction)), exponent});
        }
    }
    return forms;
}

std::optional<Form> exactForm(const Exact& number, std::optional<int> exponent) {
    const std::vector<Form> forms = exactForms(number);
    if (exponent) {
        const auto form = std::ranges::find(forms, *exponent, &Form::exponent);
        if (form == forms.end()) {
            throw Fault(
                fmt::format("the factor has no exact form with the exponent {}", *exponent));
        }
        return *form;
    }
    const auto form = std::ranges::min_element(forms, {}, [](const Form& candidate) {
        return std::max(std::abs(candidate.numerator), candidate.denominator);
    });
    return form == forms.end() ? std::nullopt : std::optional(*form);
}

Form nearestForm(const Exact& number, std::int32_t largest) {
    std::optional<Form> nearest;
    Exact smallestError = 0;
    // Only mantissas near 1: far from it one part is small, and the fraction is inaccurate.
    constexpr int reach = 10;
    const int middle = magnitude(number);
    for (int exponent = middle - reach; exponent <= middle + reach; ++exponent) {
        const Exact power = raised(Exact(10), exponent);
        const auto fraction = nearestFraction(number / power, largest);
        if (!fraction) {
            continue;
        }
        const Exact error = abs(Exact(fraction->numerator, fraction->denominator) * power - number);
        if (!nearest || error < smallestError) {
            smallestError = error;
            // Moves trailing zeros of the parts to the exponent.
            nearest = exactForm(Exact(fraction->numerator, fraction->denominator) * power, {});
        }
    }
    return nearest.value();
}

Form shortForm(const Exact& number) {
    constexpr std::int32_t eightDigits = 99'999'999;
    const Exact tolerance = number / raised(Exact(10), 15);
    auto nearest = nearestFraction(number, eightDigits).value();
    if (abs(Exact(nearest.numerator, nearest.denominator) - number) > tolerance) {
        nearest = nearestFraction(number, largestPart).value();
    }
    return {static_cast<std::int32_t>(nearest.numerator),
            static_cast<std::int32_t>(nearest.denominator), 0};
}

Exact valueOf(const Form& form) {
    return Exact(form.numerator, form.denominator) * raised(Exact(10), form.exponent);
}

} // namespace tvdata
