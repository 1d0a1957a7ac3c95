/// \file
/// Names that say where in a hierarchy a variable stands.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace tvtool::fmi {

/// One step of a name, as in wheel[2] of wheel[2].hub.
struct NamePart {
    std::string_view name; ///< without indices; a text::quoted one keeps its quotes
    std::string_view text; ///< with indices
    std::size_t firstIndex = 0;
    std::size_t indexCount = 0;
};

struct StructuredName {
    bool isDerivative = false;          ///< der(...); the parts are those of what is derived
    std::vector<NamePart> parts;        ///< views into the text that was parsed
    std::vector<std::uint32_t> indices; ///< of all parts, each at most 2147483647
};

/// Where a text leaves the grammar: the position of a byte, and what should be there.
struct NameFault {
    std::size_t position = 0;
    const char* expected = "";
};

/// Parses a name of the structured naming convention:
///
///     name       = path | "der(" path ["," digits] ")"
///     path       = part {"." part}
///     part       = ( identifier | text::quoted ) ["[" digits {"," digits} "]"]
///     text::quoted     = "'" character {character} "'"
///
/// A character may be an escape as in C strings. Replaces what `name` held; after a fault it holds
/// nothing of use.
std::optional<NameFault> parseName(std::string_view text, StructuredName& name);

} // namespace tvtool::fmi
