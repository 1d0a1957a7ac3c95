#include "output/shortening.h"

#include "text/utf8.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

namespace tvtool::output {

namespace {

constexpr std::string_view gap = "...";
/// The narrowest shortening that has three parts.
constexpr std::size_t narrowestWithWindow = 16;
/// The narrowest name in a list of several.
constexpr std::size_t narrowestName = 16;
/// The widest name in a list without a limit.
constexpr std::size_t widestName = 40;

std::size_t hashOf(std::string_view text) { return std::hash<std::string_view>()(text); }

/// Returns the beginning and the end of a text with the part from `position` on between them.
std::string withWindow(std::string_view text, std::size_t width, std::size_t position) {
    const std::size_t outer = (width - 2 * gap.size()) / 4;
    const std::size_t inner = width - 2 * gap.size() - 2 * outer;
    const std::string_view head = text::prefixOfWidth(text, outer);
    const std::string_view tail = text::suffixOfWidth(text, outer);
    // Some of what is before the position is shown as well, such as the name before an index.
    const std::string_view before = text::suffixOfWidth(text.substr(0, position), inner / 2);
    std::size_t begin = std::max(position - before.size(), head.size());
    std::string_view window = text::prefixOfWidth(text.substr(begin), inner);
    if (begin + window.size() + tail.size() > text.size()) {
        window = text::suffixOfWidth(text.substr(0, text.size() - tail.size()), inner);
        begin = text.size() - tail.size() - window.size();
    }
    return fmt::format("{}{}{}{}{}", head, begin > head.size() ? gap : "", window,
                       begin + window.size() + tail.size() < text.size() ? gap : "", tail);
}

/// Returns the index of the first byte of the first character in which two texts differ.
std::size_t firstDifference(std::string_view a, std::string_view b) {
    auto position =
        static_cast<std::size_t>(std::distance(a.begin(), std::ranges::mismatch(a, b).in1));
    while (position > 0 && position < a.size() && text::isContinuationByte(a[position])) {
        --position;
    }
    return position;
}

} // namespace

std::string shortenedInTheMiddle(std::string_view text, std::size_t width) {
    if (text.size() <= width || text::displayWidth(text) <= width) {
        return std::string(text);
    }
    const std::size_t shown = width - std::min(width, gap.size());
    const std::string_view head = text::prefixOfWidth(text, shown - shown / 2);
    const std::string_view tail = text::suffixOfWidth(text, shown / 2);
    return fmt::format("{}{}{}", head, gap, tail);
}

Shortening::Shortening(std::size_t count, const TextAt& textAt, std::size_t width) : width_(width) {
    struct First {
        std::size_t index;
        std::size_t hash; // of the text
    };
    std::unordered_map<std::size_t, First> firsts; // by the hash of the result
    // The texts of each group, by the hash of their common result.
    std::unordered_map<std::size_t, std::vector<std::string>> groups;
    std::unordered_set<std::size_t> grouped;
    std::string text;
    for (std::size_t i = 0; i < count; ++i) {
        text.clear();
        textAt(i, text);
        const std::size_t hash = hashOf(text);
        const std::size_t result = hashOf(shortenedInTheMiddle(text, width_));
        const auto [entry, isNew] = firsts.try_emplace(result, First{i, hash});
        if (isNew || entry->second.hash == hash || !grouped.insert(hash).second) {
            continue;
        }
        std::vector<std::string>& group = groups[result];
        if (group.empty()) {
            textAt(entry->second.index, group.emplace_back());
        }
        group.push_back(text);
    }
    if (groups.empty()) {
        return;
    }
    for (const auto& [result, first] : firsts) {
        taken_.insert(result);
    }
    // Sorted, so that the numbers do not depend on the order of the hash table.
    std::vector<std::vector<std::string>> sorted;
    for (auto& [result, group] : groups) {
        std::ranges::sort(group);
        sorted.push_back(std::move(group));
    }
    std::ranges::sort(
        sorted, {}, [](const auto& group) -> const auto& { return group.front(); });
    for (std::vector<std::string>& group : sorted) {
        resolve(std::move(group));
    }
    taken_.clear();
}

void Shortening::resolve(std::vector<std::string> group) {
    std::size_t number = 1;
    for (std::size_t i = 0; i < group.size(); ++i) {
        const std::string& text = group[i];
        // A text that is not too wide has the form of a shortening, and is shown as it is.
        if (text::displayWidth(text) <= width_) {
            continue;
        }
        std::string result;
        if (width_ >= narrowestWithWindow) {
            const std::size_t position =
                std::max(i > 0 ? firstDifference(text, group[i - 1]) : 0,
                         i + 1 < group.size() ? firstDifference(text, group[i + 1]) : 0);
            result = withWindow(text, width_, position);
        }
        while (result.empty() || !taken_.insert(hashOf(result)).second) {
            const std::string suffix = fmt::format("~{}", ++number);
            const std::size_t rest = width_ - std::min(width_, suffix.size());
            result = rest > gap.size() ? shortenedInTheMiddle(text, rest)
                                       : std::string(text::prefixOfWidth(text, rest));
            result += suffix;
        }
        exceptions_.emplace(hashOf(text), std::move(result));
    }
}

std::string Shortening::operator()(std::string_view text) const {
    if (!exceptions_.empty()) {
        if (const auto found = exceptions_.find(hashOf(text)); found != exceptions_.end()) {
            return found->second;
        }
    }
    return shortenedInTheMiddle(text, width_);
}

std::string nameList(std::size_t count, const Shortening::TextAt& nameAt, std::size_t width,
                     std::size_t most) {
    const auto others = [count](std::size_t shown) {
        return shown == count ? "" : fmt::format(" and {} more", count - shown);
    };
    std::size_t shown = std::min(count, most);
    const bool isUnlimited = width == static_cast<std::size_t>(-1);
    // The widest shown name that lets all of them fit.
    const auto share = [&] {
        const std::size_t rest = others(shown).size() + 2 * (shown - 1);
        return isUnlimited ? widestName : (width - std::min(width, rest)) / shown;
    };
    if (count == 0) {
        return {};
    }
    std::vector<std::string> names(shown);
    for (std::size_t i = 0; i < shown; ++i) {
        nameAt(i, names[i]);
    }
    const auto widthOf = [&] {
        std::size_t sum = others(shown).size();
        for (std::size_t i = 0; i < shown; ++i) {
            sum += text::displayWidth(names[i]) + (i > 0 ? 2 : 0);
        }
        return sum;
    };
    while (shown > 1 && !isUnlimited && widthOf() > width && share() < narrowestName) {
        --shown;
    }
    if (isUnlimited || widthOf() > width) {
        const std::size_t longest = std::max<std::size_t>(share(), 5);
        const Shortening shortening(
            shown, [&names](std::size_t i, std::string& text) { text += names[i]; }, longest);
        std::ranges::transform(names, names.begin(), std::cref(shortening));
    }
    return fmt::format(
        "{}{}", fmt::join(names.begin(), names.begin() + static_cast<std::ptrdiff_t>(shown), ", "),
        others(shown));
}

} // namespace tvtool::output
