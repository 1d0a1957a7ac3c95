/// \file
/// Incremental topological order of the greater-than relations.
#pragma once

#include <boost/container/small_vector.hpp>
#include <boost/unordered/unordered_flat_map.hpp>

#include <cstdint>
#include <vector>

namespace TVTypeSys {

/// A directed acyclic graph of sizes with a topological order that is maintained as edges are
/// added. The order is given by levels: a size has a higher level than all lesser sizes. Sizes that
/// are not ordered may share a level. Most queries are answered by comparing two levels, and a
/// search visits only sizes whose levels are between them.
///
/// Reachability is decided by a two-way search, forward from one size and backward from the other,
/// which advances the cheaper direction and ends when either is complete. Relabelling for a new
/// edge uses the same scheme: it either raises the greater size and those above it or lowers the
/// lesser size and those below it. So a chain of n edges takes O(n log n) in any order of
/// insertion.
class Ordering {
  public:
    /// Returns whether there is a path from one size to the other.
    bool isGreater(int greater, int lesser) const;

    /// Relabels sizes so that an edge can be added. Returns false, with nothing changed, if the
    /// edge would close a cycle.
    bool reorder(int greater, int lesser);
    /// Adds an edge; if this throws, nothing has changed. \pre The edge is new, and reorder() of
    /// the two sizes has returned true.
    void add(int greater, int lesser);
    /// Removes an edge again. \pre It is the last that was added.
    void removeLast(int greater, int lesser) noexcept;

  private:
    friend struct OrderingSearch;

    using Index = std::uint32_t;
    using Level = std::int64_t;
    using Indices = boost::container::small_vector<Index, 2>;

    /// A node of the graph.
    struct Size {
        Level level;
        Indices greater, lesser; // by edges
    };

    /// Returns the index of a size, which is added with this level if it is new.
    Index findOrAdd(int id, Level level);

    boost::unordered_flat_map<int, Index> indices_;
    std::vector<Size> sizes_;
};

} // namespace TVTypeSys
