/// \file
/// Decimal texts of numbers, the same in every locale.
#pragma once

#include <fnd/export.h>

#include <cstddef>
#include <string>

/// The fewest digits that read back as the same double: in fixed notation for 0 and for
/// 1e-5 <= |x| < 1e15 (`0.0625`, `3`, `-0.5`), else in scientific notation with a sign and at
/// least two digits in the exponent (`1e+20`, `1.5e-07`). `Inf`, `-Inf`, `NaN`. Equal doubles give
/// equal texts: -0.0 is `0`. With `plusSign`, a text that has no minus begins with a plus.
TV_PLATFORM_API std::string tvsv_dtoa(double x, bool plusSign);

/// The same as tvsv_dtoa(x, false): a text that the host reads back as the same double.
TV_PLATFORM_API std::string tvsv_dtoa_fitools(double x);

/// No text of tvsv_dtoa_fitools is longer.
constexpr std::size_t tvsvLongestNumberText = 24;

/// Writes the text of tvsv_dtoa_fitools into memory for at least tvsvLongestNumberText characters,
/// without a zero behind it, and returns its end.
TV_PLATFORM_API char* tvsv_dtoa_into(char* text, double x);
