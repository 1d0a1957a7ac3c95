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
constexpr std::array<SingleCharacters, 8> singleCharacters{
    {{U"*.\u00B7\u00D7\u2219\u22C5\u2022", TokenKind::Times},
     {U"/\u00F7\u2044\u2215", TokenKind::Over},
     {U"^", TokenKind::Caret},
     {U"+", TokenKind::Plus},
     {U"-\u2212", TokenKind::Minus},
     {U"(", TokenKind::Open},
     {U")", TokenKind::Close},
     {U"%\u2030\u2032\u2033", TokenKind::Name}}};

constexpr std::u32string_view superscripts =
    U"\u2070\u00B9\u00B2\u00B3\u2074\u2075\u2076\u2077\u2078\u2079\u207A\u207B";
constexpr std::string_view superscriptValues = "0123456789+-";

constexpr UChar32 degree = 0xB0;

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

bool isNameStart(UChar32 character) {
    return character == '_' || character == degree || (character > 0 && u_isalpha(character)) ||
           character == 0x2103 || character == 0x2109;
}

bool isNamePart(UChar32 character) { return isNameStart(character) || isDigit(character); }

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
        next_.kind = TokenKind::Name;
        end_ = endOfRun(text_, begin, isNamePart);
    } else if (text_.substr(begin).starts_with("**")) {
        next_.kind = TokenKind::Caret;
        end_ = begin + 2;
    } else {
        next_.kind = singleCharacterKind(first);
    }
    next_.text = text_.substr(begin, end_ - begin);
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

} // namespace tvtool::units
