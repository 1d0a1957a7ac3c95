/// \file
/// Cache of the views of one struct type, owned by the type.
#pragma once

#include "structs/element_starts.h"
#include "structs/nestings.h"

#include <tvtypes/structs/struct_data_type.h>

#include <boost/unordered_map.hpp>

#include <vector>

namespace TVTypeSys {

/// Positions in one numbering.
struct NumberingCache {
    explicit NumberingCache(const Numbering& numbering)
        : firstElement(numbering.first), starts(numbering) {}

    void clear() {
        starts.clear();
        nestings.clear();
    }

    const std::int64_t firstElement; ///< index of the first element
    ElementStarts starts;            ///< elements of the struct
    Nestings nestings;               ///< structs nested in it
};

struct ViewCache {
    /// Returns the cache of a type, and makes it on the first call.
    static ViewCache& get(StructDataType& type);

    /// Removes positions, and keeps the values of nodes.
    void clearPositions();

    boost::unordered_map<int, DFSElementCache> nodes; ///< by index; clients hold pointers to them
    NumberingCache depthFirst{depthFirstNumbering};
    NumberingCache raw{rawNumbering};
    /// Number of scalars before each depth-first node, up to the largest index read: prefix sums.
    std::vector<unsigned> scalarsBefore = {0};
};

} // namespace TVTypeSys
