/// \file
/// Which elements and attributes a description may hold, and which of them are read.
#pragma once

#include "fmi/description.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace tvtool::fmi {

/// What an element is to its reader.
enum class Node : std::uint8_t {
    Document, ///< what holds the root element
    Root,
    UnitDefinitions,
    Unit,
    BaseUnit,
    DisplayUnit,
    TypeDefinitions,
    SimpleType,     ///< a type definition of FMI 2
    SimpleTypeBase, ///< the element in it that says the base type
    NamedType,      ///< a type definition of FMI 3
    Item,
    ModelVariables,
    ScalarVariable,     ///< a variable of FMI 2
    ScalarVariableBase, ///< the element in it that says the base type
    TypedVariable,      ///< a variable of FMI 3
    Dimension,
    Start,
    Alias,
    Skipped ///< known, and of no interest with all that it holds
};

/// A set of major versions of FMI, or of attribute groups.
using Set = std::uint32_t;
inline constexpr Set fmi2 = 1;
inline constexpr Set fmi3 = 2;

struct ElementRule {
    Node parent;
    std::string_view name;
    Node node;
    Set versions;
    Set attributeGroups;
    BaseType base;
};

/// The rule for an element, or null if it is not expected below this parent.
const ElementRule* findElement(Node parent, std::string_view name, Set version);

/// The attributes that are read, each with a place in the reader's list; Known ones are not read.
enum class Attribute : std::uint8_t {
    FmiVersion,
    ModelName,
    NamingConvention,
    Name,
    ValueReference,
    DeclaredType,
    Causality,
    Variability,
    Start,
    Min,
    Max,
    Nominal,
    Value,
    Unit,
    DisplayUnit,
    Kilogram, ///< the powers of the base units, in the order of BaseUnit::powers
    Metre,
    Second,
    Ampere,
    Kelvin,
    Mole,
    Candela,
    Radian,
    Factor,
    Offset,
    Inverse,
    Known
};
inline constexpr std::size_t readAttributeCount = static_cast<std::size_t>(Attribute::Known);

struct AttributeRule {
    std::string_view name;
    Attribute attribute;
    Set groups;
};

/// The rule for an attribute of an element with these groups, or null if it is not expected there.
const AttributeRule* findAttribute(std::string_view name, Set groups);

/// Whether a name has a prefix, so that it belongs to another namespace or is about namespaces.
bool isForeign(std::string_view name);

} // namespace tvtool::fmi
