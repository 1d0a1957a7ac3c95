/// \file
/// Values of parameters.
#pragma once

#include "exact/number.h"
#include "ssp/records.h"
#include "systems/type_conversion.h"
#include "systems/unit_conversion.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tvtool::systems {

/// The number of a value. Decimals are exact; those that a double cannot hold, or that are longer
/// than is useful, are the nearest double, which may be infinite.
struct ExactValue {
    enum class Kind : std::uint8_t { Number, Infinite, NotANumber };

    Kind kind = Kind::Number;
    bool isNegative = false; ///< of an infinite one
    exact::Number number;    ///< 0 unless the kind is Number
};

/// Returns the value of a word that is a valid floating-point number or integer.
ExactValue readExact(std::string_view word);

/// Returns the fewest digits that determine the nearest double.
std::string shownText(const ExactValue& value);

/// Returns the value of a text that is "true", "false", "1" or "0".
bool readBoolean(std::string_view text);

/// Returns whether a text is a value of a base type; of an enumeration every text is one.
bool isParameterValue(std::string_view text, exchange::BaseType base);

/// Returns the texts separated by blanks, shortened.
std::string joinedValues(std::span<const std::string_view> values);

} // namespace tvtool::systems
