/// \file
/// Where elements come from.
#pragma once

#include "convert/names.h"
#include "convert/npy.h"

#include <cstddef>
#include <cstdint>
#include <istream>
#include <memory>
#include <optional>
#include <string>

namespace tvtool::convert {

enum class Format { Raw, Npy };

/// The format that a file's name says: Npy for .npy, else Raw.
Format formatOf(const std::string& path);

class Source {
  public:
    virtual ~Source() = default;
    Source() = default;
    Source(const Source&) = delete;
    Source& operator=(const Source&) = delete;

    virtual Element element() const = 0;
    /// How many elements there are in all, where that is known beforehand.
    virtual std::optional<std::uint64_t> count() const { return std::nullopt; }
    /// What the elements are arranged in, if it is more than a sequence.
    virtual std::optional<Shape> shape() const { return std::nullopt; }

    /// Fills `elements`, which has room for `most`, and gives their number; 0 at the end. Throws an
    /// Error if what should be an element is none.
    virtual std::size_t read(std::byte* elements, std::size_t most) = 0;
};

/// The values that stand in a text, separated by blanks and line ends. The stream has to outlive
/// the source.
std::unique_ptr<Source> readText(std::istream& is, Type type);

/// The elements of a file. A raw one holds little-endian values of `type`, which has to be given;
/// a .npy file says itself what it holds, and must agree with `type`. Throws an Error if it cannot
/// be opened, does not agree, or is not as long as it says.
std::unique_ptr<Source> openFile(const std::string& path, Format format, std::optional<Type> type);

} // namespace tvtool::convert
