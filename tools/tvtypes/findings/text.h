/// \file
/// Findings as lines of text.
#pragma once

#include "findings/findings.h"

#include <cstddef>
#include <cstdint>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace tvtool::findings {

/// The most lines of findings that are printed, unless all of them are.
inline constexpr std::size_t mostLines = 50;

struct TextStyle {
    bool colour = false;
    bool all = false; ///< whether nothing is folded or left out
};

/// Prints the findings of one file or several, wrapped to the lines of the stream:
///
///     a.xml:7:3: error: SENTENCE [code]
///         What to do, after the first finding of a code.
///
/// Findings with the same code are folded, see fold().
class TextPrinter {
  public:
    TextPrinter(const TextStyle& style, std::ostream& os) : style_(style), os_(os) {}

    /// \param findings of a file, sorted
    void print(const std::vector<Finding>& findings, std::string_view file);

  private:
    TextStyle style_;
    std::ostream& os_;
    std::vector<bool> hasAdvice_ = std::vector<bool>(rules().size()); ///< was it printed, by code
};

/// Prints the line of an error in a file that cannot be read, in the same form.
void printError(std::string_view file, std::uint64_t line, std::uint64_t column,
                std::string_view sentence, bool colour, std::ostream& os);

/// Returns "2 errors, 1 warning, no notes".
std::string countsText(std::size_t errors, std::size_t warnings, std::size_t notes);

} // namespace tvtool::findings
