/// \file
/// Suggestions for misspelt names of units.
#pragma once

#include <cstddef>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace tvtool::units {

/// Returns up to five words near a misspelt one: by edit distance without case, then with case,
/// then by length.
std::vector<std::string> suggestionsFor(std::string_view word, const std::set<std::string>& words);

/// Returns "; did you mean a, b?" with the suggestions for a word; empty if there are none.
std::string suggestionText(std::string_view word, const std::set<std::string>& words);

/// Returns all names, symbols and aliases of the concrete units.
std::set<std::string> unitWords();

/// Returns the optimal string alignment distance: the number of insertions, deletions, replacements
/// and swaps of adjacent characters from one text to the other, with no part edited twice. Returns
/// `most` + 1 if it is greater than `most`.
std::size_t editDistance(std::u32string_view a, std::u32string_view b, std::size_t most);

} // namespace tvtool::units
