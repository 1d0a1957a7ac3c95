/// \file
/// The factor between two units: the exact one, and that of the library.
#pragma once

#include "units/found.h"
#include "units/shown_number.h"

#include <tvtypes/units.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tvtool::units {

/// A factor of the library that is off by more is wrong: its 32-bit numbers have overflowed.
inline constexpr double wrongFactor = 1e-9;

/// Whether values are points on a scale, or differences of such, to which offsets do not apply.
enum class Values : std::uint8_t { Points, Differences };

/// The factor of the library beside the exact one.
struct LibraryFactor {
    double factor = 0;
    double difference = 0; ///< relative to the exact factor; infinite for a factor that is not

    /// Returns whether the two differ by more than rounding in double.
    bool differs() const;
    bool isWrong() const { return !(difference <= wrongFactor); }
    /// Returns a sentence about the difference; empty if there is none.
    std::string note() const;
};

LibraryFactor compareFactor(double ofLibrary, const exact::Number& exact);

/// Two units, and what is to be known about conversions between them.
struct UnitPair {
    FoundUnit from;
    FoundUnit to;
    std::optional<Conversion> conversion; ///< exact; empty if there is none
    std::optional<double> libraryFactor;  ///< empty if the library has none
    std::string reason;                   ///< why one of the two is missing; empty otherwise
    std::vector<std::string> notes;       ///< how the texts were read
};

/// Registers two units in the table and relates them. Throws a text::ParseError.
UnitPair relateUnits(const std::string& from, const std::string& to, Values values,
                     TVTypeSys::UnitTable& table);

/// Returns how a product was read that has a unit with an offset; empty without one.
std::string differenceNote(const Expansion& expansion);

struct UnitFactor {
    std::string from;               ///< expression
    std::string to;                 ///< expression
    std::optional<double> factor;   ///< of the library
    std::optional<ShownNumber> own; ///< computed exactly
    bool differs = false;           ///< whether the two differ by more than rounding
    bool isWrong = false;           ///< whether they differ by more than `wrongFactor`
    std::string conversion;         ///< formula for a value x; empty unless the zero points differ
    std::string reason; ///< why one of the two factors is missing; empty if there are both
    std::vector<std::string> notes; ///< how the texts were read
    std::string libraryNote;        ///< how the factor of the library differs; empty if it does not
};

/// Returns the exact factor and that of the library, or the reason why there is none. Throws a
/// text::ParseError.
UnitFactor factorBetween(const std::string& from, const std::string& to, Values values,
                         TVTypeSys::UnitTable& table);

} // namespace tvtool::units
