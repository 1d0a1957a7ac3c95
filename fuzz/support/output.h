/// \file
/// Checks of what the tool prints.
#pragma once

#include "support/require.h"

#include <boost/json.hpp>

#include <algorithm>
#include <sstream>
#include <string>

namespace fuzzing {

/// Returns what a function prints to a stream.
template <class Print>
std::string printed(const Print& print) {
    std::ostringstream os;
    os.exceptions(std::ios_base::badbit);
    print(os);
    return os.str();
}

/// Requires a text without control characters except line ends.
inline void checkText(const std::string& text) {
    require(std::ranges::none_of(text, [](char c) {
        return (static_cast<unsigned char>(c) < ' ' && c != '\n') || c == '\x7f';
    }));
}

/// Requires a text that is one JSON value.
inline void checkJson(const std::string& text) {
    boost::json::error_code error;
    boost::json::parse(text, error);
    require(!error);
}

} // namespace fuzzing
