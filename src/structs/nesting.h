/// \file
/// The structs that lie inside one struct, at any depth, as far as they have been found.
#pragma once

#include <cstdint>
#include <forward_list>
#include <map>

namespace TVTypeSys {

/// One struct, or one copy in an array of structs, that lies inside another.
struct Nesting {
    Nesting* parent = nullptr; ///< null for the outermost struct
    int typeId = 0;            ///< not set for the outermost struct
    int element = -1;          ///< in the parent
    int copy = 0;
    int start = 0;        ///< its first index in the numbering of the outermost struct
    std::int64_t end = 0; ///< behind its last one
    int depth = 0;
    /// Bytes from the start of the outermost struct, and the same of variable dimensions;
    /// -1 until they have been asked for.
    int offset = -1;
    int varDimsOffset = -1;
};

/// Nestings by the indices that they take. A nesting lies within its parent and overlaps no other,
/// so that an ordered map from each index at which something begins or ends to what lies there
/// gives the innermost nesting by one search, however deep it is.
class Nestings {
  public:
    Nestings();
    Nestings(const Nestings&) = delete;
    Nestings& operator=(const Nestings&) = delete;

    /// The innermost nesting found so far that holds an index from 0 up.
    Nesting& innermost(int index);

    /// Adds what has been found directly within `parent`.
    Nesting& add(const Nesting& found);

    void forget();

  private:
    Nesting outermost_;
    std::forward_list<Nesting> found_;
    std::map<std::int64_t, Nesting*> fromIndex_; // nothing stands for the outermost
};

} // namespace TVTypeSys
