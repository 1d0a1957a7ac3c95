#include "output/table.h"

#include "output/shortening.h"
#include "output/terminal.h"
#include "text/utf8.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <iterator>
#include <memory>
#include <numeric>
#include <utility>

namespace tvtool::output {

namespace {

constexpr std::string_view emptyCell = "-";
constexpr std::size_t separatorWidth = 2;
/// The narrowest column with shortened cells.
constexpr std::size_t narrowestColumn = 5;
/// The width up to which the cells of a column are aligned. Wider ones move the rest of their line,
/// since otherwise one cell could make every line of the table as long.
constexpr std::size_t widestAligned = 120;

/// A column that is printed.
struct Shown {
    const TableColumn* column;
    std::size_t full = 0;                   ///< width of its widest cell
    std::size_t width = 0;                  ///< in the table
    std::unique_ptr<Shortening> shortening; ///< null if no cell is shortened by it

    bool isNarrowed() const { return width < full; }
};

/// Returns the columns with their full widths.
std::vector<Shown> measured(const std::vector<TableColumn>& columns, std::size_t rows) {
    std::vector<Shown> shown;
    std::string text;
    for (const TableColumn& column : columns) {
        std::size_t width = 0;
        for (std::size_t row = 0; row < rows; ++row) {
            text.clear();
            column.cell(row, text);
            width = std::max(width, text::displayWidth(text));
        }
        if (width > 0 || !column.isOptional) {
            width = std::max(
                {width, rows > 0 ? emptyCell.size() : 0, text::displayWidth(column.heading)});
            shown.push_back({&column, width, width, nullptr});
        }
    }
    return shown;
}

std::size_t sumOfWidths(const std::vector<Shown>& columns) {
    return std::accumulate(columns.begin(), columns.end(), separatorWidth * (columns.size() - 1),
                           [](std::size_t sum, const Shown& column) { return sum + column.width; });
}

/// Sets the widths of the columns that may shrink first to at most `limit`, but at least their
/// floor or `floor`, and those of the columns that shrink last to at most `widest`.
void setWidths(std::vector<Shown>& columns, std::size_t limit, std::size_t floor,
               std::size_t widest) {
    for (Shown& column : columns) {
        if (column.column->shrink == Shrink::First) {
            column.width = std::min(
                {column.full, std::max(limit, column.column->floor), std::max(limit, floor)});
        } else if (column.column->shrink == Shrink::Last) {
            column.width = std::min(column.full, widest);
        }
    }
}

/// Narrows columns to their floors at most. Returns false, with the columns at their floors, if the
/// table does not fit. Otherwise the widest columns get an equal width, the largest one that fits.
bool narrow(std::vector<Shown>& columns, std::size_t lineWidth, std::size_t floor,
            std::size_t widest) {
    setWidths(columns, 0, floor, widest);
    if (sumOfWidths(columns) > lineWidth) {
        return false;
    }
    std::size_t low = 0;
    std::size_t high = lineWidth;
    while (low < high) {
        const std::size_t middle = low + (high - low + 1) / 2;
        setWidths(columns, middle, floor, widest);
        if (sumOfWidths(columns) <= lineWidth) {
            low = middle;
        } else {
            high = middle - 1;
        }
    }
    setWidths(columns, low, floor, widest);
    // The remainder makes some columns one wider.
    for (Shown& column : columns) {
        if (column.isNarrowed() && column.width == low && sumOfWidths(columns) < lineWidth) {
            ++column.width;
        }
    }
    return true;
}

/// Narrows and omits columns until the table fits, and returns the headings of the omitted ones.
std::vector<std::string_view> fit(std::vector<Shown>& columns, std::size_t lineWidth) {
    constexpr std::size_t widestValue = 24;
    constexpr std::size_t narrowValue = 12;
    constexpr std::size_t narrowestValue = 8;
    constexpr std::size_t noFloor = 1000;
    std::vector<std::string_view> omitted;
    if (columns.empty() || sumOfWidths(columns) <= lineWidth) {
        return omitted;
    }
    while (!narrow(columns, lineWidth, noFloor, widestValue) &&
           !narrow(columns, lineWidth, noFloor, narrowValue)) {
        const auto last = std::ranges::max_element(
            columns, {}, [](const Shown& column) { return column.column->omission; });
        if (last->column->omission == 0) {
            static_cast<void>(narrow(columns, lineWidth, narrowValue, narrowestValue) ||
                              narrow(columns, lineWidth, narrowestValue, narrowestValue) ||
                              narrow(columns, lineWidth, narrowestColumn, narrowestValue));
            break;
        }
        omitted.insert(omitted.begin(), last->column->heading);
        columns.erase(last);
    }
    return omitted;
}

/// Writes the cells of a line.
class LinePrinter {
  public:
    void add(std::string_view text, std::size_t width, Align align) {
        const std::size_t taken = text::displayWidth(text);
        const std::size_t padding = width - std::min(width, taken);
        line_.append(blanks_ + (align == Align::Right ? padding : 0), ' ');
        line_ += text;
        blanks_ = separatorWidth + (align == Align::Left ? padding : 0);
    }

    /// Prints a heading, without blanks at its end.
    void print(fmt::text_style style, std::ostream& os) {
        line_.resize(line_.find_last_not_of(' ') + 1);
        os << fmt::format(style, "{}", line_) << '\n';
        clear();
    }
    void print(std::ostream& os) {
        line_ += '\n';
        os << line_;
        clear();
    }

  private:
    void clear() {
        line_.clear();
        blanks_ = 0;
    }

    std::string line_;
    std::size_t blanks_ = 0; ///< before the next cell
};

} // namespace

void printTable(const std::vector<TableColumn>& columns, std::size_t rows,
                fmt::text_style headingStyle, std::ostream& os) {
    std::vector<Shown> shown = measured(columns, rows);
    const std::vector<std::string_view> omitted = fit(shown, lineWidth(os));
    LinePrinter line;
    for (Shown& column : shown) {
        if (lineWidth(os) == unlimitedWidth) {
            column.width = std::min(column.width, widestAligned);
        } else if (column.isNarrowed() && !column.column->fittedCell) {
            column.shortening =
                std::make_unique<Shortening>(rows, column.column->cell, column.width);
        }
        line.add(column.shortening || column.column->fittedCell
                     ? shortenedInTheMiddle(column.column->heading, column.width)
                     : std::string(column.column->heading),
                 column.width, column.column->align);
    }
    line.print(headingStyle, os);
    std::string text;
    for (std::size_t row = 0; row < rows; ++row) {
        for (const Shown& column : shown) {
            text.clear();
            if (column.isNarrowed() && column.column->fittedCell) {
                text = column.column->fittedCell(row, column.width);
            } else {
                column.column->cell(row, text);
                if (column.shortening) {
                    text = (*column.shortening)(text);
                }
            }
            line.add(text.empty() ? emptyCell : text, column.width, column.column->align);
        }
        line.print(os);
    }
    if (!omitted.empty()) {
        printWrapped(fmt::format("(not enough columns for: {})", fmt::join(omitted, ", ")), 0, os);
    }
}

void Table::addColumn(std::string heading, Align align) {
    columns_.push_back({std::move(heading), align, {}});
}

void Table::addRow(std::vector<std::string> cells) {
    for (std::size_t i = 0; i < cells.size(); ++i) {
        columns_[i].cells.push_back(std::move(cells[i]));
    }
}

void Table::print(std::ostream& os, fmt::text_style headingStyle) const {
    std::vector<TableColumn> columns;
    for (const Column& column : columns_) {
        TableColumn& shown = columns.emplace_back();
        shown.heading = column.heading;
        shown.align = column.align;
        shown.shrink = column.align == Align::Right ? Shrink::Never : Shrink::First;
        shown.cell = [&column](std::size_t row, std::string& text) { text += column.cells[row]; };
    }
    printTable(columns, columns_.empty() ? 0 : columns_.front().cells.size(), headingStyle, os);
}

fmt::text_style bold(bool colour, std::optional<fmt::terminal_color> foreground) {
    const fmt::text_style style = colour ? fmt::emphasis::bold : fmt::text_style();
    return colour && foreground ? style | fmt::fg(*foreground) : style;
}

void printField(const char* label, const std::string& text, std::ostream& os) {
    if (!text.empty()) {
        const std::string beginning = fmt::format("  {:<12}  ", label);
        printWrapped(beginning + text, beginning.size(), os);
    }
}

} // namespace tvtool::output
