#include "fmi/remarks.h"

#include <algorithm>

namespace tvtool::fmi {

void Remarks::addNote(const Place& place, std::string sentence) {
    // No element name contains a line break, so the key is unique.
    std::string key = std::string(place.element) + '\n' + sentence;
    const auto [entry, isNew] = noteIndex_.try_emplace(std::move(key), notes_.size());
    if (isNew) {
        notes_.push_back({std::string(place.element), place.line, std::move(sentence), 1});
    } else {
        ++notes_[entry->second].count;
    }
}

void Remarks::sort() {
    std::ranges::stable_sort(problems_, {}, &Remark::line);
    std::ranges::stable_sort(notes_, {}, &Remark::line);
    noteIndex_.clear();
}

} // namespace tvtool::fmi
