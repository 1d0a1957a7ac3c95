/// \file
/// Four views of a struct type, each of which numbers its contents differently.
///
/// | View                   | An index denotes                                              |
/// |------------------------|---------------------------------------------------------------|
/// | ImmediateElementAccess | an element of the struct itself                               |
/// | DFSElementAccess       | a node of the depth-first walk through all nested structs     |
/// | FlatElementAccess      | a depth-first node that is not a struct                       |
/// | RawElementAccess       | a scalar in storage, where a complex value is two             |
#pragma once

#include <tvtypes/structs/dfs_element_access.h>
#include <tvtypes/structs/flat_element_access.h>
#include <tvtypes/structs/immediate_element_access.h>
#include <tvtypes/structs/raw_element_access.h>
#include <tvtypes/structs/struct_element_access.h>
