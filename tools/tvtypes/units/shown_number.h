/// \file
/// Numbers as reports show them: exact, rounded or measured.
#pragma once

#include "exact/number.h"

#include <cstdint>
#include <optional>
#include <string>

namespace tvtool::units {

/// A number with the texts that denote it.
struct ShownNumber {
    std::string exact;      ///< the number without rounding: 5/18, pi/180; empty for a measured one
    std::string digits;     ///< decimal; see exact::shortestDecimal()
    bool isRounded = false; ///< whether the digits are
    double decimal = 0;     ///< the nearest double
    std::optional<double> uncertainty; ///< relative standard uncertainty of a measured number

    /// Returns "about " before rounded digits.
    std::string decimalText() const;
    /// Returns " (measured, relative uncertainty 3.1e-10)", or an empty text.
    std::string uncertaintyText() const;
    /// Returns the number with what is to be known of it: "12", "5/18 (about 0.2777777777777778)",
    /// "about 0.1151292546497023" or "1.66053906892e-27 (measured, relative uncertainty 3.1e-10)".
    std::string text() const;
};

/// \param number      with exact::pi() for pi
/// \param piPower     the power of pi in it
/// \param uncertainty relative standard uncertainty; 0 for an exact number
ShownNumber shownNumber(const exact::Number& number, std::int64_t piPower = 0,
                        double uncertainty = 0);

} // namespace tvtool::units
