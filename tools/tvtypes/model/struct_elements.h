/// \file
/// Elements of struct types in the table.
#pragma once

#include "model/units.h"

#include <tvtypes/structdatatype.h>

#include <span>
#include <string_view>
#include <vector>

namespace tvtool::model {

/// An element of a struct type, with ids of the tables.
struct TypeElement {
    std::string_view name;
    int type = 0;
    int unit = inheritedUnit;
    std::span<const int> dimensions; ///< empty for a scalar
};

/// Sets the elements of a type. Their offsets are not set.
void setElements(StructDataType& type, const std::vector<TypeElement>& elements);

} // namespace tvtool::model
