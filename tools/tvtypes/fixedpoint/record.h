/// \file
/// Records of numeric types from command line options.
#pragma once

#include <tvtypes/fixedpoint.h>

#include <cstdint>
#include <optional>
#include <string>

namespace tvtool::fixedpoint {

/// Signedness of a record that leaves it open; any value above 1 does.
inline constexpr std::uint32_t openSignedness = 2;

/// Texts of the options. A slope excludes factor, exponent and fraction length; a fraction length
/// excludes factor and exponent. Defaults are those of a signed integer.
struct RecordTexts {
    std::string signedness = "1";
    std::string wordLength;
    std::optional<std::string> slope;
    std::optional<std::string> factor;
    std::optional<std::string> exponent;
    std::optional<std::string> fractionLength;
    std::optional<std::string> bias;
    bool isScaledDouble = false;
};

/// Returns a valid record. Throws a std::invalid_argument that names the option and its range.
fxpDataTypeProp makeRecord(const RecordTexts& texts);

/// Returns the word length in the text of an option. Throws like makeRecord().
int parseWordLength(const char* option, const std::string& text);

/// Sets factor and exponent of a record from a slope, which must be finite and greater than 0.
void setSlope(double slope, fxpDataTypeProp& record);

/// Returns whether the signedness is left open.
inline bool isOpen(const fxpDataTypeProp& record) { return record.Signedness > 1; }

} // namespace tvtool::fixedpoint
