/// \file
/// Aligned columns of text.
#pragma once

#include <fmt/color.h>

#include <cstddef>
#include <ostream>
#include <string>
#include <vector>

namespace tvtool::output {

enum class Align { Left, Right };

/// Rows under a heading, each column as wide as what stands in it. Widths are those that
/// characters take on a screen.
class Table {
  public:
    void addColumn(std::string heading, Align align);
    /// One cell a column; an empty one is shown as "-".
    void addRow(std::vector<std::string> cells);
    void print(std::ostream& os, fmt::text_style headingStyle) const;

  private:
    std::string line(const std::vector<std::string>& cells) const;

    std::vector<std::string> headings_;
    std::vector<Align> aligns_;
    std::vector<std::size_t> widths_;
    std::vector<std::vector<std::string>> rows_;
};

} // namespace tvtool::output
