#include "text/quote.h"

#include "text/utf8.h"

#include <fmt/format.h>

namespace tvtool::text {

std::string shortened(std::string_view text, std::size_t longest) {
    if (text.size() <= longest) {
        return std::string(text);
    }
    std::size_t end = longest;
    while (end > 0 && isContinuationByte(text[end])) {
        --end;
    }
    return std::string(text.substr(0, end)) + "...";
}

std::string quoted(std::string_view text) { return '"' + shortened(text) + '"'; }

std::string counted(std::size_t count, std::string_view one, std::string_view many) {
    return count == 0 ? fmt::format("no {}", many)
                      : fmt::format("{} {}", count, count == 1 ? one : many);
}

} // namespace tvtool::text
