/// \file
/// Elements and offsets of the depth-first nodes of one struct type.
#pragma once

#include <tvtypes/structs/struct_element.h>

#include <boost/unordered_map.hpp>

namespace TVTypeSys {

/// By index. Entries stay until the type is destroyed, since clients hold pointers to them.
struct ElementCache {
    boost::unordered_map<int, DFSElementCache> nodes;
};

} // namespace TVTypeSys
