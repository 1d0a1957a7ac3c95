#pragma once

#include <ox/array.h>

#include <memory>
#include <string>
#include <string_view>

namespace oxd {

using Value = std::unique_ptr<oxArray_tag, TOxArrayDeleter>;

/// What a text of variables holds.
struct Reading {
    Value variables;   ///< one record, whose fields are the variables; null after a fault
    std::string fault; ///< with its line and column
};

Reading read(std::string_view text);

} // namespace oxd
