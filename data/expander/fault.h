/// \file
/// What is wrong with a source.
#pragma once

#include <stdexcept>

namespace tvdata {

/// Says what is wrong; who catches it adds the file and the record.
class Fault : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

} // namespace tvdata
