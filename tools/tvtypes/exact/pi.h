/// \file
/// Multiples of powers of pi.
///
/// Such a number is computed with a fraction for pi. As all operations are exact, dividing by the
/// same power of this fraction returns the exact multiple again.
#pragma once

#include "exact/number.h"

#include <cstdint>
#include <string>

namespace tvtool::exact {

/// Returns the fraction for pi, whose relative error is below 1e-50.
const Number& pi();

/// Returns the exact text of a number that contains this power of pi(): pi/180, 16*pi^2 or
/// 5/(18*pi). With the power 0 it is that of fractionText(number).
std::string multipleOfPiText(const Number& number, std::int64_t power);

} // namespace tvtool::exact
