/// \file
/// Words found by how they begin.
#pragma once

#include <deque>
#include <mutex>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace TVTypeSys {

/// A set of words. In the order of their code units a word stands ahead of its extensions, and all
/// extensions of a prefix stand together.
///
/// Words are put in order when they are first asked for, which most programs never do. A lock lets
/// threads ask at once.
class CompletionWords {
  public:
    /// Adds a word that stays where it is until `keep` is called. The empty text is no word.
    void add(std::u16string_view word);

    /// Appends the words that begin with the prefix, the prefix itself included.
    void append(std::vector<std::u16string>& out, std::u16string_view prefix) const;

    /// Copies the words that have been added, so that their origin may go.
    void keep();

  private:
    void putInOrder() const;

    mutable std::mutex mutex_;
    mutable std::vector<std::u16string_view> added_;
    mutable std::set<std::u16string_view> words_;
    std::deque<std::u16string> kept_;
};

} // namespace TVTypeSys
