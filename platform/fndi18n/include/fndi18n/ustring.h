/// \file
/// Operations on 16-bit texts. Narrow texts are UTF-8.
///
/// Ill-formed sequences are replaced by U+FFFD. A text longer than 2^27 characters throws
/// std::length_error.
#pragma once

#include <fnd/export.h>
#include <fnd/ustring.h>

#include <iosfwd>
#include <string>
#include <vector>

namespace fnd::i18n {

/// \name Conversion to 16 bits
/// @{

/// Returns the 16-bit form of a text; null counts as "".
TV_PLATFORM_API fnd::ustring to_ustring(const char* text);
TV_PLATFORM_API fnd::ustring to_ustring(const std::string& text);
/// @}

} // namespace fnd::i18n

/// Returns the narrow form of a text. `substitute` is as for codecvt_ustring_to_string.
TV_PLATFORM_API std::string ConvertUStringToStdString(const std::basic_string<char16_t>& text,
                                                      bool substitute);
/// Returns the 16-bit form of a text. `substitute` is as for codecvt_ustring_to_string.
TV_PLATFORM_API std::basic_string<char16_t> ConvertStdStringToUString(const std::string& text,
                                                                      bool substitute);

/// Returns whether a character is a letter or a decimal digit of any script. Surrogates are
/// neither.
TV_PLATFORM_API bool tvsvIsalphanum(char16_t character);

/// Writes the narrow form of a text.
TV_PLATFORM_API std::ostream& operator<<(std::ostream& out,
                                         const std::basic_string<char16_t>& text);

/// Splits a text at delimiters and replaces `pieces` by the pieces, which may be empty, as the
/// second of "a,,b". The empty text has no pieces. An `escape` character, unless it is the null
/// character, is removed, and the character after it is literal, also a delimiter or an escape.
TV_PLATFORM_API void delimited_ustring_to_vector(std::vector<std::basic_string<char16_t>>& pieces,
                                                 const std::basic_string<char16_t>& text,
                                                 char16_t delimiter, char16_t escape);
