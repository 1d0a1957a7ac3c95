#include "output/terminal.h"

#include "text/number.h"
#include "text/utf8.h"

#include <algorithm>
#include <cstdlib>

#include <sys/ioctl.h>
#include <unistd.h>

namespace tvtool::output {

namespace {

constexpr std::size_t narrowestLine = 80;

/// Returns the index of the width among the values that streams keep for their users.
int widthIndex() {
    static const int index = std::ios_base::xalloc();
    return index;
}

} // namespace

std::size_t lineWidthOf(int descriptor) {
    if (isatty(descriptor) != 1) {
        return unlimitedWidth;
    }
    const char* const variable = std::getenv("COLUMNS");
    if (const auto columns = text::parseNumber<unsigned short>(variable == nullptr ? "" : variable);
        columns && *columns > 0) {
        return std::max<std::size_t>(*columns, narrowestLine);
    }
    winsize size{};
    return ioctl(descriptor, TIOCGWINSZ, &size) == 0
               ? std::max<std::size_t>(size.ws_col, narrowestLine)
               : narrowestLine;
}

// The value 0 is that of streams for which no width was set.
void setLineWidth(std::ostream& os, std::size_t width) {
    os.iword(widthIndex()) = width == unlimitedWidth ? 0 : static_cast<long>(width);
}

std::size_t lineWidth(std::ostream& os) {
    const long width = os.iword(widthIndex());
    return width == 0 ? unlimitedWidth : static_cast<std::size_t>(width);
}

std::string wrapped(std::string_view text, std::size_t indent, std::size_t width) {
    if (text.size() <= width) {
        return std::string(text);
    }
    std::string lines;
    while (!text.empty()) {
        const std::size_t blanks = lines.empty() ? 0 : indent;
        std::string_view line = text::prefixOfWidth(text, width - blanks);
        if (line.size() < text.size()) {
            // The blank after a full line may be the place to split.
            const std::size_t blank = text.substr(0, line.size() + 1).rfind(' ');
            if (blank != std::string_view::npos && blank > text.find_first_not_of(' ')) {
                line = text.substr(0, blank);
            }
        }
        if (!lines.empty()) {
            lines.append(1, '\n').append(blanks, ' ');
        }
        lines += line;
        text.remove_prefix(line.size());
        text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    }
    return lines;
}

void printWrapped(std::string_view text, std::size_t indent, std::ostream& os) {
    os << wrapped(text, indent, lineWidth(os)) << '\n';
}

} // namespace tvtool::output
