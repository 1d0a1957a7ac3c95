/// \file
/// The error of a call that failed, in JSON.
#pragma once

#include <boost/json.hpp>

#include <cstdint>
#include <string>

namespace tvtool::output {

/// Why a call failed. Empty texts and the number 0 are unknown.
struct Failure {
    std::string sentence{};
    std::string file{};
    std::uint64_t line = 0;
    std::uint64_t column = 0; ///< in the line of the file, or in the text
    std::string text{};       ///< the argument that is invalid
    std::string suggestion{}; ///< what may be meant instead of the text, or of a part of it
};

/// Returns the member "error" of the object that a failed call prints.
boost::json::object failureObject(const Failure& failure);

} // namespace tvtool::output
