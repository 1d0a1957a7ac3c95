#include "units/completion_words.h"

namespace TVTypeSys {

void CompletionWords::add(std::u16string_view word) {
    if (!word.empty()) {
        added_.push_back(word);
    }
}

void CompletionWords::append(std::vector<std::u16string>& out, std::u16string_view prefix) const {
    const std::lock_guard lock(mutex_);
    putInOrder();
    for (auto word = words_.lower_bound(prefix); word != words_.end() && word->starts_with(prefix);
         ++word) {
        out.emplace_back(*word);
    }
}

void CompletionWords::keep() {
    putInOrder();
    std::deque<std::u16string> kept(words_.begin(), words_.end());
    words_ = std::set<std::u16string_view>(kept.begin(), kept.end());
    kept_ = std::move(kept);
}

void CompletionWords::putInOrder() const {
    words_.insert(added_.begin(), added_.end());
    added_.clear();
}

} // namespace TVTypeSys
