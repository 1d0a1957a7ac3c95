#include "output/table.h"

#include "text/width.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

namespace tvtool::output {

void Table::addColumn(std::string heading, Align align) {
    widths_.push_back(text::displayWidth(heading));
    headings_.push_back(std::move(heading));
    aligns_.push_back(align);
}

void Table::addRow(std::vector<std::string> cells) {
    for (std::size_t i = 0; i < cells.size(); ++i) {
        if (cells[i].empty()) {
            cells[i].assign(1, '-');
        }
        widths_[i] = std::max(widths_[i], text::displayWidth(cells[i]));
    }
    rows_.push_back(std::move(cells));
}

std::string Table::line(const std::vector<std::string>& cells) const {
    std::string text;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        text += aligns_[i] == Align::Left ? fmt::format("{:<{}}", cells[i], widths_[i])
                                          : fmt::format("{:>{}}", cells[i], widths_[i]);
        text.append(2, ' ');
    }
    text.erase(text.find_last_not_of(' ') + 1);
    return text;
}

void Table::print(std::ostream& os, fmt::text_style headingStyle) const {
    os << fmt::format(headingStyle, "{}", line(headings_)) << '\n';
    for (const std::vector<std::string>& row : rows_) {
        os << line(row) << '\n';
    }
}

} // namespace tvtool::output
