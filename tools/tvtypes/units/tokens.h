/// \file
/// Tokens of units as people write them, with the Unicode variants of operators and digits.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace tvtool::units {

enum class TokenKind : std::uint8_t {
    Name,
    Number,
    Times,
    Over,
    Caret,
    Plus,
    Minus,
    Open,
    Close,
    Superscript, ///< a raised whole number, with its sign
    Root,
    End,
    Unknown
};

struct Token {
    TokenKind kind = TokenKind::End;
    std::string_view text;
    std::size_t position = 0;  ///< of the first byte
    bool isAfterBlank = false; ///< whether blanks precede it
};

/// Splits a text into tokens, with one token of lookahead.
class Tokens {
  public:
    explicit Tokens(std::string_view text) : text_(text) { advance(); }

    const Token& next() const { return next_; }
    Token take();

  private:
    void advance();
    std::size_t endOfName(std::size_t from) const;
    std::size_t endOfNumber(std::size_t from) const;

    std::string_view text_;
    std::size_t end_ = 0; ///< of the next token
    Token next_;
};

/// Returns the number of a superscript in ASCII, such as "-2", cut off after 12 characters, which
/// are more than any valid power has.
std::string superscriptNumber(std::string_view superscript);

/// Returns a name with subscript digits as digits, and with the degree sign for characters that
/// look like it.
std::string plainName(std::string_view name);

} // namespace tvtool::units
