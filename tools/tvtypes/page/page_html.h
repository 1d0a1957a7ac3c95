/// \file
/// The template of the pages and the scripts of the kinds of reports, which are compiled in.
#pragma once

#include <string_view>

namespace tvtool::page {

/// Contents of page/page.html, page/model.js and page/system.js.
extern const std::string_view pageHtml;
extern const std::string_view modelScript;
extern const std::string_view systemScript;

} // namespace tvtool::page
