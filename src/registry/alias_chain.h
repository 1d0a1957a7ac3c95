/// \file
/// Reachability along alias chains.
#pragma once

#include <cstddef>

namespace TVTypeSys {

class DataType;
class DataTypeTable;

/// Returns whether `id` is `from`, is on its alias chain, or is a type to which its getters are
/// forwarded: an alias of `from` with this id would be a cycle. The two chains differ when a type
/// on the first one has been replaced by a type that is no alias.
bool leadsTo(const DataTypeTable& table, int from, int id);

/// Returns whether a record is an alias of a type at or behind a position, or forwards to one.
bool refersBehind(const DataType& dataType, std::size_t position);

} // namespace TVTypeSys
