/// \file
/// The report of memory maps, as text and as JSON.
///
/// The JSON is one object in one line. Its member names are stable; absent values are null.
///
/// | Member     | Value                                                                         |
/// |------------|-------------------------------------------------------------------------------|
/// | `file`     | text, as given in the call                                                    |
/// | `problems` | number of problems of the description; `tvtypes inspect` lists them           |
/// | `structs`  | array of struct types: `id`, `name`, `originalName` (null if it is the name), |
/// |            | `size` and `alignment` in bytes, `elements`, `leaves`, `scalars`, `rows`      |
/// | `rows`     | array of nodes and padding in the order of the offsets: `kind` (`struct`,     |
/// |            | `structArray`, `leaf`, `padding`), `depth` (0 for the struct itself),         |
/// |            | `offset` and `size` in bytes, `path`, `type`, and the indices `dfs`, `flat`   |
/// |            | and `raw`                                                                     |
///
/// A name or type of more than 120 bytes is cut at its end, a longer path at its beginning; "..."
/// marks the cut.
#pragma once

#include "model/memory_map.h"

#include <ostream>

namespace tvtool::model {

void printText(const MemoryMaps& maps, bool colour, std::ostream& os);
void printJson(const MemoryMaps& maps, std::ostream& os);

} // namespace tvtool::model
