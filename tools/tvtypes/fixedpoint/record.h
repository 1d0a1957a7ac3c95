/// \file
/// Records put together from the options of a call.
#pragma once

#include <tvtypes/fixedpoint.h>

#include <optional>
#include <string>

namespace tvtool::fixedpoint {

/// The texts behind the options. The slope stands alone, the fraction length too; what is not given
/// is that of an integer.
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

/// A valid record. Throws an Error that names the option and says what it can be.
fxpDataTypeProp recordOf(const RecordTexts& texts);

/// A word length. Throws such an Error.
int wordLengthOf(const char* option, const std::string& text);

/// Splits a slope, which is finite and greater than 0, into factor and exponent.
void setSlope(double slope, fxpDataTypeProp& record);

/// Whether a signedness is left open.
inline bool isOpen(const fxpDataTypeProp& record) { return record.Signedness > 1; }

} // namespace tvtool::fixedpoint
