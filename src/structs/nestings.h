/// \file
/// Structs nested in one struct at any depth, by index in a numbering of that struct.
#pragma once

#include <cstdint>
#include <forward_list>
#include <map>

namespace TVTypeSys {

/// A nested struct, or one copy in an array of structs. Indices and offsets are those of the root,
/// which is the struct that owns the Nestings.
struct Nesting {
    Nesting* parent = nullptr; ///< null for the root
    int typeId = 0;            ///< not set for the root
    int element = -1;          ///< index of the element in the parent
    int copy = 0;              ///< index in an array of structs, else 0
    int start = 0;             ///< first index
    std::int64_t end = 0;      ///< index behind the last one
    int depth = 0;             ///< number of parents
    int offset = -1;           ///< in bytes; -1 until it is computed
    int varDimsOffset = -1;    ///< -1 until it is computed
};

/// The nested structs that have been found so far. Their index ranges form a tree: a nesting is
/// contained in its parent and does not overlap its siblings. An ordered map from each index at
/// which a range starts or ends to the innermost nesting there returns the innermost nesting around
/// an index in logarithmic time at any depth.
class Nestings {
  public:
    Nestings();
    Nestings(const Nestings&) = delete;
    Nestings& operator=(const Nestings&) = delete;

    /// Returns the innermost nesting found so far around `index`, which is 0 or above.
    Nesting& innermost(int index);

    /// Adds a nesting whose parent is `found.parent`, the innermost one at its start.
    Nesting& add(const Nesting& found);

    /// Removes all nestings except the root.
    void clear();

  private:
    Nesting root_;
    std::forward_list<Nesting> found_;
    std::map<std::int64_t, Nesting*> fromIndex_; // no entry before the first nesting: the root
};

} // namespace TVTypeSys
