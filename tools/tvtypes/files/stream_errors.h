/// \file
/// Errors of reading from streams.
#pragma once

#include <ios>
#include <istream>
#include <string>

namespace tvtool::files {

/// Makes failures of reading throw: a std::ios_base::failure with the number of the error, and
/// std::bad_alloc, which streams otherwise turn into the same state.
inline void throwOnFailure(std::istream& is) { is.exceptions(std::ios_base::badbit); }

/// Returns "cannot be read" with the reason.
inline std::string failureText(const std::ios_base::failure& failure) {
    return "cannot be read: " + failure.code().message();
}

} // namespace tvtool::files
