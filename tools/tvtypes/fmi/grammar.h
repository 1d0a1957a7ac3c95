/// \file
/// The elements and attributes of descriptions.
#pragma once

#include "fmi/description.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace tvtool::fmi {

/// The kinds of elements.
enum class Node : std::uint8_t {
    Document, ///< the parent of the root element
    Root,
    UnitDefinitions,
    Unit,
    BaseUnit,
    DisplayUnit,
    TypeDefinitions,
    SimpleType,     ///< a type definition of FMI 2
    SimpleTypeBase, ///< the element in it with the base type
    NamedType,      ///< a type definition of FMI 3
    Item,
    ModelVariables,
    ScalarVariable,     ///< a variable of FMI 2
    ScalarVariableBase, ///< the element in it with the base type
    TypedVariable,      ///< a variable of FMI 3
    Dimension,
    Start,
    Alias,
    ModelStructure,
    UnknownList, ///< a list of unknowns of FMI 2
    Unknown,
    Skipped ///< known, but not read
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
    std::uint8_t rank = 0; ///< order of the children of the root; 0 for others
};

/// Ranks of the children of the root that are required.
inline constexpr std::uint8_t interfaceRank = 1;
inline constexpr std::uint8_t variablesRank = 7;
inline constexpr std::uint8_t structureRank = 8;

/// Returns the version of FMI with an element of this name below this parent, other than the given
/// one: "FMI 1", "FMI 2" or "FMI 3"; empty if there is none.
std::string_view findOtherVersion(Node parent, std::string_view name, Set version);

/// Returns the rule for an element, or null if it is not expected below this parent.
const ElementRule* findElement(Node parent, std::string_view name, Set version);

/// The attributes that are read, as indices of Element::attributes, and Known for all others.
enum class Attribute : std::uint8_t {
    FmiVersion,
    ModelName,
    NamingConvention,
    Name,
    ValueReference,
    DeclaredType,
    Causality,
    Variability,
    Initial,
    Description,
    Quantity,
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
    Guid,
    InstantiationToken,
    Derivative,
    Previous,
    Clocks,
    Index,
    Dependencies,
    DependenciesKind,
    RelativeQuantity,
    Known
};
inline constexpr std::size_t readAttributeCount = static_cast<std::size_t>(Attribute::Known);

/// Returns the attribute of an element with these groups; empty if it is not expected there.
std::optional<Attribute> findAttribute(std::string_view name, Set groups);

/// Returns whether a name is of another namespace, or an attribute that declares a namespace.
bool isForeign(std::string_view name);

} // namespace tvtool::fmi
