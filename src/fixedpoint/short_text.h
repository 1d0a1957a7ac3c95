/// \file
/// A text put together on the stack, so that what it becomes is allocated once and in its length.
#pragma once

#include <boost/static_string/static_string.hpp>

#include <cstdint>
#include <string>
#include <string_view>

namespace TVTypeSys {

class ShortText {
  public:
    void append(std::string_view text) { text_.append(text.data(), text.size()); }
    void appendInteger(std::int64_t value);

    /// The decimal text of a double, as it stands or as it stands in identifiers.
    void appendNumber(double value);
    void appendIdentifierNumber(double value);

    std::string_view view() const { return {text_.data(), text_.size()}; }
    std::string str() const { return std::string(view()); }

  private:
    // Enough: a constructor string of two doubles, with all arguments and grouped digits, has 157.
    boost::static_string<255> text_;
};

/// Rewrites the decimal text of a number for use in an identifier, in place; returns its new end.
char* rewriteForIdentifier(char* begin, char* end);

} // namespace TVTypeSys
