/// \file
/// Parser of variable files.
#pragma once

#include <ox/array.h>

#include <memory>
#include <string>
#include <string_view>

namespace oxd {

using Value = std::unique_ptr<oxArray_tag, TOxArrayDeleter>;

/// Result of parsing.
struct Reading {
    Value variables;   ///< one record, whose fields are the variables; null on error
    std::string error; ///< line, column and reason
};

/// Parses the text of a file.
Reading read(std::string_view text);

} // namespace oxd
