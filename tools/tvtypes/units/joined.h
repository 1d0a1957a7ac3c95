/// \file
/// Products of symbols without signs between them.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tvtool::units {

/// A unit of the database with its power.
struct UnitPower {
    std::string name; ///< valid in an expression
    std::int64_t power = 1;
};

/// Splits a text such as Nmm or kgm2s into common symbols, each with the digits after it as its
/// power. A symbol with a prefix is preferred to two symbols: Nmm is N*mm, mm2K is mm^2*K. Returns
/// an empty list if the text is no such product, or is too long for one.
std::vector<UnitPower> splitJoined(std::string_view text);

/// Returns the value of digits, 1 for none, or 0 if it exceeds 32 bits.
std::int64_t powerOfDigits(std::string_view digits);

} // namespace tvtool::units
