/// \file
/// Paths of names, as they are shown.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tvtool::model {

/// Joins names to a path, the innermost first. There may be thousands, for each of thousands of
/// paths, so a path that is longer than a line takes shows only its end.
class PathEnd {
  public:
    /// False if the name, and all ahead of it, have no room.
    bool prepend(std::string_view name);
    std::string text() const;

  private:
    std::vector<std::string_view> names_;
    std::size_t length_ = 0;
    bool isCut_ = false;
};

} // namespace tvtool::model
