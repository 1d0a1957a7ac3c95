/// \file
/// Input and output of elements as texts and files.
#pragma once

#include "convert/npy.h"

#include <cstddef>
#include <cstdint>
#include <istream>
#include <memory>
#include <optional>
#include <ostream>
#include <string>

namespace tvtool::convert {

enum class Format { Raw, Npy };

/// Returns whether the name of a file is that of a NumPy file.
bool isNpyName(const std::string& path);

class Source {
  public:
    virtual ~Source() = default;

    virtual Element element() const = 0;
    /// Returns the type of the values in the input, from which those of the elements are read.
    virtual StoredType storedType() const = 0;
    /// Returns the number of all elements; empty if it is not known before the end.
    virtual std::optional<std::uint64_t> count() const { return std::nullopt; }
    /// Returns the shape of the elements; empty for a sequence.
    virtual std::optional<Shape> shape() const { return std::nullopt; }

    /// Reads up to `most` elements and returns their number; 0 at the end. Throws an Error for an
    /// invalid element.
    virtual std::size_t read(std::byte* elements, std::size_t most) = 0;
};

/// Returns a source of the values in a text, separated by blanks and line breaks. The stream must
/// outlive it.
std::unique_ptr<Source> readText(std::istream& is, StoredType type);

/// Returns a source of the elements of a file, or with the path "-" of the standard input, which
/// must outlive it. A raw file has little-endian values of `type`, which must be given; the type in
/// a .npy file must be `type` if that is given. Without a format, a file is a .npy file if it
/// begins like one or has such a name. Throws a files::FileError if the file cannot be opened, has
/// another type, or a size that its header contradicts.
std::unique_ptr<Source> openFile(const std::string& path, std::istream& standardInput,
                                 std::optional<Format> format, std::optional<StoredType> type);

class Sink {
  public:
    virtual ~Sink() = default;

    /// Writes the next elements. Throws an Error if that fails.
    virtual void write(const std::byte* elements, std::size_t count) = 0;
    /// Ends the output. A file that is not finished is discarded.
    virtual void finish() {}
};

/// Returns a sink that writes the elements as texts, one a line. The stream must outlive it.
std::unique_ptr<Sink> writeText(std::ostream& os, Element element);

/// Returns a sink that writes the elements to a file, which replaces `path` when it is finished.
/// This may be the file at `input`, of which the elements are read. Without a shape, a .npy file
/// has one dimension. Throws a std::runtime_error if the file cannot be created.
std::unique_ptr<Sink> createFile(const std::string& path, const std::string& input, Format format,
                                 Element element, const std::optional<Shape>& shape);

} // namespace tvtool::convert
