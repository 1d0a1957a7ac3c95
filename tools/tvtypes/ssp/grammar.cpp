#include "ssp/grammar.h"

#include <algorithm>
#include <iterator>
#include <unordered_map>
#include <utility>

#include <boost/container_hash/hash.hpp>

namespace tvtool::ssp {

namespace {

using exchange::BaseType;

// The attributes of root elements.
#define META " author fileversion copyright license generationTool generationDateAndTime"

// clang-format off
constexpr ElementRule elements[] = {
    {Node::Document, "SystemStructureDescription", Node::Structure, "version name" META},
    {Node::Document, "ParameterSet", Node::ParameterSet, "version name" META},
    {Node::Document, "ParameterMapping", Node::ParameterMapping, "version" META},
    {Node::Document, "SignalDictionary", Node::Dictionary, "version" META},
    {Node::Structure, "System", Node::System, "name"},
    {Node::Structure, "Enumerations", Node::Enumerations, ""},
    {Node::Structure, "Units", Node::Units, ""},
    {Node::Structure, "DefaultExperiment", Node::Skipped, ""},
    {Node::Elements, "System", Node::System, "name"},
    {Node::Elements, "Component", Node::Component, "name type source implementation"},
    {Node::Elements, "SignalDictionaryReference", Node::DictionaryReference, "name dictionary"},
    {Node::System, "Connectors", Node::Connectors, ""},
    {Node::System, "ElementGeometry", Node::Skipped, ""},
    {Node::System, "ParameterBindings", Node::Bindings, ""},
    {Node::Component, "Connectors", Node::Connectors, ""},
    {Node::Component, "ElementGeometry", Node::Skipped, ""},
    {Node::Component, "ParameterBindings", Node::Bindings, ""},
    {Node::DictionaryReference, "Connectors", Node::Connectors, ""},
    {Node::DictionaryReference, "ElementGeometry", Node::Skipped, ""},
    {Node::DictionaryReference, "ParameterBindings", Node::Bindings, ""},
    {Node::System, "Elements", Node::Elements, ""},
    {Node::System, "Connections", Node::Connections, ""},
    {Node::System, "SignalDictionaries", Node::Dictionaries, ""},
    {Node::System, "SystemGeometry", Node::Skipped, ""},
    {Node::System, "GraphicalElements", Node::Skipped, ""},
    {Node::Connectors, "Connector", Node::Connector, "name kind"},
    {Node::Connector, "Real", Node::Type, "unit", BaseType::Float64},
    {Node::Connector, "Float64", Node::Type, "unit", BaseType::Float64, TransformationKind::None, true},
    {Node::Connector, "Float32", Node::Type, "unit", BaseType::Float32, TransformationKind::None, true},
    {Node::Connector, "Integer", Node::Type, "", BaseType::Int32},
    {Node::Connector, "Int8", Node::Type, "", BaseType::Int8, TransformationKind::None, true},
    {Node::Connector, "UInt8", Node::Type, "", BaseType::UInt8, TransformationKind::None, true},
    {Node::Connector, "Int16", Node::Type, "", BaseType::Int16, TransformationKind::None, true},
    {Node::Connector, "UInt16", Node::Type, "", BaseType::UInt16, TransformationKind::None, true},
    {Node::Connector, "Int32", Node::Type, "", BaseType::Int32, TransformationKind::None, true},
    {Node::Connector, "UInt32", Node::Type, "", BaseType::UInt32, TransformationKind::None, true},
    {Node::Connector, "Int64", Node::Type, "", BaseType::Int64, TransformationKind::None, true},
    {Node::Connector, "UInt64", Node::Type, "", BaseType::UInt64, TransformationKind::None, true},
    {Node::Connector, "Boolean", Node::Type, "", BaseType::Boolean},
    {Node::Connector, "String", Node::Type, "", BaseType::String},
    {Node::Connector, "Enumeration", Node::Type, "name", BaseType::Enumeration},
    {Node::Connector, "Binary", Node::Type, "mime-type", BaseType::Binary},
    {Node::Connector, "Clock", Node::Type, "name intervalVariability intervalDecimal shiftDecimal supportsFraction resolution intervalCounter shiftCounter priority", BaseType::Clock, TransformationKind::None, true},
    {Node::Connector, "Dimension", Node::Dimension, "size sizeConnector", BaseType::None, TransformationKind::None, true},
    {Node::Entry, "Real", Node::Type, "unit", BaseType::Float64},
    {Node::Entry, "Float64", Node::Type, "unit", BaseType::Float64, TransformationKind::None, true},
    {Node::Entry, "Float32", Node::Type, "unit", BaseType::Float32, TransformationKind::None, true},
    {Node::Entry, "Integer", Node::Type, "", BaseType::Int32},
    {Node::Entry, "Int8", Node::Type, "", BaseType::Int8, TransformationKind::None, true},
    {Node::Entry, "UInt8", Node::Type, "", BaseType::UInt8, TransformationKind::None, true},
    {Node::Entry, "Int16", Node::Type, "", BaseType::Int16, TransformationKind::None, true},
    {Node::Entry, "UInt16", Node::Type, "", BaseType::UInt16, TransformationKind::None, true},
    {Node::Entry, "Int32", Node::Type, "", BaseType::Int32, TransformationKind::None, true},
    {Node::Entry, "UInt32", Node::Type, "", BaseType::UInt32, TransformationKind::None, true},
    {Node::Entry, "Int64", Node::Type, "", BaseType::Int64, TransformationKind::None, true},
    {Node::Entry, "UInt64", Node::Type, "", BaseType::UInt64, TransformationKind::None, true},
    {Node::Entry, "Boolean", Node::Type, "", BaseType::Boolean},
    {Node::Entry, "String", Node::Type, "", BaseType::String},
    {Node::Entry, "Enumeration", Node::Type, "name", BaseType::Enumeration},
    {Node::Entry, "Binary", Node::Type, "mime-type", BaseType::Binary},
    {Node::Entry, "Clock", Node::Type, "name intervalVariability intervalDecimal shiftDecimal supportsFraction resolution intervalCounter shiftCounter priority", BaseType::Clock, TransformationKind::None, true},
    {Node::Entry, "Dimension", Node::Dimension, "size sizeConnector", BaseType::None, TransformationKind::None, true},
    {Node::Connector, "ConnectorGeometry", Node::Skipped, ""},
    {Node::Bindings, "ParameterBinding", Node::Binding, "type source sourceBase prefix"},
    {Node::Binding, "ParameterValues", Node::InlineValues, ""},
    {Node::Binding, "ParameterMapping", Node::BindingMapping, "type source sourceBase"},
    {Node::InlineValues, "ParameterSet", Node::ParameterSet, "version name" META},
    {Node::BindingMapping, "ParameterMapping", Node::ParameterMapping, "version" META},
    {Node::Connections, "Connection", Node::Connection, "startElement startConnector startIndices endElement endConnector endIndices suppressUnitConversion"},
    {Node::Connection, "LinearTransformation", Node::Linear, "factor offset", BaseType::None, TransformationKind::Linear},
    {Node::Connection, "BooleanMappingTransformation", Node::Mapping, "", BaseType::None, TransformationKind::Boolean},
    {Node::Connection, "IntegerMappingTransformation", Node::Mapping, "", BaseType::None, TransformationKind::Integer},
    {Node::Connection, "EnumerationMappingTransformation", Node::Mapping, "", BaseType::None, TransformationKind::Enumeration},
    {Node::MappingEntry, "LinearTransformation", Node::Linear, "factor offset", BaseType::None, TransformationKind::Linear},
    {Node::MappingEntry, "BooleanMappingTransformation", Node::Mapping, "", BaseType::None, TransformationKind::Boolean},
    {Node::MappingEntry, "IntegerMappingTransformation", Node::Mapping, "", BaseType::None, TransformationKind::Integer},
    {Node::MappingEntry, "EnumerationMappingTransformation", Node::Mapping, "", BaseType::None, TransformationKind::Enumeration},
    {Node::Connection, "ConnectionGeometry", Node::Skipped, ""},
    {Node::Mapping, "MapEntry", Node::MapEntry, "source target"},
    {Node::Dictionaries, "SignalDictionary", Node::DictionaryPlace, "name type source"},
    {Node::DictionaryPlace, "SignalDictionary", Node::Dictionary, "version" META},
    {Node::ParameterSet, "Enumerations", Node::Enumerations, ""},
    {Node::ParameterSet, "Units", Node::Units, ""},
    {Node::Dictionary, "Enumerations", Node::Enumerations, ""},
    {Node::Dictionary, "Units", Node::Units, ""},
    {Node::Enumerations, "Enumeration", Node::Enumeration, "name"},
    {Node::Enumeration, "Item", Node::Item, "name value"},
    {Node::Units, "Unit", Node::Unit, "name"},
    {Node::Unit, "BaseUnit", Node::BaseUnit, "kg m s A K mol cd rad factor offset"},
    {Node::ParameterSet, "Parameters", Node::Parameters, ""},
    {Node::Parameters, "Parameter", Node::Parameter, "name"},
    {Node::Parameter, "Real", Node::ParameterType, "value unit", BaseType::Float64},
    {Node::Parameter, "Float64", Node::ParameterType, "value unit", BaseType::Float64, TransformationKind::None, true},
    {Node::Parameter, "Float32", Node::ParameterType, "value unit", BaseType::Float32, TransformationKind::None, true},
    {Node::Parameter, "Integer", Node::ParameterType, "value", BaseType::Int32},
    {Node::Parameter, "Int8", Node::ParameterType, "value", BaseType::Int8, TransformationKind::None, true},
    {Node::Parameter, "UInt8", Node::ParameterType, "value", BaseType::UInt8, TransformationKind::None, true},
    {Node::Parameter, "Int16", Node::ParameterType, "value", BaseType::Int16, TransformationKind::None, true},
    {Node::Parameter, "UInt16", Node::ParameterType, "value", BaseType::UInt16, TransformationKind::None, true},
    {Node::Parameter, "Int32", Node::ParameterType, "value", BaseType::Int32, TransformationKind::None, true},
    {Node::Parameter, "UInt32", Node::ParameterType, "value", BaseType::UInt32, TransformationKind::None, true},
    {Node::Parameter, "Int64", Node::ParameterType, "value", BaseType::Int64, TransformationKind::None, true},
    {Node::Parameter, "UInt64", Node::ParameterType, "value", BaseType::UInt64, TransformationKind::None, true},
    {Node::Parameter, "Boolean", Node::ParameterType, "value", BaseType::Boolean},
    {Node::Parameter, "String", Node::ParameterType, "value", BaseType::String},
    {Node::Parameter, "Enumeration", Node::ParameterType, "value name", BaseType::Enumeration},
    {Node::Parameter, "Binary", Node::ParameterType, "value mime-type", BaseType::Binary},
    {Node::Parameter, "Dimension", Node::Dimension, "size sizeConnector", BaseType::None, TransformationKind::None, true},
    {Node::ParameterType, "Value", Node::Value, "value", BaseType::None, TransformationKind::None, true},
    {Node::ParameterMapping, "MappingEntry", Node::MappingEntry, "source target suppressUnitConversion"},
    {Node::Dictionary, "DictionaryEntry", Node::Entry, "name"},
};
// clang-format on

#undef META

/// Elements that others can have at any place.
constexpr ElementRule skippedAnywhere[] = {
    {Node::Document, "Annotations", Node::Skipped, ""},
    {Node::Document, "MetaData", Node::Skipped, "", BaseType::None, TransformationKind::None, true},
    {Node::Document, "Signature", Node::Skipped, "", BaseType::None, TransformationKind::None,
     true}};

bool isListed(std::string_view list, std::string_view name) {
    for (std::size_t begin = 0; begin < list.size();) {
        const std::size_t end = std::min(list.find(' ', begin), list.size());
        if (list.substr(begin, end - begin) == name) {
            return true;
        }
        begin = end + 1;
    }
    return false;
}

} // namespace

const ElementRule* findElement(Node parent, std::string_view name) {
    using Key = std::pair<Node, std::string_view>;
    static const auto rules = [] {
        std::unordered_map<Key, const ElementRule*, boost::hash<Key>> byName;
        for (const ElementRule& rule : elements) {
            byName.emplace(Key(rule.parent, rule.name), &rule);
        }
        return byName;
    }();
    const auto found = rules.find({parent, name});
    if (found != rules.end()) {
        return found->second;
    }
    const auto skipped = std::ranges::find(skippedAnywhere, name, &ElementRule::name);
    return parent == Node::Document || skipped == std::end(skippedAnywhere) ? nullptr : skipped;
}

bool hasAttribute(const ElementRule& rule, std::string_view name) {
    return name == "id" || name == "description" || isListed(rule.attributes, name);
}

bool isNewAttribute(const ElementRule& rule, std::string_view name) {
    return (rule.node == Node::Connection && (name == "startIndices" || name == "endIndices")) ||
           (rule.name == "ConnectorGeometry" && (name == "systemInnerX" || name == "systemInnerY"));
}

} // namespace tvtool::ssp
