/// \file
/// Checks of the values of attributes.
#pragma once

#include "fmi/element.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace tvtool::fmi {

/// Checks the values of start, which are several for an array in FMI 3. Returns their number; 0 if
/// one of them is invalid.
std::uint64_t checkStart(const Element& element, BaseType base);

/// Checks min, max and nominal, and keeps their texts in a Variable or a TypeDefinition.
template <class Record>
void readRange(const Element& element, Record& record);

/// Return the value of an attribute with listed values. Another value is an error.
Causality readCausality(const Element& element);
Variability readVariability(const Element& element);
Initial readInitial(const Element& element);

/// Returns the unsigned 32-bit number in an attribute; empty if it is missing or, with an error, if
/// it is invalid.
std::optional<std::uint32_t> readUnsigned(const Element& element, Attribute attribute,
                                          std::string_view attributeName);

} // namespace tvtool::fmi
