/// \file
/// Units whose names people write as several words: deg C, fl oz, ft-lb, in of mercury.
#pragma once

#include "units/spelling.h"

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace tvtool::units {

struct Phrase {
    std::size_t count = 0; ///< the number of names; 0 if they are no phrase
    std::string unit;      ///< valid in an expression
    std::string reason;    ///< of a reading that is not the name of the unit, else empty
};

/// The most names that a phrase has.
inline constexpr std::size_t longestPhrase = 4;

/// Returns the phrase at the beginning of adjacent names: each except the first is joined to the
/// one before it by a blank, a dash or a point.
Phrase findPhrase(std::span<const SpeltName> names);

/// Returns the unit of a temperature written as one word, such as degreeC; else an empty text.
std::string_view temperatureScale(std::string_view name);

/// Returns the unit of a name with a word that qualifies it, before or after: gal and US, cal and
/// IT. Empty if there is none.
std::string qualifiedUnit(std::string_view name, std::string_view word);

} // namespace tvtool::units
