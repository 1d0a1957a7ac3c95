/// \file
/// Where elements go.
#pragma once

#include "convert/names.h"
#include "convert/npy.h"
#include "convert/source.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <ostream>
#include <string>

namespace tvtool::convert {

class Sink {
  public:
    virtual ~Sink() = default;
    Sink() = default;
    Sink(const Sink&) = delete;
    Sink& operator=(const Sink&) = delete;

    /// Takes the next elements. Throws an Error if they cannot be kept.
    virtual void write(const std::byte* elements, std::size_t count) = 0;
    /// All elements have been written. What is not finished leaves nothing behind in a file.
    virtual void finish() = 0;
};

/// Writes the elements as texts, one a line. The stream has to outlive the sink.
std::unique_ptr<Sink> writeText(std::ostream& os, Element element);

/// Writes the elements to a file, which takes the place of `path` when it is finished. Where there
/// is no shape, a .npy file has one dimension. Throws an Error if the file cannot be made.
std::unique_ptr<Sink> createFile(const std::string& path, Format format, Element element,
                                 const std::optional<Shape>& shape);

} // namespace tvtool::convert
