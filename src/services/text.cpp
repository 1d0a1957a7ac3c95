#include "services/text.h"

#include <fndi18n/ustring.h>

#include <algorithm>

namespace TVTypeSys {

std::u16string wide(const char* text) { return fnd::i18n::to_ustring(text); }

std::string narrow(const std::u16string& text) { return ConvertUStringToStdString(text, true); }

void appendNarrow(std::string& out, std::u16string_view text) {
    constexpr char16_t firstBeyondAscii = 0x80;
    const std::size_t before = out.size();
    for (const char16_t character : text) {
        if (character >= firstBeyondAscii) {
            out.resize(before);
            out += narrow(std::u16string(text));
            return;
        }
        out += static_cast<char>(character);
    }
}

bool isAlphanumeric(const std::u16string& text) {
    return std::all_of(text.begin(), text.end(), tvsvIsalphanum);
}

std::vector<std::u16string> splitAtCommas(const std::u16string& text) {
    std::vector<std::u16string> pieces;
    delimited_ustring_to_vector(pieces, text, u',', u'\0');
    return pieces;
}

} // namespace TVTypeSys
