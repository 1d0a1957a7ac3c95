/// \file
/// Tables and labelled lines of text.
#pragma once

#include <fmt/color.h>

#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace tvtool::output {

enum class Align { Left, Right };

/// A heading and rows in aligned columns. Widths are display widths.
class Table {
  public:
    /// Adds a column with the cells of the rows so far.
    void addColumn(std::string heading, Align align, std::vector<std::string> cells = {});
    /// Adds one cell to each column. An empty cell is printed as "-".
    void addRow(std::vector<std::string> cells);
    void print(std::ostream& os, fmt::text_style headingStyle) const;

  private:
    struct Column {
        std::string heading;
        Align align;
        std::vector<std::string> cells;
    };

    std::vector<Column> columns_;
};

/// Returns bold type, in a colour if one is given, or no style without colour.
fmt::text_style bold(bool colour, std::optional<fmt::terminal_color> foreground = std::nullopt);

/// Prints the line "  label  text", or nothing for an empty text.
void printField(const char* label, const std::string& text, std::ostream& os);

} // namespace tvtool::output
