/// \file
/// Folding of findings with the same code.
#pragma once

#include "findings/findings.h"

#include <cstddef>
#include <vector>

namespace tvtool::findings {

/// Findings that are printed as one line. Indices refer to the list that was folded.
struct Fold {
    std::size_t first = 0;           ///< index of the first finding
    std::vector<std::size_t> causes; ///< indices of the first findings with distinct causes
    std::size_t findings = 0;
    std::size_t elements = 0;    ///< the sum of their counts
    std::uint32_t firstLine = 0; ///< 0 if none has a line
    std::uint32_t lastLine = 0;
};

/// The least number of findings that are folded.
inline constexpr std::size_t leastFolded = 3;

/// Folds findings with the same code if there are at least leastFolded. The order is that of the
/// first findings. \param isFolding whether to fold; else each finding is a Fold.
std::vector<Fold> fold(const std::vector<Finding>& findings, bool isFolding);

/// Returns what the finding is distinguished by in a folded line; may be empty.
const std::string& causeOf(const Finding& finding);

} // namespace tvtool::findings
