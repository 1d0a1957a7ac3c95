#include "fmi/remarks.h"

#include <algorithm>
#include <utility>

namespace tvtool::fmi {

namespace {

constexpr std::size_t longestQuotation = 120;

bool isContinuationByte(char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U; }

} // namespace

void Remarks::problem(const Place& place, std::string sentence) {
    problems_.push_back({std::string(place.element), place.line, std::move(sentence), 1});
}

void Remarks::note(const Place& place, std::string sentence) {
    // A line break occurs in no element's name, so no two pairs share a key.
    std::string key = std::string(place.element) + '\n' + sentence;
    const auto [entry, isNew] = noteIndex_.try_emplace(std::move(key), notes_.size());
    if (isNew) {
        notes_.push_back({std::string(place.element), place.line, std::move(sentence), 1});
    } else {
        ++notes_[entry->second].count;
    }
}

void Remarks::sort() {
    const auto byLine = [](const Remark& a, const Remark& b) { return a.line < b.line; };
    std::stable_sort(problems_.begin(), problems_.end(), byLine);
    std::stable_sort(notes_.begin(), notes_.end(), byLine);
    noteIndex_.clear();
}

std::string quoted(std::string_view text) { return '"' + shortened(text, longestQuotation) + '"'; }

std::string shortened(std::string_view text, std::size_t longest) {
    if (text.size() <= longest) {
        return std::string(text);
    }
    std::size_t end = longest;
    while (end > 0 && isContinuationByte(text[end])) {
        --end;
    }
    return std::string(text.substr(0, end)) + "...";
}

} // namespace tvtool::fmi
