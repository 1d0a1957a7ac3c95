#include "findings/selection.h"

#include "text/argument_error.h"
#include "text/glob.h"
#include "text/quote.h"
#include "text/suggestion.h"

#include <fmt/format.h>

#include <algorithm>
#include <set>
#include <string_view>

namespace tvtool::findings {

namespace {

text::ArgumentError unknownCode(const std::string& code) {
    std::set<std::string> names;
    for (const Rule& rule : rules()) {
        names.emplace(rule.name);
    }
    const std::string meant = text::nearestChoice(code, names).value_or("");
    return text::ArgumentError(
        fmt::format("no finding has the code {}{}", text::quoted(code), text::meantText(meant)),
        code, meant);
}

/// Sets the entries of the codes that match one of the patterns.
void setMatching(const std::vector<std::string>& lists, std::vector<bool>& entries, bool value) {
    for (const std::string& list : lists) {
        for (std::size_t begin = 0, end = 0; begin <= list.size(); begin = end + 1) {
            end = std::min(list.find(',', begin), list.size());
            const std::string pattern = list.substr(begin, end - begin);
            bool isKnown = text::hasWildcard(pattern);
            for (const Rule& rule : rules()) {
                if (text::matchesGlob(rule.name, pattern)) {
                    isKnown = true;
                    entries[static_cast<std::size_t>(rule.code)] = value;
                }
            }
            if (!isKnown) {
                throw unknownCode(pattern);
            }
        }
    }
}

} // namespace

Selection::Selection(const std::vector<std::string>& select, const std::vector<std::string>& ignore)
    : contains_(rules().size(), select.empty()) {
    setMatching(select, contains_, true);
    setMatching(ignore, contains_, false);
}

bool Selection::containsAll() const {
    return std::ranges::all_of(contains_, [](bool contains) { return contains; });
}

} // namespace tvtool::findings
