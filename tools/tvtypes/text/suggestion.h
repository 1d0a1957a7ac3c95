/// \file
/// Suggestions for misspelt words.
#pragma once

#include <cstddef>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace tvtool::text {

/// Returns up to five words near a misspelt one: by edit distance without case, then with case,
/// then by length.
std::vector<std::string> suggestionsFor(std::string_view word, const std::set<std::string>& words);

/// Returns "; did you mean a, b?" with the suggestions; empty if there are none.
std::string suggestionText(const std::vector<std::string>& suggestions);

/// Returns the word that is meant, of the few that a command line allows: the nearest one, else one
/// that begins with the misspelt word or with which that begins. Empty if there is none.
std::optional<std::string> nearestChoice(std::string_view word, const std::set<std::string>& words);

/// Returns the optimal string alignment distance: the number of insertions, deletions, replacements
/// and swaps of adjacent characters from one text to the other, with no part edited twice. Returns
/// `most` + 1 if it is greater than `most`.
std::size_t editDistance(std::u32string_view a, std::u32string_view b, std::size_t most);

} // namespace tvtool::text
