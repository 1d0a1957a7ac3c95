/// \file
/// Selection of findings by their codes.
#pragma once

#include "findings/findings.h"

#include <string>
#include <vector>

namespace tvtool::findings {

/// The codes that are reported: those that match one of the selected patterns, or all without such
/// a pattern, except those that match an ignored one.
class Selection {
  public:
    /// \param select patterns with *, ? and [...], or several of them separated by commas
    /// Throws a text::ArgumentError for an unknown code without a wildcard.
    Selection(const std::vector<std::string>& select, const std::vector<std::string>& ignore);

    bool contains(Code code) const { return contains_[static_cast<std::size_t>(code)]; }
    bool containsAll() const;

  private:
    std::vector<bool> contains_; ///< by code
};

} // namespace tvtool::findings
