/// \file
/// What keeps a conversion from being done.
#pragma once

#include <stdexcept>

namespace tvtool::convert {

/// The call or the input is of no use; the text is a sentence to show as it stands.
class Error : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

} // namespace tvtool::convert
