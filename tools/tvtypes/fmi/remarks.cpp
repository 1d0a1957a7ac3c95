#include "fmi/remarks.h"

#include <algorithm>
#include <utility>

namespace tvtool::fmi {

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

} // namespace tvtool::fmi
