/// \file
/// Decimal texts of exact numbers.
#pragma once

#include "exact/number.h"

#include <optional>
#include <string>
#include <string_view>

namespace tvtool::exact {

/// The parts of an unsigned decimal text, whose value is digits * 10^(exponent - decimals).
struct DecimalParts {
    Integer digits;
    int decimals = 0; ///< number of digits after the point
    int exponent = 0; ///< the written power of ten, limited to +-10^9
};

/// Splits an unsigned decimal text such as 12.5e-3; empty for any other text.
std::optional<DecimalParts> splitDecimal(std::string_view text);

/// Returns the exact value of a decimal text such as -12.5e-3. Throws a std::invalid_argument for
/// any other text, for more than 4000 characters and for a power of ten beyond -5000 to 5000.
Number parseDecimal(std::string_view text);

/// Returns a number as a decimal: exactly if it has at most 24 digits, else "about" and the number
/// rounded to 17 digits.
std::string decimalText(const Number& number);

} // namespace tvtool::exact
