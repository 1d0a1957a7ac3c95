/// \file
/// Patterns with wildcards, as those of file names in a shell.
#pragma once

#include <string>
#include <string_view>

namespace tvtool::text {

/// Returns whether a pattern has a wildcard: *, ?, [...] or a backslash.
bool hasWildcard(std::string_view pattern);

/// Returns whether a whole text matches a pattern: * is any text, ? any character, [a-z] and [!a-z]
/// a character of a list or none of it, and a backslash takes the next character as it is. A
/// bracket that is not closed is an ordinary character, as all brackets are without `hasLists`.
/// Takes time proportional to the product of the lengths at most.
bool matchesGlob(std::string_view text, std::string_view pattern, bool hasLists = true);

} // namespace tvtool::text
