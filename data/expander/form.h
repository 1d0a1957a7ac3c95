/// \file
/// Representation of numbers in the library: a fraction of 32-bit integers times a power of ten.
#pragma once

#include "number.h"

#include <cstdint>
#include <limits>
#include <optional>
#include <vector>

namespace tvdata {

/// The largest numerator and denominator of a Form.
constexpr std::int32_t largestPart = std::numeric_limits<std::int32_t>::max();

/// The number numerator / denominator * 10^exponent.
struct Form {
    std::int32_t numerator = 0;
    std::int32_t denominator = 1;
    int exponent = 0;
};

/// Returns all exact forms of a number. They differ in the distribution of factors of 2 and 5.
/// Empty if none fits. \pre `number` is not 0.
std::vector<Form> exactForms(const Exact& number);

/// Returns the exact form with this exponent and throws Fault if there is none; without an exponent
/// the one whose larger part is the smallest, or no value if there is none. \pre `number` is not 0.
std::optional<Form> exactForm(const Exact& number, std::optional<int> exponent);

/// Returns the form nearest to a number, with parts of at most `largest`. \pre `number` is
/// positive.
Form nearestForm(const Exact& number, std::int32_t largest);

/// Returns the nearest form with the exponent 0 and parts of eight digits, or, if it is not correct
/// to 15 digits, of 32 bits. \pre `number` is from 0.1 to 10.
Form shortForm(const Exact& number);

/// Returns the value of a form.
Exact valueOf(const Form& form);

} // namespace tvdata
