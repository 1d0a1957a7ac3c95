/// \file
/// Values of parameters.
#pragma once

#include "exact/number.h"
#include "ssp/records.h"

#include <boost/unordered/unordered_flat_map.hpp>

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace tvtool::systems {

bool isReal(exchange::BaseType base);
bool isInteger(exchange::BaseType base); ///< an enumeration is none

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

/// Returns the exact value of the decimal that a finite double was written as.
exact::Number decimalOf(double number);

/// Returns the value of a text that is "true", "false", "1" or "0".
bool readBoolean(std::string_view text);

/// Returns whether a text is a value of a base type; of an enumeration every text is one.
bool isParameterValue(std::string_view text, exchange::BaseType base);

/// Finds items of enumerations; of several the first one. Each function returns null if there is
/// none. The items do not change while this object is used.
class ItemIndex {
  public:
    const exchange::Item* named(const std::vector<exchange::Item>& items, std::string_view name);
    const exchange::Item* withValue(const std::vector<exchange::Item>& items, std::int64_t value);

  private:
    struct Maps {
        boost::unordered_flat_map<std::string_view, const exchange::Item*> byName;
        boost::unordered_flat_map<std::int64_t, const exchange::Item*> byValue;
    };

    const Maps& mapsOf(const std::vector<exchange::Item>& items);

    std::unordered_map<const std::vector<exchange::Item>*, Maps> maps_;
};

/// Returns the texts separated by blanks, shortened.
std::string joinedValues(std::span<const std::string_view> values);

} // namespace tvtool::systems
