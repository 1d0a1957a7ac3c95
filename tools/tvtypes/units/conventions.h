/// \file
/// Texts with a usual meaning that their grammar does not give, and texts that are no units.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tvtool::units {

struct Convention {
    std::string_view text;
    std::string_view reading;  ///< the expression; empty if the text is refused
    std::string_view sentence; ///< the reason of the reading or of the refusal; may be empty
};

/// Returns the convention for a whole text that the library takes for an expression; null if there
/// is none.
const Convention* overridingConvention(std::string_view text);

/// Returns the convention for a whole text that is no expression; null if there is none.
const Convention* conventionOfText(std::string_view text);

/// Returns the convention for a name without signs that is not in the database; null if there is
/// none.
const Convention* conventionOfName(std::string_view name);

/// Returns the normal or standard volume that a name to the power 3 or -3 is, such as Nm3 for Nm;
/// empty for other names. In gas engineering it is never the cube of a product.
std::string_view gasVolume(std::string_view name);

/// Returns the reason why a name is no unit, although it begins with one: a level such as dBm, a
/// pressure such as Pa_abs, a voltage such as Vrms. Empty if there is no such reason.
std::string reasonAgainstName(std::string_view name);

/// Same for a name and a word after it, as in bar(g), dB(A) and m3(STP).
std::string reasonAgainstQualifier(std::string_view name, std::string_view qualifier);

} // namespace tvtool::units
