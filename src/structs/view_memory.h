/// \file
/// What the views of a struct type have found and keep with it.
#pragma once

#include "structs/nesting.h"
#include "structs/numbering.h"

#include <tvtypes/structdatatype.h>

#include <boost/unordered_map.hpp>

#include <vector>

namespace TVTypeSys {

/// One numbering of what lies inside the struct.
struct NumberingMemory {
    explicit NumberingMemory(const Numbering& numbering)
        : firstElement(numbering.first), starts(numbering) {}

    void forget() {
        starts.forget();
        nestings.forget();
    }

    const std::int64_t firstElement;
    ElementStarts starts;
    Nestings nestings;
};

struct ViewMemory {
    static ViewMemory& of(StructDataType& type);

    /// Forgets where things lie, and keeps what was read there.
    void forgetPositions();

    boost::unordered_map<int, DFSElementCache> nodes; ///< their addresses stay
    NumberingMemory depthFirst{depthFirstNumbering};
    NumberingMemory raw{rawNumbering};
    /// How many scalars lie ahead of each depth-first node, as far as it has been asked for.
    std::vector<unsigned> scalarsAhead = {0};
};

} // namespace TVTypeSys
