#include "systemreport/dot_text.h"

#include "text/quote.h"
#include "text/safe_text.h"

#include <boost/algorithm/string/replace.hpp>

namespace tvtool::systemreport {

namespace {

/// Returns the text without the sequences that Graphviz replaces in all texts: those of a
/// backslash, and entities of HTML, which it replaces once and then writes to the picture as they
/// are.
std::string literal(std::string_view text, std::size_t longest) {
    std::string escaped = text::safeText(text::shortened(text, longest));
    boost::replace_all(escaped, "\\", "\\\\");
    boost::replace_all(escaped, "&", "&amp;amp;");
    return escaped;
}

} // namespace

std::string dotString(std::string_view text) {
    std::string escaped = literal(text, 4 * text::longestName);
    boost::replace_all(escaped, "\"", "\\\"");
    return "\"" + escaped + "\"";
}

std::string dotLabel(std::string_view text, std::size_t longest) {
    std::string escaped = literal(text, longest);
    boost::replace_all(escaped, "<", "&lt;");
    boost::replace_all(escaped, ">", "&gt;");
    return escaped.empty() ? "(no name)" : escaped;
}

} // namespace tvtool::systemreport
