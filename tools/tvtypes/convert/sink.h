/// \file
/// Output of converted elements.
#pragma once

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

    /// Writes the next elements. Throws an Error if that fails.
    virtual void write(const std::byte* elements, std::size_t count) = 0;
    /// Ends the output. A file that is not finished is discarded.
    virtual void finish() {}
};

/// Returns a sink that writes the elements as texts, one a line. The stream must outlive it.
std::unique_ptr<Sink> writeText(std::ostream& os, Element element);

/// Returns a sink that writes the elements to a file, which replaces `path` when it is finished.
/// Without a shape, a .npy file has one dimension. Throws a std::runtime_error if the file cannot
/// be created.
std::unique_ptr<Sink> createFile(const std::string& path, Format format, Element element,
                                 const std::optional<Shape>& shape);

} // namespace tvtool::convert
