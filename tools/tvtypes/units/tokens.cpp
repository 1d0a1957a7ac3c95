#include "units/tokens.h"

#include <unicode/uchar.h>
#include <unicode/utf8.h>

#include <array>

namespace tvtool::units {

namespace {

struct SingleCharacters {
    std::u32string_view characters;
    TokenKind kind;
};

/// The tokens of one character, whatever follows it.
constexpr std::array<SingleCharacters, 9> singleCharacters{
    {{U"*.\u00B7\u00D7\u2219\u22C5\u2022", TokenKind::Times},
     {U"/\u00F7\u2044\u2215", TokenKind::Over},
     {U"^", TokenKind::Caret},
     {U"+", TokenKind::Plus},
     {U"-\u2010\u2011\u2012\u2013\u2014\u2212", TokenKind::Minus},
     {U"([", TokenKind::Open},
     {U")]", TokenKind::Close},
     {U"%\u2030\u2031\u2032\u2033", TokenKind::Name},
     {U"\u221A", TokenKind::Root}}};

constexpr std::u32string_view superscripts =
    U"\u2070\u00B9\u00B2\u00B3\u2074\u2075\u2076\u2077\u2078\u2079\u207A\u207B";
constexpr std::string_view superscriptValues = "0123456789+-";

/// The degree sign, and characters that look like it: masculine ordinal, ring above, ring operator.
constexpr std::u32string_view degreeSigns = U"\u00B0\u00BA\u02DA\u2218";
constexpr char32_t firstSubscript = U'\u2080';

/// Returns the character at a position, which is advanced past it; -1 if there is none.
UChar32 characterAt(std::string_view text, std::size_t& position) {
    const auto* const bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    UChar32 character = -1;
    if (position < text.size()) {
        U8_NEXT(bytes, position, text.size(), character);
    }
    return character;
}

bool isSuperscript(UChar32 character) {
    return superscripts.find(static_cast<char32_t>(character)) != std::u32string_view::npos;
}

TokenKind singleCharacterKind(UChar32 character) {
    for (const SingleCharacters& row : singleCharacters) {
        if (row.characters.find(static_cast<char32_t>(character)) != std::u32string_view::npos) {
            return row.kind;
        }
    }
    return TokenKind::Unknown;
}

bool isDigit(UChar32 character) { return character >= '0' && character <= '9'; }

bool isDegreeSign(UChar32 character) {
    return degreeSigns.find(static_cast<char32_t>(character)) != std::u32string_view::npos;
}

bool isSubscript(UChar32 character) {
    const auto code = static_cast<char32_t>(character);
    return code >= firstSubscript && code <= firstSubscript + 9;
}

bool isNameStart(UChar32 character) {
    return character == '_' || isDegreeSign(character) || (character > 0 && u_isalpha(character)) ||
           character == 0x2103 || character == 0x2109;
}

bool isNamePart(UChar32 character) {
    return isNameStart(character) || isDigit(character) || isSubscript(character);
}

bool isBlank(UChar32 character) { return character > 0 && u_isUWhiteSpace(character); }

/// Returns the end of the run of characters that satisfy the condition.
template <class Condition>
std::size_t endOfRun(std::string_view text, std::size_t from, Condition holds) {
    for (std::size_t end = from;;) {
        const std::size_t begin = end;
        if (begin >= text.size() || !holds(characterAt(text, end))) {
            return begin;
        }
    }
}

} // namespace

Token Tokens::take() {
    const Token token = next_;
    advance();
    return token;
}

void Tokens::advance() {
    const std::size_t begin = endOfRun(text_, end_, isBlank);
    next_ = {TokenKind::End, {}, begin, begin > end_};
    end_ = begin;
    if (begin == text_.size()) {
        return;
    }
    const UChar32 first = characterAt(text_, end_);
    if (isDigit(first)) {
        next_.kind = TokenKind::Number;
        end_ = endOfNumber(begin);
    } else if (isSuperscript(first)) {
        next_.kind = TokenKind::Superscript;
        end_ = endOfRun(text_, begin, isSuperscript);
    } else if (isNameStart(first)) {
        end_ = endOfName(begin);
        next_.kind = text_.substr(begin, end_ - begin) == "per" ? TokenKind::Over : TokenKind::Name;
    } else if (text_.substr(begin).starts_with("**")) {
        next_.kind = TokenKind::Caret;
        end_ = begin + 2;
    } else {
        next_.kind = singleCharacterKind(first);
    }
    next_.text = text_.substr(begin, end_ - begin);
}

/// A degree sign begins a new name, as in lb°F, unless it is at the end, as in C°.
std::size_t Tokens::endOfName(std::size_t from) const {
    std::size_t next = from;
    for (std::size_t end = from;;) {
        const UChar32 character = characterAt(text_, next);
        if (!isNamePart(character)) {
            return end;
        }
        std::size_t ahead = next;
        if (end > from && isDegreeSign(character) && isNamePart(characterAt(text_, ahead))) {
            return end;
        }
        end = next;
    }
}

/// A point or an exponent is part of the number only if a digit follows: 2.m is 2 times m.
std::size_t Tokens::endOfNumber(std::size_t from) const {
    const auto isDigitAt = [this](std::size_t position) {
        return position < text_.size() && isDigit(static_cast<unsigned char>(text_[position]));
    };
    std::size_t end = endOfRun(text_, from, isDigit);
    if (end < text_.size() && text_[end] == '.' && isDigitAt(end + 1)) {
        end = endOfRun(text_, end + 1, isDigit);
    }
    if (end < text_.size() && (text_[end] == 'e' || text_[end] == 'E')) {
        const bool isSigned =
            end + 1 < text_.size() && (text_[end + 1] == '-' || text_[end + 1] == '+');
        const std::size_t digits = end + (isSigned ? 2 : 1);
        end = isDigitAt(digits) ? endOfRun(text_, digits, isDigit) : end;
    }
    return end;
}

std::string superscriptNumber(std::string_view superscript) {
    constexpr std::size_t longest = 12;
    std::string number;
    for (std::size_t i = 0; i < superscript.size() && number.size() < longest;) {
        const auto character = static_cast<char32_t>(characterAt(superscript, i));
        number += superscriptValues[superscripts.find(character)];
    }
    return number;
}

std::string plainName(std::string_view name) {
    std::string plain;
    for (std::size_t i = 0; i < name.size();) {
        const std::size_t begin = i;
        const UChar32 character = characterAt(name, i);
        if (isDegreeSign(character)) {
            plain += "\u00B0";
        } else if (isSubscript(character)) {
            plain += static_cast<char>('0' + (character - static_cast<UChar32>(firstSubscript)));
        } else {
            plain += name.substr(begin, i - begin);
        }
    }
    return plain;
}

} // namespace tvtool::units
