/// \file
/// A number as the library holds it: a fraction of 32-bit integers times a power of ten.
#pragma once

#include "definition.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace tvdata {

struct Form {
    std::int32_t numerator = 0;
    std::int32_t denominator = 1;
    int exponent = 0;
};

/// The forms that are exactly \p number, which is not 0. They differ in where factors of 2 and 5
/// stand. Empty if none fits.
std::vector<Form> exactForms(const Exact& number);

/// The exact form whose larger part is the smallest, or, if \p exponent is given, the one with this
/// exponent. Throws a Fault if there is none with it; nothing if there is no exact form at all.
std::optional<Form> exactForm(const Exact& number, std::optional<int> exponent);

/// The form nearest to \p number, which is above 0, of those whose parts do not exceed \p largest.
Form nearestForm(const Exact& number, std::int32_t largest);

Exact valueOf(const Form& form);

} // namespace tvdata
