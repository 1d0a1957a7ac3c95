/// \file
/// Conversion of numbers to decimal texts.
#pragma once

#include <cstddef>
#include <string>

namespace TVTypeSys {

/// Returns the decimal text of a double, which reads back as the same double. Equal doubles give
/// equal texts.
std::string decimalText(double value);

/// Upper bound of the length of decimalText.
constexpr std::size_t longestDecimalText = 24;

/// Writes decimalText to a buffer of at least longestDecimalText characters, without a terminator.
/// Returns the end of the text.
char* writeDecimalText(char* text, double value);

} // namespace TVTypeSys
