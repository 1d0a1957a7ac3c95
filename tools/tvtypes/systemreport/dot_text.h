/// \file
/// Texts of any bytes in the DOT language of Graphviz.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tvtool::systemreport {

/// Returns a text in quotes, as the value of a tooltip attribute.
std::string dotTooltip(std::string_view text);

/// Returns a text, cut after `longest` bytes, as a part of an HTML-like label. It is never empty.
std::string dotLabel(std::string_view text, std::size_t longest);

} // namespace tvtool::systemreport
