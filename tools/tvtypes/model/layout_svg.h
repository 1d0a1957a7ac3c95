/// \file
/// Memory maps as a picture: the bytes of a struct from top to bottom, to scale, and a column for
/// each level of nesting.
#pragma once

#include "model/memory_map.h"

#include <ostream>

namespace tvtool::model {

/// Draws all structs beneath each other, one SVG document that needs nothing else. What is too
/// small, too deep or too much to be drawn is said in the picture.
void drawLayout(const MemoryMaps& maps, std::ostream& os);

} // namespace tvtool::model
