/// \file
/// The order of names.
#pragma once

#include "table/contents.h"

namespace TV {

/// Names, known by their ids, in the byte order of their texts.
class Names {
  public:
    explicit Names(const SymbolicExprTable::Contents& contents) : contents_(&contents) {}

    bool isBefore(std::uint32_t a, std::uint32_t b) const {
        return a != b && text(a).compare(text(b)) < 0;
    }

  private:
    const std::string& text(std::uint32_t name) const {
        return static_cast<const SymbolicString&>((*contents_)[name]).text();
    }

    const SymbolicExprTable::Contents* contents_;
};

} // namespace TV
