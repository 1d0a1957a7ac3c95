/// \file
/// What is done with 16-bit texts. Narrow texts are UTF-8.
///
/// No content is refused: in place of what is ill-formed stands U+FFFD. A text that is longer than
/// 2^27 characters throws std::length_error.
#pragma once

#include <fnd/export.h>
#include <fnd/ustring.h>

#include <iosfwd>
#include <string>
#include <vector>

namespace fnd::i18n {

/// The 16-bit form of a text; null counts as "".
TV_PLATFORM_API fnd::ustring to_ustring(const char* text);
TV_PLATFORM_API fnd::ustring to_ustring(const std::string& text);

} // namespace fnd::i18n

/// The narrow and the 16-bit form of a text. `substitute` is as for codecvt_ustring_to_string.
TV_PLATFORM_API std::string ConvertUStringToStdString(const std::basic_string<char16_t>& text,
                                                      bool substitute);
TV_PLATFORM_API std::basic_string<char16_t> ConvertStdStringToUString(const std::string& text,
                                                                      bool substitute);

/// Whether a character is a letter or a decimal digit of any script. A half of a surrogate pair is
/// neither, whatever the pair stands for.
TV_PLATFORM_API bool tvsvIsalphanum(char16_t character);

/// Writes a text in its narrow form.
TV_PLATFORM_API std::ostream& operator<<(std::ostream& out,
                                         const std::basic_string<char16_t>& text);

/// Sets `pieces` to what stands before, between and behind the delimiters; a piece may be empty, as
/// the second of "a,,b". The empty text has no pieces. `escape`, if it is not the null character,
/// is dropped, and the character behind it belongs to the piece, be it a delimiter or an escape.
TV_PLATFORM_API void delimited_ustring_to_vector(std::vector<std::basic_string<char16_t>>& pieces,
                                                 const std::basic_string<char16_t>& text,
                                                 char16_t delimiter, char16_t escape);
