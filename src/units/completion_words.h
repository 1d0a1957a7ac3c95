/// \file
/// Words found by how they begin.
#pragma once

#include <set>
#include <string>
#include <vector>

namespace TVTypeSys {

/// A set of words. In the order of their code units a word stands ahead of its extensions, and all
/// extensions of a prefix stand together.
class CompletionWords {
  public:
    /// The empty text is no word.
    void add(const std::u16string& word) {
        if (!word.empty()) {
            words_.insert(word);
        }
    }

    /// Appends the words that begin with the prefix, the prefix itself included.
    void append(std::vector<std::u16string>& out, const std::u16string& prefix) const {
        for (auto word = words_.lower_bound(prefix);
             word != words_.end() && word->starts_with(prefix); ++word) {
            out.push_back(*word);
        }
    }

  private:
    std::set<std::u16string> words_;
};

} // namespace TVTypeSys
