/// \file
/// Registration of base types and enumerations in a table of types.
#pragma once

#include "exchange/records.h"

#include <tvtypes/datatypetable.h>

#include <cstddef>
#include <cstdint>
#include <string>

namespace tvtool::model {

/// The source of the types of models.
inline constexpr auto modelSource = static_cast<DataTypeSource>(2);

/// Returns the record of a type.
template <class Table>
auto& typeRecord(Table& table, int id) {
    return *table.getDataTypeAt(static_cast<std::size_t>(std::int64_t{id} + 1));
}

/// Returns whether the table cannot represent the values of a base type.
bool isOutside(exchange::BaseType base);

/// Returns the id of a base type, which is registered if it is not built in. Throws what the table
/// throws. \pre the base type is neither None nor outside
int baseTypeId(TVTypeSys::DataTypeTable& table, exchange::BaseType base);

/// Registers an enumeration. Throws what the table throws for an invalid name.
int registerEnumeration(TVTypeSys::DataTypeTable& table, const std::string& name);

} // namespace tvtool::model
