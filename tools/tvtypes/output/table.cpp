#include "output/table.h"

#include "text/utf8.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

namespace tvtool::output {

void Table::addColumn(std::string heading, Align align, std::vector<std::string> cells) {
    columns_.push_back({std::move(heading), align, std::move(cells)});
}

void Table::addRow(std::vector<std::string> cells) {
    for (std::size_t i = 0; i < cells.size(); ++i) {
        columns_[i].cells.push_back(std::move(cells[i]));
    }
}

void Table::print(std::ostream& os, fmt::text_style headingStyle) const {
    static const std::string emptyCell = "-";
    // Row 0 is the heading.
    const auto cell = [](const Column& column, std::size_t row) -> const std::string& {
        const std::string& text = row == 0 ? column.heading : column.cells[row - 1];
        return text.empty() && row > 0 ? emptyCell : text;
    };
    const std::size_t rows = columns_.empty() ? 1 : columns_.front().cells.size() + 1;
    std::vector<std::string> lines(rows);
    for (const Column& column : columns_) {
        std::vector<std::size_t> widths;
        for (std::size_t row = 0; row < rows; ++row) {
            widths.push_back(text::displayWidth(cell(column, row)));
        }
        const std::size_t width = *std::ranges::max_element(widths);
        for (std::size_t row = 0; row < rows; ++row) {
            const std::string padding(width - widths[row], ' ');
            lines[row] += column.align == Align::Left ? cell(column, row) + padding
                                                      : padding + cell(column, row);
            lines[row] += "  ";
        }
    }
    for (std::string& line : lines) {
        line.erase(line.find_last_not_of(' ') + 1);
        os << (&line == lines.data() ? fmt::format(headingStyle, "{}", line) : line) << '\n';
    }
}

fmt::text_style bold(bool colour, std::optional<fmt::terminal_color> foreground) {
    const fmt::text_style style = colour ? fmt::emphasis::bold : fmt::text_style();
    return colour && foreground ? style | fmt::fg(*foreground) : style;
}

void printField(const char* label, const std::string& text, std::ostream& os) {
    if (!text.empty()) {
        os << fmt::format("  {:<12}  {}\n", label, text);
    }
}

} // namespace tvtool::output
