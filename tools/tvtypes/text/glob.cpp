#include "text/glob.h"

#include "text/utf8.h"

#include <algorithm>
#include <cstddef>

namespace tvtool::text {

namespace {

/// Returns the first character of a text, in all its bytes.
std::string_view firstCharacter(std::string_view text) {
    std::size_t end = 1;
    while (end < text.size() && isContinuationByte(text[end])) {
        ++end;
    }
    return text.substr(0, end);
}

/// A part of a pattern that matches one character.
struct OneCharacter {
    bool matches;
    std::size_t length; ///< of the part, in bytes
};

/// Matches a character with the list at the beginning of a pattern; length 0 if it is not closed.
OneCharacter matchList(std::string_view character, std::string_view pattern) {
    std::size_t i = 1;
    const bool isNegated = i < pattern.size() && (pattern[i] == '!' || pattern[i] == '^');
    i += isNegated ? 1 : 0;
    bool matches = false;
    // A closing bracket at the beginning of the list is a character of it.
    for (const std::size_t begin = i; i < pattern.size();) {
        if (pattern[i] == ']' && i > begin) {
            return {matches != isNegated, i + 1};
        }
        const std::string_view low = firstCharacter(pattern.substr(i));
        i += low.size();
        std::string_view high = low;
        if (i + 1 < pattern.size() && pattern[i] == '-' && pattern[i + 1] != ']') {
            high = firstCharacter(pattern.substr(i + 1));
            i += 1 + high.size();
        }
        // The order of characters is that of their bytes in UTF-8.
        matches = matches || (low <= character && character <= high);
    }
    return {false, 0};
}

/// Matches a character with the beginning of a pattern that is no star.
OneCharacter matchOne(std::string_view character, std::string_view pattern, bool hasLists) {
    if (pattern.front() == '?') {
        return {true, 1};
    }
    if (pattern.front() == '[' && hasLists) {
        if (const OneCharacter list = matchList(character, pattern); list.length > 0) {
            return list;
        }
    }
    const std::size_t escape = pattern.front() == '\\' && pattern.size() > 1 ? 1 : 0;
    const std::string_view literal = firstCharacter(pattern.substr(escape));
    return {literal == character, escape + literal.size()};
}

} // namespace

bool hasWildcard(std::string_view pattern) {
    return pattern.find_first_of("*?[\\") != std::string_view::npos;
}

// Only the last star needs to be tried again: if the rest of the pattern matches with an earlier
// star at all, it also does with the shortest match of that.
bool matchesGlob(std::string_view text, std::string_view pattern, bool hasLists) {
    constexpr std::size_t noStar = std::string_view::npos;
    std::size_t afterStar = noStar; // in the pattern
    std::size_t retry = 0;          // in the text
    std::size_t i = 0;
    for (std::size_t position = 0; position < text.size() || i < pattern.size();) {
        if (i < pattern.size() && pattern[i] == '*') {
            afterStar = ++i;
            retry = position;
            continue;
        }
        if (position < text.size() && i < pattern.size()) {
            const std::string_view character = firstCharacter(text.substr(position));
            const OneCharacter one = matchOne(character, pattern.substr(i), hasLists);
            if (one.matches) {
                position += character.size();
                i += one.length;
                continue;
            }
        }
        if (afterStar == noStar || retry >= text.size()) {
            return false;
        }
        retry += firstCharacter(text.substr(retry)).size();
        position = retry;
        i = afterStar;
    }
    return true;
}

} // namespace tvtool::text
