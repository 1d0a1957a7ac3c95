// Texts of numbers in identifiers and constructor strings.
#include "fixedpoint/short_text.h"

#include "services/number_text.h"

#include <boost/lexical_cast.hpp>

#include <algorithm>
#include <array>

namespace TVTypeSys {

namespace {

char identifierCharacter(char c) {
    switch (c) {
    case '.':
        return 'p';
    case '-':
        return 'n';
    case 'E':
        return 'e';
    default:
        return c;
    }
}

} // namespace

void ShortText::appendInteger(std::int64_t value) {
    // The locale may put a separator before every digit, which may be any character, even '\0'.
    const auto padded = boost::lexical_cast<std::array<char, 48>>(value);
    const std::string_view text(padded.data(), padded.size());
    append(text.substr(0, text.find_last_not_of('\0') + 1));
}

void ShortText::appendNumber(double value) {
    char number[longestDecimalText];
    append({number, writeDecimalText(number, value)});
}

void ShortText::appendIdentifierNumber(double value) {
    char number[longestDecimalText];
    append({number, rewriteForIdentifier(number, writeDecimalText(number, value))});
}

char* rewriteForIdentifier(char* begin, char* end) {
    const auto startsWith = [&](std::string_view text) {
        return std::string_view(begin, end).starts_with(text);
    };
    end = std::transform(begin, std::remove(begin, end, '+'), begin, identifierCharacter);
    if (std::string_view(begin, end).ends_with("p0")) {
        end -= 2;
    }
    if (startsWith("0p")) {
        end = std::move(begin + 1, end, begin);
    }
    if (startsWith("n0p")) {
        end = std::move(begin + 2, end, begin + 1);
    }
    return end;
}

} // namespace TVTypeSys
