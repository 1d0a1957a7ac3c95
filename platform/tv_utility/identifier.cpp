#include <tv_utility/identifier.h>

#include <algorithm>
#include <array>
#include <string_view>

namespace {

constexpr bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}

constexpr bool isLetterOrDigit(char c) { return isLetter(c) || (c >= '0' && c <= '9'); }

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
    const std::string_view name = text;
    return std::all_of(name.begin(), name.end(), isLetterOrDigit) &&
           (acceptReservedWords ||
            std::find(reservedWords.begin(), reservedWords.end(), name) == reservedWords.end());
}
