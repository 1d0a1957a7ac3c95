#include "output/table.h"

#include "text/utf8.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

namespace tvtool::output {

namespace {

const std::string& shownCell(const std::string& cell) {
    static const std::string noText = "-";
    return cell.empty() ? noText : cell;
}

} // namespace

std::size_t Table::Column::width() const {
    std::size_t width = text::displayWidth(heading);
    for (const std::string& cell : cells) {
        width = std::max(width, text::displayWidth(shownCell(cell)));
    }
    return width;
}

void Table::addColumn(std::string heading, Align align, std::vector<std::string> cells) {
    columns_.push_back({std::move(heading), align, std::move(cells)});
}

void Table::addRow(std::vector<std::string> cells) {
    for (std::size_t i = 0; i < cells.size(); ++i) {
        columns_[i].cells.push_back(std::move(cells[i]));
    }
}

void Table::print(std::ostream& os, fmt::text_style headingStyle) const {
    std::vector<std::size_t> widths;
    for (const Column& column : columns_) {
        widths.push_back(column.width());
    }
    const auto line = [&](const auto& cell) {
        std::string text;
        for (std::size_t i = 0; i < columns_.size(); ++i) {
            text += columns_[i].align == Align::Left
                        ? fmt::format("{:<{}}", cell(columns_[i]), widths[i])
                        : fmt::format("{:>{}}", cell(columns_[i]), widths[i]);
            text.append(2, ' ');
        }
        text.erase(text.find_last_not_of(' ') + 1);
        return text;
    };
    os << fmt::format(headingStyle, "{}", line([](const Column& column) -> const std::string& {
                          return column.heading;
                      }))
       << '\n';
    const std::size_t rowCount = columns_.empty() ? 0 : columns_.front().cells.size();
    for (std::size_t row = 0; row < rowCount; ++row) {
        os << line([row](const Column& column) -> const std::string& {
            return shownCell(column.cells[row]);
        }) << '\n';
    }
}

fmt::text_style bold(bool colour) {
    return colour ? fmt::text_style(fmt::emphasis::bold) : fmt::text_style();
}

fmt::text_style bold(bool colour, fmt::terminal_color terminalColour) {
    return colour ? fmt::emphasis::bold | fmt::fg(terminalColour) : fmt::text_style();
}

void printField(const char* label, const std::string& text, std::ostream& os) {
    if (!text.empty()) {
        os << fmt::format("  {:<12}  {}\n", label, text);
    }
}

} // namespace tvtool::output
