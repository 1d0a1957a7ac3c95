/// \file
/// Texts of values.
#pragma once

#include "convert/names.h"

#include <cstddef>
#include <string>

namespace tvtool::convert {

/// Converts a word to a value and stores its bytes, those of a double for a wide integer. Throws an
/// Error whose text describes the fault but not the word.
///
/// Floating-point values are rounded to nearest, and are infinite if the number is too large; "inf"
/// and "nan" are accepted. Integers must be in the range of the type. Both may be hexadecimal. A
/// boolean is 0, 1, false or true.
void readValue(const std::string& word, StoredType type, std::byte* value);

/// Replaces wide integers by doubles of the same values, in place. Returns their number, or the
/// index of the first one that no double has exactly.
std::size_t toDoubles(Wide wide, std::byte* values, std::size_t count);

/// Returns a real value as a double, which has each of them exactly.
double valueOf(Type type, const std::byte* value);

/// Appends the value in decimal, a floating-point one in the fewest digits that read back as the
/// same value. A complex element is written as 1.5-2i.
void appendElement(std::string& text, Element element, const std::byte* value);

} // namespace tvtool::convert
