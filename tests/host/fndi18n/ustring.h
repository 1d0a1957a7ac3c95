#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace fnd::i18n {

std::u16string to_ustring(const char* text);
std::u16string to_ustring(const std::string& text);

} // namespace fnd::i18n

std::string ConvertUStringToStdString(const std::u16string& text, bool substitute);
std::u16string ConvertStdStringToUString(const std::string& text, bool substitute);
bool tvsvIsalphanum(char16_t character);
std::ostream& operator<<(std::ostream& out, const std::u16string& text);
void delimited_ustring_to_vector(std::vector<std::u16string>& pieces, const std::u16string& text,
                                 char16_t delimiter, char16_t escape);
