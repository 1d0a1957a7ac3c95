/// \file
/// All about one numeric type.
#pragma once

#include "fixedpoint/records.h"

#include <tvtypes/datatypetable.h>

#include <string>
#include <vector>

namespace tvtool::fixedpoint {

/// Tells a table which word lengths the target accesses atomically. Types of 8, 16 and 32 bits
/// follow the built-in integers. To be called ahead of what asks for types.
void setAtomic(const std::vector<int>& wordLengths, TVTypeSys::DataTypeTable& table);

/// A record is valid; `text` is the name that it was asked for by, or empty. Registers the type in
/// the table, with the storage that it has there.
fixedpoint::FixptSheet sheetOf(const std::string& text, const fxpDataTypeProp& record,
                               TVTypeSys::DataTypeTable& table);

} // namespace tvtool::fixedpoint
