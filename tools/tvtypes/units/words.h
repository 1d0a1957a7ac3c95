/// \file
/// The words by which units are known.
#pragma once

#include <tvtypes/units.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tvtool::units {

/// The names, symbols and aliases that come nearest to a misspelt one, the nearest first; of equal
/// ones the shortest. Upper and lower case count for less than anything else.
std::vector<std::string> suggestionsFor(std::string_view word,
                                        const std::vector<std::string>& words);

/// All names, symbols and aliases of the concrete units, each once, sorted.
std::vector<std::string> unitWords();

/// How many characters have to be inserted, left out, replaced or swapped with the next one to make
/// one text of the other, if no part is changed twice; `most` plus one if it is more than that.
std::size_t editDistance(std::u32string_view a, std::u32string_view b, std::size_t most);

} // namespace tvtool::units
