/// \file
/// Tables and labelled lines of text.
#pragma once

#include <fmt/color.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace tvtool::output {

enum class Align : std::uint8_t { Left, Right };

/// Whether the cells of a column may be shortened where a table is wider than the lines.
enum class Shrink : std::uint8_t {
    Never,
    Last, ///< if the columns with First are not wide enough
    First
};

/// A column of a table, whose cells are computed when they are needed.
struct TableColumn {
    std::string_view heading;
    Align align = Align::Left;
    Shrink shrink = Shrink::First;
    bool isOptional = false; ///< whether it is omitted if all its cells are empty
    /// The width down to which it is narrowed before columns are omitted.
    std::size_t floor = 12;
    /// Columns with a rank are omitted where the table does not fit otherwise, the highest rank
    /// first. 0 is never omitted.
    int omission = 0;
    /// Appends the text of the cell in a row, which must be safe to print. Returns the same text at
    /// each call.
    std::function<void(std::size_t row, std::string& text)> cell;
    /// Returns the text of a cell in at most `width` columns. If empty, wider cells are shortened
    /// in the middle, and different ones remain different.
    std::function<std::string(std::size_t row, std::size_t width)> fittedCell = nullptr;
};

/// Prints a heading and rows in aligned columns. An empty cell is printed as "-". A table that is
/// wider than the lines of the stream is fitted by shortening cells: the widest columns first, and
/// numbers never. Where that is not enough, columns are omitted and named below the table. Keeps no
/// cells: their widths are computed first, and the cells again when they are printed.
void printTable(const std::vector<TableColumn>& columns, std::size_t rows,
                fmt::text_style headingStyle, std::ostream& os);

/// A table whose cells are stored.
class Table {
  public:
    void addColumn(std::string heading, Align align);
    /// Adds one cell to each column.
    void addRow(std::vector<std::string> cells);
    /// Prints the table as printTable() does. Columns that are aligned to the right are numbers.
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

/// Prints the line "  label  text", or nothing for an empty text. A text that is wider than the
/// line continues below its beginning.
void printField(const char* label, const std::string& text, std::ostream& os);

} // namespace tvtool::output
