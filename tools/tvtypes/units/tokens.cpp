#include "units/tokens.h"

#include <unicode/uchar.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <array>

namespace tvtool::units {

namespace {

struct SignRow {
    UChar32 character;
    Sign sign;
};

// clang-format off
constexpr std::array<SignRow, 21> signs{{
    {'*', Sign::Times}, {'.', Sign::Times}, {0xB7, Sign::Times}, {0xD7, Sign::Times},
    {0x2219, Sign::Times}, {0x22C5, Sign::Times}, {0x2022, Sign::Times},
    {'/', Sign::Over}, {0xF7, Sign::Over}, {0x2044, Sign::Over}, {0x2215, Sign::Over},
    {'^', Sign::Caret}, {'+', Sign::Plus}, {'-', Sign::Minus}, {0x2212, Sign::Minus},
    {'(', Sign::Open}, {')', Sign::Close},
    // Names of one character, whatever follows.
    {'%', Sign::Name}, {0x2030, Sign::Name}, {0x2032, Sign::Name}, {0x2033, Sign::Name}}};
// clang-format on

struct RaisedRow {
    UChar32 character;
    char plain;
};

constexpr std::array<RaisedRow, 12> raised{{{0x2070, '0'},
                                            {0xB9, '1'},
                                            {0xB2, '2'},
                                            {0xB3, '3'},
                                            {0x2074, '4'},
                                            {0x2075, '5'},
                                            {0x2076, '6'},
                                            {0x2077, '7'},
                                            {0x2078, '8'},
                                            {0x2079, '9'},
                                            {0x207A, '+'},
                                            {0x207B, '-'}}};

constexpr UChar32 degree = 0xB0;

/// The character at a position, which is moved behind it; -1 where there is none.
UChar32 characterAt(std::string_view text, std::size_t& position) {
    const auto* const bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    UChar32 character = -1;
    if (position < text.size()) {
        U8_NEXT(bytes, position, text.size(), character);
    }
    return character;
}

char plainOf(UChar32 character) {
    const auto* const row = std::ranges::find(raised, character, &RaisedRow::character);
    return row == raised.end() ? '\0' : row->plain;
}

bool isDigit(UChar32 character) { return character >= '0' && character <= '9'; }

bool isNameStart(UChar32 character) {
    return character == '_' || character == degree || (character > 0 && u_isalpha(character)) ||
           character == 0x2103 || character == 0x2109;
}

bool isNamePart(UChar32 character) { return isNameStart(character) || isDigit(character); }

bool isBlank(UChar32 character) { return character > 0 && u_isUWhiteSpace(character); }

/// Where the characters end of which all satisfy the condition.
template <class Condition>
std::size_t endOf(std::string_view text, std::size_t from, Condition holds) {
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
    const std::size_t begin = endOf(text_, end_, isBlank);
    next_ = {Sign::End, {}, begin, begin > end_};
    end_ = begin;
    if (begin == text_.size()) {
        return;
    }
    const UChar32 first = characterAt(text_, end_);
    const auto* const row = std::ranges::find(signs, first, &SignRow::character);
    if (isDigit(first)) {
        next_.sign = Sign::Number;
        end_ = endOfNumber(begin);
    } else if (plainOf(first) != '\0') {
        next_.sign = Sign::Superscript;
        end_ = endOf(text_, begin, [](UChar32 c) { return plainOf(c) != '\0'; });
    } else if (isNameStart(first)) {
        next_.sign = Sign::Name;
        end_ = endOf(text_, begin, isNamePart);
    } else if (text_.substr(begin).starts_with("**")) {
        next_.sign = Sign::Caret;
        end_ = begin + 2;
    } else {
        next_.sign = row == signs.end() ? Sign::Unknown : row->sign;
    }
    next_.text = text_.substr(begin, end_ - begin);
}

/// A point or an exponent belongs to the number only if a digit follows: 2.m is 2 times m.
std::size_t Tokens::endOfNumber(std::size_t from) const {
    const auto isDigitAt = [this](std::size_t position) {
        return position < text_.size() && isDigit(static_cast<unsigned char>(text_[position]));
    };
    std::size_t end = endOf(text_, from, isDigit);
    if (end < text_.size() && text_[end] == '.' && isDigitAt(end + 1)) {
        end = endOf(text_, end + 1, isDigit);
    }
    if (end < text_.size() && (text_[end] == 'e' || text_[end] == 'E')) {
        const bool isSigned =
            end + 1 < text_.size() && (text_[end + 1] == '-' || text_[end + 1] == '+');
        const std::size_t digits = end + (isSigned ? 2 : 1);
        end = isDigitAt(digits) ? endOf(text_, digits, isDigit) : end;
    }
    return end;
}

RaisedNumber raisedNumber(std::string_view superscript) {
    RaisedNumber number;
    for (std::size_t i = 0; i < superscript.size() && number.size < sizeof number.text;) {
        number.text[number.size++] = plainOf(characterAt(superscript, i));
    }
    return number;
}

} // namespace tvtool::units
