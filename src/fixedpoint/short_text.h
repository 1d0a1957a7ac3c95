/// \file
/// Composition of short strings on the stack, so that the result is allocated once, in its length.
#pragma once

#include <boost/static_string/static_string.hpp>

#include <cstdint>
#include <string>
#include <string_view>

namespace TVTypeSys {

class ShortText {
  public:
    void append(std::string_view text) { text_.append(text.data(), text.size()); }

    /// Appends the decimal digits, grouped as in the global locale.
    void appendInteger(std::int64_t value);

    /// Appends the decimal text of a double.
    void appendNumber(double value);

    /// Appends the decimal text of a double, rewritten for an identifier.
    void appendIdentifierNumber(double value);

    std::string_view view() const { return {text_.data(), text_.size()}; }
    std::string str() const { return std::string(view()); }

  private:
    // The longest text, a constructor string of two doubles with all arguments and grouped digits,
    // has 157 characters.
    boost::static_string<255> text_;
};

/// Rewrites the decimal text of a number for an identifier, in place; returns its new end.
char* rewriteForIdentifier(char* begin, char* end);

} // namespace TVTypeSys
