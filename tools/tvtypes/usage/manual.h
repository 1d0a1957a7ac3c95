/// \file
/// The manual pages of the tool and of its commands.
#pragma once

#include "usage/definition.h"

#include <string>
#include <string_view>
#include <vector>

namespace tvtool::usage {

struct PageFile {
    std::string name; ///< "tvtypes-unit.1"
    std::string text;
};

/// Returns the page of the tool, and one for each command that has a help of its own.
/// \param date of the pages; empty for none
std::vector<PageFile> manualPages(const Tool& tool, std::string_view date,
                                  std::string_view version);

} // namespace tvtool::usage
