/// \file
/// Units that are easily mistaken for others.
#pragma once

#include <tvtypes/units.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tvtool::units {

/// Letters that people write for a scale of temperature, and the units that they are.
struct Letter {
    std::string_view symbol;
    std::string_view unit;
    std::string_view temperature;
};

/// Returns the letter that is the symbol of a unit; null for all other symbols.
const Letter* temperatureLetter(std::string_view symbol);

/// Returns the sentence that says what the letter is, and how a temperature is written.
std::string letterSentence(const Letter& letter);

inline constexpr const char* poundsOfForce =
    "a pound per square inch is a pressure if it is psi, and a mass per area if it is lbm/in^2";

/// Returns whether a mass divided by a power of a length, or by an area, is pounds per square inch.
bool isPoundPerSquareInch(std::string_view mass, std::string_view length, std::int64_t power);

/// Returns whether a unit measures a temperature or a difference of temperatures.
bool isTemperature(std::string_view unit);

/// Adds remarks about an expression that is easily mistaken. Returns whether its usual meaning is
/// not that of the library, as that of Nm^3.
bool isMistakable(const Monomial& terms, std::vector<std::string>& notes);

/// Adds a note if a temperature follows the divisor after a *, as in W/m^2*K.
void noteTemperatureAfterDivisor(std::string_view text, std::vector<std::string>& notes);

} // namespace tvtool::units
