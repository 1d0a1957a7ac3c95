#pragma once

#include <string>

namespace fnd::i18n {

class codecvt_ustring_to_string {
  public:
    codecvt_ustring_to_string(const std::string& encoding, bool substitute);
};

} // namespace fnd::i18n
