/// \file
/// Resolution of references between variables.
#pragma once

#include "fmi/description.h"

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace tvtool::fmi {

/// Finds variables by position in FMI 2, and by value reference in FMI 3. The variables of the
/// description do not change while it is used.
class VariableFinder {
  public:
    explicit VariableFinder(const Description& description);

    /// Returns the index in Description::variables; noIndex if there is no such variable or it has
    /// no name.
    std::uint32_t find(std::uint32_t target) const;

    /// Returns whether there is such a variable, with or without a name.
    bool exists(std::uint32_t target) const;

    /// Returns "index 7" or "valueReference 7".
    std::string text(std::uint32_t target) const;

  private:
    const Description& description_;
    std::vector<std::pair<std::uint32_t, std::uint32_t>> indices_; ///< sorted by the first
};

} // namespace tvtool::fmi
