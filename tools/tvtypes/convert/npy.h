/// \file
/// Header of a NumPy .npy file. The elements follow it without gaps.
#pragma once

#include "convert/names.h"

#include <cstdint>
#include <istream>
#include <string>
#include <vector>

namespace tvtool::convert {

struct Shape {
    std::vector<std::uint64_t> sizes;
    bool fortranOrder = false; ///< the first index varies fastest
};

struct NpyHeader {
    Element element;
    bool bigEndian = false;
    Shape shape;
    std::uint64_t count = 0; ///< number of elements; count * sizeOf(element) fits 64 bits
};

/// Reads a header of version 1.0, 2.0 or 3.0 and leaves the stream at the first element. Throws an
/// Error if it is malformed or longer than 64 KiB, has more than 64 dimensions, or has elements
/// that cannot be converted.
NpyHeader readNpyHeader(std::istream& is);

/// Returns a header of version 1.0 for little-endian elements. Its size is a multiple of 64 bytes,
/// and the same for all headers of one dimension, so that one can overwrite another.
std::string npyHeader(Element element, const Shape& shape);

} // namespace tvtool::convert
