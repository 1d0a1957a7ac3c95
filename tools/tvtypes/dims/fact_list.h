/// \file
/// Facts in the JSON that `dims`, `inspect` and `check` print.
#pragma once

#include <istream>
#include <string>
#include <vector>

namespace tvtool::dims {

struct ListedFact {
    std::string text;
    std::vector<std::string> blocks; ///< at least one; an empty text if the report names none
};

struct FactList {
    std::vector<ListedFact> facts;
    bool areWhole = true; ///< whether sizes are whole numbers that are not negative
};

/// Returns whether a text is JSON, by its first character.
bool beginsLikeList(std::istream& is);

/// Returns the facts of a report, its members "facts" and "integer". Throws a files::ReadError if
/// the stream cannot be read, is longer than 256 MiB, or is no such report.
FactList readFactList(std::istream& is);

} // namespace tvtool::dims
