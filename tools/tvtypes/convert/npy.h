/// \file
/// Header of a NumPy .npy file. The elements follow it without gaps.
#pragma once

#include "convert/names.h"
#include "files/input_file.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tvtool::convert {

struct Shape {
    std::vector<std::uint64_t> sizes;
    bool fortranOrder = false; ///< the first index varies fastest
};

/// The first bytes of a file.
inline constexpr std::string_view npyMagic = "\x93NUMPY";

struct NpyHeader {
    Element element;
    Wide wide = Wide::None; ///< with elements that become double
    bool bigEndian = false;
    Shape shape;
    std::uint64_t count = 0; ///< number of elements; count * sizeOf(element) fits 64 bits
};

/// Reads a header of version 1.0, 2.0 or 3.0 and leaves the file at the first element. Throws an
/// Error if it is malformed or longer than 64 KiB, has more than 64 dimensions, or has elements
/// that cannot be converted.
NpyHeader readNpyHeader(files::InputFile& file);

/// Returns a header of version 1.0 for little-endian elements. Its size is a multiple of 64 bytes,
/// and the same for all headers of one dimension, so that one can overwrite another.
std::string npyHeader(Element element, const Shape& shape);

} // namespace tvtool::convert
