/// \file
/// Paths of names.
#pragma once

#include "text/quote.h"

#include <string>
#include <string_view>

namespace tvtool::model {

/// Builds a path from its last name to its first. A model can have thousands of paths of thousands
/// of names, so only the end of a long path is kept, after "...".
class PathEnd {
  public:
    /// Returns false if there is no room for the name and those before it.
    bool prepend(std::string_view name) {
        isCut_ = isCut_ || (length_ > 0 && length_ + name.size() > text::longestName);
        if (!isCut_) {
            path_.insert(0, text::shortened(name) + (length_ > 0 ? "." : ""));
            length_ += name.size() + 1;
        }
        return !isCut_;
    }

    std::string text() const { return isCut_ ? "..." + path_ : path_; }

  private:
    std::string path_;
    std::size_t length_ = 0; ///< with names in full
    bool isCut_ = false;
};

} // namespace tvtool::model
