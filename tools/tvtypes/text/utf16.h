/// \file
/// Texts of the tool, in UTF-8, and of the library's units, in UTF-16.
#pragma once

#include <string>
#include <string_view>

namespace tvtool::text {

/// With U+FFFD for what is no UTF-8.
std::u16string toUtf16(std::string_view text);
std::string toUtf8(std::u16string_view text);

/// The text in a form in which upper and lower case are the same.
std::string foldCase(std::string_view text);

} // namespace tvtool::text
