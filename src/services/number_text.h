/// \file
/// Decimal texts of numbers.
#pragma once

#include <cstddef>
#include <string>

namespace TVTypeSys {

/// The decimal text of a double, which reads back as the same; equal doubles give equal texts.
std::string decimalText(double value);

constexpr std::size_t longestDecimalText = 24;

/// Writes decimalText into memory for at least longestDecimalText characters; returns its end.
char* writeDecimalText(char* text, double value);

} // namespace TVTypeSys
