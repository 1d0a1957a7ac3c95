/// \file
/// The signs of which a unit is written, in the many ways in which that is done.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace tvtool::units {

enum class Sign : std::uint8_t {
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
    End,
    Unknown
};

struct Token {
    Sign sign = Sign::End;
    std::string_view text;
    std::size_t position = 0; ///< of the first byte
    bool isApart = false;     ///< whether blanks stand ahead of it
};

/// Takes a text apart, a token a call.
class Tokens {
  public:
    explicit Tokens(std::string_view text) : text_(text) { advance(); }

    const Token& next() const { return next_; }
    Token take();

  private:
    void advance();
    std::size_t endOfNumber(std::size_t from) const;

    std::string_view text_;
    std::size_t end_ = 0; ///< of the next token
    Token next_;
};

/// The whole number that a superscript stands for, in ASCII: "-2". Longer than 12 characters, it is
/// cut off.
struct RaisedNumber {
    char text[12] = {};
    std::size_t size = 0;
    std::string_view view() const { return {text, size}; }
};
RaisedNumber raisedNumber(std::string_view superscript);

} // namespace tvtool::units
