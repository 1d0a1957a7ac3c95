/// \file
/// An XML text as a sequence of elements.
#pragma once

#include "fmi/source.h"

#include <cstdint>
#include <string_view>

namespace tvtool::fmi {

/// Receives the elements of a text in order. What an operation throws ends the reading and passes
/// through; a files::ReadError is given the place of the element.
class XmlHandler {
  public:
    virtual ~XmlHandler() = default;

    /// \param attributes name, value, name, value, ..., null; all texts are UTF-8 and valid for
    ///                   the time of the call
    virtual void startElement(std::string_view name, const char* const* attributes,
                              std::uint64_t line) = 0;
    virtual void endElement() = 0;
};

/// Throws a files::ReadError if the text is not well-formed.
void parseXml(Source& source, XmlHandler& handler);

} // namespace tvtool::fmi
