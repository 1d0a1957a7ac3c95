#include "units/completion_words.h"

namespace TVTypeSys {

void CompletionWords::add(std::u16string_view word) {
    if (!word.empty()) {
        added_.push_back(word);
    }
}

void CompletionWords::append(std::vector<std::u16string>& out, std::u16string_view prefix) const {
    const std::lock_guard lock(mutex_);
    sort();
    for (auto word = words_.lower_bound(prefix); word != words_.end() && word->starts_with(prefix);
         ++word) {
        out.emplace_back(*word);
    }
}

void CompletionWords::own() {
    sort();
    std::deque<std::u16string> owned(words_.begin(), words_.end());
    words_ = std::set<std::u16string_view>(owned.begin(), owned.end());
    owned_ = std::move(owned);
}

void CompletionWords::sort() const {
    words_.insert(added_.begin(), added_.end());
    added_.clear();
}

} // namespace TVTypeSys
