/// \file
/// The greater-than facts as a graph that answers without walking far.
#pragma once

#include <boost/container/small_vector.hpp>
#include <boost/unordered/unordered_flat_map.hpp>

#include <cstdint>
#include <vector>

namespace TVTypeSys {

/// Each size has a level, and what is greater has a higher one. So most questions are answered by
/// two levels, and a walk leaves out what is not between them.
///
/// What has to be walked is walked from both ends in turn, and the end that is done first decides.
/// The same goes for levels that have to change. So a chain of n facts takes time proportional to
/// n log n in whatever order they come.
class Ordering {
  public:
    /// Whether facts lead from the one to the other.
    bool isGreater(int greater, int lesser) const;

    /// Moves levels so that a fact can be added. False if the second is greater than the first.
    bool makeRoom(int greater, int lesser);
    /// Adds a fact that is not there and has been made room for. All or nothing.
    void add(int greater, int lesser);

  private:
    friend struct OrderingSearch;

    using Index = std::uint32_t;
    using Level = std::int64_t;
    using Indices = boost::container::small_vector<Index, 2>;

    struct Size {
        Level level;
        Indices greater, lesser; // by facts
    };

    /// The place of a size, which is entered at the level if it is new.
    Index place(int id, Level level);

    boost::unordered_flat_map<int, Index> places_;
    std::vector<Size> sizes_;
};

} // namespace TVTypeSys
