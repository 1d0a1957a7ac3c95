/// \file
/// Types that transformations take, and comparison of the values in their entries.
#pragma once

#include "ssp/records.h"

#include <optional>
#include <string>
#include <string_view>

namespace tvtool::systems {

/// Returns whether a transformation takes values of a base type.
bool takes(ssp::TransformationKind transformation, exchange::BaseType base);

/// Returns a value of a mapping in the form in which equal values are equal texts; empty if it is
/// invalid.
std::optional<std::string> mappingKey(std::string_view value, ssp::TransformationKind kind);

} // namespace tvtool::systems
