/// \file
/// Number numbers and their decimal texts.
#pragma once

#include "exact/number.h"

#include <string>
#include <string_view>

namespace tvtool::exact {

/// The number that a decimal text is, as -12.5e-3, without loss. Throws an Error for another text,
/// and for one of more than some thousand digits.
Number parseDecimal(std::string_view text);

/// A number as a decimal: exactly if it has at most 24 digits, else "about" and the nearest of 17.
std::string decimalText(const Number& number);

} // namespace tvtool::exact
