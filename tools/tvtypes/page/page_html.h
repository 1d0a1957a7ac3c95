/// \file
/// The template of the page, which is compiled in.
#pragma once

#include <string_view>

namespace tvtool::page {

/// Contents of page/page.html.
extern const std::string_view pageHtml;

} // namespace tvtool::page
