/// \file
/// Conversion of 16-bit texts to other encodings.
#pragma once

#include <fnd/export.h>
#include <fnd/ustring.h>

#include <string>

namespace fnd::i18n {

/// Converter to one encoding. It has no conversion state, so threads may share it.
class TV_PLATFORM_API codecvt_ustring_to_string {
  public:
    /// \param encoding   a name that ICU supports, such as ISO-8859-1; "" is UTF-8. Any other name
    /// throws
    ///                   std::invalid_argument
    /// \param substitute whether characters without an encoding are replaced. Not used: they always
    /// are.
    ///                   For hosts that can omit them
    codecvt_ustring_to_string(const std::string& encoding, bool substitute);

    /// Returns the text in the encoding. Characters without an encoding are replaced by the
    /// encoding's substitution character, in UTF-8 unpaired surrogates by U+FFFD. Throws
    /// std::length_error for a text longer than 2^27 characters.
    std::string operator()(const fnd::ustring& text) const;

  private:
    std::string encoding_; // "" is UTF-8
};

} // namespace fnd::i18n
