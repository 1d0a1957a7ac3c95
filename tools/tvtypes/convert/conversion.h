/// \file
/// Elements converted in the library, and what that lost.
#pragma once

#include "convert/names.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace tvtool::convert {

/// How often something happened, and where for the first times. Indices count from 0.
struct Places {
    std::uint64_t count = 0;
    std::vector<std::uint64_t> first;

    void add(std::uint64_t index);
};

struct Losses {
    std::uint64_t elements = 0;
    Places lost;       ///< converted back, the element would differ
    Places overflowed; ///< of these, what the destination has no room for
};

/// What became of the elements, in one line.
std::string sentenceOf(const Losses& losses);

/// Converts the elements of one vector, piece by piece.
class Conversion {
  public:
    /// Throws an Error if complex elements are to become anything but double or single.
    Conversion(Element source, Type destination, Modes modes);

    Element source() const { return source_; }
    Element destination() const { return destination_; }
    const Losses& losses() const { return losses_; }

    void convert(const std::byte* from, std::byte* to, std::size_t count);

  private:
    bool keeps(const std::byte* from, std::byte* to, std::size_t count) const;
    bool overflows(const std::byte* element) const;

    Element source_;
    Element destination_;
    Modes modes_;
    Losses losses_;
};

} // namespace tvtool::convert
