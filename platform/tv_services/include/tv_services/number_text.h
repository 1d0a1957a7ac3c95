/// \file
/// Decimal texts of numbers, independent of the locale.
#pragma once

#include <fnd/export.h>

#include <string>

/// Returns the shortest decimal text that converts back to the same double: in fixed notation for 0
/// and for 1e-5 <= |x| < 1e15 (`0.0625`, `3`, `-0.5`), else in scientific notation with a sign and
/// at least two digits of the exponent (`1e+20`, `1.5e-07`); `Inf`, `-Inf`, `NaN`. Equal doubles
/// have equal texts: -0.0 is `0`. With `plusSign`, a text without a minus begins with a plus.
TV_PLATFORM_API std::string tvsv_dtoa(double x, bool plusSign);

/// Returns tvsv_dtoa(x, false).
TV_PLATFORM_API std::string tvsv_dtoa_fitools(double x);
