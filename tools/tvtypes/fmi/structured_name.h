/// \file
/// Parsing of names in the structured naming convention.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace tvtool::fmi {

/// One step of a name, such as wheel[2] in wheel[2].hub.
struct NamePart {
    std::string_view name; ///< without indices; a quoted name keeps its quotes
    std::string_view text; ///< with indices
    std::size_t firstIndex = 0;
    std::size_t indexCount = 0;
};

struct StructuredName {
    bool isDerivative = false;          ///< der(...); the parts are those of the argument
    std::vector<NamePart> parts;        ///< views into the parsed text
    std::vector<std::uint32_t> indices; ///< of all parts, each at most 2147483647

    std::span<const std::uint32_t> indicesOf(const NamePart& part) const {
        return std::span(indices).subspan(part.firstIndex, part.indexCount);
    }
};

/// A syntax error: the position of a byte, and the token that was expected there.
struct NameFault {
    std::size_t position = 0;
    const char* expected = "";
};

/// Parses a name:
///
///     name   = path | "der(" path ["," digits] ")"
///     path   = part {"." part}
///     part   = ( identifier | quoted ) ["[" digits {"," digits} "]"]
///     quoted = "'" character {character} "'"
///
/// A character may be an escape as in C strings. Overwrites `name`, which is incomplete after a
/// syntax error.
std::optional<NameFault> parseName(std::string_view text, StructuredName& name);

} // namespace tvtool::fmi
