/// \file
/// Texts of values.
#pragma once

#include "convert/names.h"

#include <cstddef>
#include <string>

namespace tvtool::convert {

/// Converts a word to a value and stores its bytes. Throws an Error whose text describes the fault
/// but not the word.
///
/// Floating-point values are rounded to nearest, and are infinite if the number is too large; "inf"
/// and "nan" are accepted. Integers must be in the range of the type. Both may be hexadecimal. A
/// boolean is 0, 1, false or true.
void readValue(const std::string& word, Type type, std::byte* value);

/// Appends the value in decimal, a floating-point one in the fewest digits that read back as the
/// same value. A complex element is written as 1.5-2i.
void appendElement(std::string& text, Element element, const std::byte* value);

} // namespace tvtool::convert
