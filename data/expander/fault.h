/// \file
/// Error in a source file.
#pragma once

#include <stdexcept>

namespace tvdata {

/// An error in a record. Handlers add the file and the record.
class Fault : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

} // namespace tvdata
