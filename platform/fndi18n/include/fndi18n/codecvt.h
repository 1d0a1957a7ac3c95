/// \file
/// Converters from 16-bit texts to narrow ones.
#pragma once

#include <fnd/export.h>
#include <fnd/ustring.h>

#include <string>

namespace fnd::i18n {

/// Converts to one encoding. It holds no state of a conversion, so threads may share it.
class TV_PLATFORM_API codecvt_ustring_to_string {
  public:
    /// \param encoding   a name that ICU knows, such as ISO-8859-1; "" is UTF-8. Any other throws
    ///                   std::invalid_argument
    /// \param substitute what cannot be converted is replaced. Of use to a host that can also leave
    ///                   it out; here it is replaced either way
    codecvt_ustring_to_string(const std::string& encoding, bool substitute);

    /// The text in the encoding. What has no place there becomes its substitution character, in
    /// UTF-8 a lone surrogate U+FFFD. Throws std::length_error for a text longer than 2^27
    /// characters, and for no content.
    std::string operator()(const fnd::ustring& text) const;

  private:
    std::string encoding_; // "" is UTF-8
};

} // namespace fnd::i18n
