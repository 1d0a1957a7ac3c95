#include "text/utf8.h"

#include <fmt/format.h>

namespace tvtool::text {

// fmt has the widths of characters, but applies them only to padding: a text never has more
// columns than bytes, and padding it to its number of bytes adds the difference.
std::size_t displayWidth(const std::string& text) {
    return 2 * text.size() - fmt::formatted_size("{:<{}}", text, text.size());
}

} // namespace tvtool::text
