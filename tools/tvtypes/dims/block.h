/// \file
/// Who states facts.
#pragma once

#include <cstdint>
#include <string>

/// What the library knows as a block and never looks into: here the block that a line of facts
/// names, the line itself if it names none, or a variable of a description.
class TVBlock {
  public:
    std::string name;       ///< empty for a line without a block
    std::uint64_t line = 0; ///< where it is met first
};
