/// \file
/// The elements and attributes of systems, parameter sets, mappings and dictionaries.
#pragma once

#include "exchange/records.h"
#include "ssp/records.h"

#include <cstdint>
#include <string_view>

namespace tvtool::ssp {

/// The kinds of elements.
enum class Node : std::uint8_t {
    Document, ///< the parent of the root element
    Structure,
    System,
    Elements,
    Component,
    DictionaryReference,
    Connectors,
    Connector,
    Type,
    Dimension,
    Bindings,
    Binding,
    InlineValues,
    BindingMapping, ///< the mapping of a binding, or the place of one
    Connections,
    Connection,
    Linear,
    Mapping, ///< a transformation with entries
    MapEntry,
    Dictionaries,
    DictionaryPlace, ///< the place of a dictionary in a system
    Enumerations,
    Enumeration,
    Item,
    Units,
    Unit,
    BaseUnit,
    ParameterSet,
    Parameters,
    Parameter,
    ParameterType,
    Value,
    ParameterMapping,
    MappingEntry,
    Dictionary,
    Entry,
    Skipped ///< known, but not read
};

struct ElementRule {
    Node parent;
    std::string_view name;
    Node node;
    std::string_view attributes; ///< separated by blanks, without id and description
    exchange::BaseType base = exchange::BaseType::None;
    TransformationKind transformation = TransformationKind::None;
    bool isNew = false; ///< whether version 1.0 does not have it
};

/// Returns the rule of an element, or null if it is not expected below this parent.
const ElementRule* findElement(Node parent, std::string_view name);

/// Returns whether an element has an attribute.
bool hasAttribute(const ElementRule& rule, std::string_view name);

/// Returns whether an attribute of an element is new in version 2.0.
bool isNewAttribute(const ElementRule& rule, std::string_view name);

} // namespace tvtool::ssp
