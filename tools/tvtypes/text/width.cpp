#include "text/width.h"

#include <fmt/format.h>

namespace tvtool::text {

// A text never has fewer bytes than columns; padding it to that number of columns adds the
// difference.
std::size_t displayWidth(const std::string& text) {
    return 2 * text.size() - fmt::formatted_size("{:<{}}", text, text.size());
}

} // namespace tvtool::text
