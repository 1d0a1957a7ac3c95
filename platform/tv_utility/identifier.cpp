#include <tv_utility/identifier.h>

#include <algorithm>
#include <array>
#include <string_view>

namespace {

constexpr bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}

// A table, since every character of every registered name is checked.
constexpr std::array<bool, 256> isLetterOrDigit = [] {
    std::array<bool, 256> table{};
    for (std::size_t code = 0; code < 128; ++code) {
        const char c = static_cast<char>(code);
        table[code] = isLetter(c) || (c >= '0' && c <= '9');
    }
    return table;
}();

constexpr std::array<std::string_view, 32> reservedWords{
    "auto",   "break",  "case",     "char",   "const",    "continue", "default",  "do",
    "double", "else",   "enum",     "extern", "float",    "for",      "goto",     "if",
    "int",    "long",   "register", "return", "short",    "signed",   "sizeof",   "static",
    "struct", "switch", "typedef",  "union",  "unsigned", "void",     "volatile", "while"};

} // namespace

bool tvIsValidANSICIdentifier(const char* text, bool acceptReservedWords) {
    if (text == nullptr || !isLetter(*text)) {
        return false;
    }
    const char* end = text;
    while (isLetterOrDigit[static_cast<unsigned char>(*end)]) {
        ++end;
    }
    return *end == '\0' &&
           (acceptReservedWords || std::find(reservedWords.begin(), reservedWords.end(),
                                             std::string_view(text, end)) == reservedWords.end());
}
