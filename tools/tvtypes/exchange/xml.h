/// \file
/// Parsing of XML as a sequence of elements.
#pragma once

#include "exchange/source.h"

#include <cstdint>
#include <string_view>

namespace tvtool::exchange {

/// Line and column, from 1, of the first character of an element.
struct Position {
    std::uint32_t line = 0;
    std::uint32_t column = 0;
};

/// Callbacks for the elements of a text, in document order. An exception ends the parsing and is
/// rethrown; a files::ReadError gets the line and column of the element.
class XmlHandler {
  public:
    virtual ~XmlHandler() = default;

    /// \param attributes name, value, name, value, ..., null; all texts are UTF-8 and valid during
    ///                   the call
    virtual void startElement(std::string_view name, const char* const* attributes,
                              Position position) = 0;
    virtual void endElement() = 0;
};

/// Parses the whole text in linear time. Throws a files::ReadError if it is not well-formed or
/// exceeds a limit: 256 MiB, 16 MiB in one tag or comment, 5 million elements, 20 million
/// attributes or lines, 100000 levels, 1000 declared entities and attributes.
void parseXml(const Source& source, XmlHandler& handler);

} // namespace tvtool::exchange
