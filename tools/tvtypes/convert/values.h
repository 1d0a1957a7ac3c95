/// \file
/// Values as texts.
#pragma once

#include "convert/names.h"

#include <cstddef>
#include <string>

namespace tvtool::convert {

/// Reads a word into the bytes of a value. Throws an Error that says what is wrong with the word,
/// but not which it is.
///
/// A floating-point value is the one nearest to what is written, infinite where that is too large;
/// "inf" and "nan" are read. An integer has to be in the type's range. Both may be hexadecimal.
/// A boolean is 0, 1, false or true.
void readValue(const std::string& word, Type type, std::byte* value);

/// Appends the value in decimal, a floating-point one in the fewest digits that read back as the
/// same. Two values of a complex element come as 1.5-2i.
void appendElement(std::string& text, Element element, const std::byte* value);

} // namespace tvtool::convert
