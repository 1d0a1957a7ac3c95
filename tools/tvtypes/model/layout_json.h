/// \file
/// Memory maps for programs: one JSON object on one line, its member names stable.
///
/// | Member     | Value                                                                         |
/// |------------|-------------------------------------------------------------------------------|
/// | `file`     | text, as given in the call                                                    |
/// | `problems` | how many problems the description has; `tvtypes inspect` tells them           |
/// | `structs`  | array of struct types: `id`, `name`, `originalName` (text, or null where it   |
/// |            | is the name), `size` and `alignment` in bytes, `elements`, `leaves`,          |
/// |            | `scalars`, `rows`                                                             |
/// | `rows`     | array of nodes and padding in the order of the offsets: `kind` (`struct`,     |
/// |            | `structArray`, `leaf`, `padding`), `depth` (0 is the struct itself), `offset` |
/// |            | and `size` in bytes, `path` and `type` (texts, or null), `dfs`, `flat` and    |
/// |            | `raw` (indices, or null)                                                      |
///
/// A name or type of more than 120 bytes is cut off and a longer path begins further in; "..."
/// stands for what is left out.
#pragma once

#include "model/layout.h"

#include <ostream>

namespace tvtool::model {

void printLayoutJson(const LayoutFindings& findings, std::ostream& os);

} // namespace tvtool::model
