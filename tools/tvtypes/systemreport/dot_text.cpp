#include "systemreport/dot_text.h"

#include "text/quote.h"
#include "text/safe_text.h"

#include <boost/algorithm/string/replace.hpp>

namespace tvtool::systemreport {

namespace {

/// Returns the text with entities, which Graphviz reads in all texts, in place of ampersands, and
/// with `backslash` in place of backslashes.
std::string escapedText(std::string_view text, std::size_t longest, const char* backslash) {
    std::string escaped = text::safeText(text::shortened(text, longest));
    boost::replace_all(escaped, "&", "&amp;");
    boost::replace_all(escaped, "\\", backslash);
    return escaped;
}

} // namespace

std::string dotTooltip(std::string_view text) {
    // Graphviz replaces escape sequences in tooltips twice.
    std::string escaped = escapedText(text, 4 * text::longestName, R"(\\\\)");
    boost::replace_all(escaped, "\"", "\\\"");
    return "\"" + escaped + "\"";
}

std::string dotLabel(std::string_view text, std::size_t longest) {
    std::string escaped = escapedText(text, longest, R"(\\)");
    boost::replace_all(escaped, "<", "&lt;");
    boost::replace_all(escaped, ">", "&gt;");
    return escaped.empty() ? "(no name)" : escaped;
}

} // namespace tvtool::systemreport
