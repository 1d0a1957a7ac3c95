/// \file
/// Prefix search in a set of words.
#pragma once

#include <deque>
#include <mutex>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace TVTypeSys {

/// A sorted set of words, in which all words with a common prefix are adjacent. It takes less
/// memory than a prefix tree.
///
/// Words are sorted by the first search, which most programs never make. A lock allows concurrent
/// searches.
class CompletionWords {
  public:
    /// Adds a word, unless it is empty. \pre It stays valid until own() is called.
    void add(std::u16string_view word);

    /// Appends the words that begin with the prefix, in the order of code units.
    void append(std::vector<std::u16string>& out, std::u16string_view prefix) const;

    /// Copies the words, so that the texts from which they were added can be destroyed.
    void own();

  private:
    void sort() const;

    mutable std::mutex mutex_;
    mutable std::vector<std::u16string_view> added_; ///< not sorted yet
    mutable std::set<std::u16string_view> words_;
    std::deque<std::u16string> owned_; ///< texts of words_ after own()
};

} // namespace TVTypeSys
