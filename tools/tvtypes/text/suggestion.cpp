#include "text/suggestion.h"

#include "text/utf16.h"

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <unicode/unistr.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <tuple>

namespace tvtool::text {

namespace {

constexpr std::size_t mostSuggestions = 5;
/// In bytes. No name of a unit or an option is as long, and the time grows with the square.
constexpr std::size_t longestWord = 60;

std::u32string characters(std::string_view text) {
    const std::u16string wide = toUtf16(text);
    const icu::UnicodeString unicode(wide.data(), static_cast<std::int32_t>(wide.size()));
    std::u32string all;
    for (std::int32_t i = 0; i < unicode.length(); i = unicode.moveIndex32(i, 1)) {
        all += static_cast<char32_t>(unicode.char32At(i));
    }
    return all;
}

} // namespace

std::size_t editDistance(std::u32string_view a, std::u32string_view b, std::size_t most) {
    // The last three rows of the matrix of distances between the prefixes of both texts.
    std::array<std::vector<std::size_t>, 3> rows;
    rows.fill(std::vector<std::size_t>(b.size() + 1));
    for (std::size_t j = 0; j <= b.size(); ++j) {
        rows[0][j] = j;
    }
    for (std::size_t i = 1; i <= a.size(); ++i) {
        std::vector<std::size_t>& row = rows[i % 3];
        const std::vector<std::size_t>& above = rows[(i - 1) % 3];
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t replaced = above[j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1);
            row[j] = std::min({above[j] + 1, row[j - 1] + 1, replaced});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1]) {
                row[j] = std::min(row[j], rows[(i - 2) % 3][j - 2] + 1);
            }
        }
        if (std::ranges::min(row) > most && std::ranges::min(above) > most) {
            return most + 1;
        }
    }
    return std::min(rows[a.size() % 3][b.size()], most + 1);
}

std::vector<std::string> suggestionsFor(std::string_view word, const std::set<std::string>& words) {
    if (word.empty() || word.size() > longestWord) {
        return {};
    }
    const std::u32string folded = characters(foldCase(word));
    const std::size_t most = folded.size() < 3 ? 0 : folded.size() < 6 ? 1 : 2;
    // Distance, distance with case, length and word, in the order of their weight.
    std::set<std::tuple<std::size_t, std::size_t, std::size_t, std::string>> candidates;
    for (const std::string& other : words) {
        const std::size_t distance = editDistance(folded, characters(foldCase(other)), most);
        if (distance <= most) {
            const std::size_t distanceWithCase =
                editDistance(characters(word), characters(other), longestWord);
            candidates.emplace(distance, distanceWithCase, other.size(), other);
        }
    }
    std::vector<std::string> suggestions;
    for (const auto& candidate : candidates) {
        if (suggestions.size() < mostSuggestions) {
            suggestions.push_back(std::get<std::string>(candidate));
        }
    }
    return suggestions;
}

std::string suggestionText(const std::vector<std::string>& suggestions) {
    return suggestions.empty() ? ""
                               : fmt::format("; did you mean {}?", fmt::join(suggestions, ", "));
}

std::optional<std::string> nearestChoice(std::string_view word,
                                         const std::set<std::string>& words) {
    const std::vector<std::string> near = suggestionsFor(word, words);
    if (!near.empty()) {
        return near.front();
    }
    constexpr std::size_t leastPrefix = 3;
    const std::string folded = foldCase(word);
    const auto other = std::ranges::find_if(words, [&](const std::string& each) {
        return std::min(each.size(), folded.size()) >= leastPrefix &&
               (each.starts_with(folded) || folded.starts_with(each));
    });
    return other == words.end() ? std::nullopt : std::optional(*other);
}

} // namespace tvtool::text
