#include "fmi/grammar.h"

#include <algorithm>
#include <initializer_list>
#include <iterator>
#include <unordered_map>
#include <utility>

namespace tvtool::fmi {

namespace {

constexpr Set both = fmi2 | fmi3;

// Groups of attributes. An element has the attributes of all its groups.
constexpr Set root = 1U << 0;
constexpr Set named = 1U << 1;
constexpr Set quantity = 1U << 2;
constexpr Set range = 1U << 3;
constexpr Set real = 1U << 4;
constexpr Set variable = 1U << 5;
constexpr Set declared = 1U << 6;
constexpr Set start = 1U << 7;
constexpr Set initial = 1U << 8;
constexpr Set derivative = 1U << 9;
constexpr Set binary = 1U << 10;
constexpr Set clock = 1U << 11;
constexpr Set item = 1U << 12;
constexpr Set extent = 1U << 13;
constexpr Set alias = 1U << 14;
constexpr Set typed = 1U << 15;
constexpr Set unit = 1U << 16;
constexpr Set powers = 1U << 17;
constexpr Set scale = 1U << 18;
constexpr Set inverse = 1U << 19;
constexpr Set index = 1U << 20;
constexpr Set target = 1U << 21;
constexpr Set dependent = 1U << 22;

constexpr Set integerType = quantity | range;
constexpr Set realType = integerType | real;
constexpr Set variable3 = named | variable | declared | typed;
constexpr Set integer3 = variable3 | initial | start | integerType;
constexpr Set real3 = variable3 | initial | start | realType | derivative;

constexpr BaseType none = BaseType::None;

// clang-format off
constexpr ElementRule elements[] = {
    {Node::Document, "fmiModelDescription", Node::Root, both, root, none},

    // The last number is the order of the elements; those with the same number have none.
    {Node::Root, "ModelExchange",      Node::Skipped,         both, 0, none, interfaceRank},
    {Node::Root, "CoSimulation",       Node::Skipped,         both, 0, none, interfaceRank},
    {Node::Root, "ScheduledExecution", Node::Skipped,         fmi3, 0, none, interfaceRank},
    {Node::Root, "UnitDefinitions",    Node::UnitDefinitions, both, 0, none, 2},
    {Node::Root, "TypeDefinitions",    Node::TypeDefinitions, both, 0, none, 3},
    {Node::Root, "LogCategories",      Node::Skipped,         both, 0, none, 4},
    {Node::Root, "DefaultExperiment",  Node::Skipped,         both, 0, none, 5},
    {Node::Root, "VendorAnnotations",  Node::Skipped,         fmi2, 0, none, 6},
    {Node::Root, "ModelVariables",     Node::ModelVariables,  both, 0, none, variablesRank},
    {Node::Root, "ModelStructure",     Node::ModelStructure,  both, 0, none, structureRank},
    {Node::Root, "Annotations",        Node::Skipped,         fmi3, 0, none, 9},

    {Node::UnitDefinitions, "Unit", Node::Unit, both, unit, none},
    {Node::Unit, "BaseUnit",    Node::BaseUnit,    both, powers | scale,         none},
    {Node::Unit, "DisplayUnit", Node::DisplayUnit, fmi2, unit | scale,           none},
    {Node::Unit, "DisplayUnit", Node::DisplayUnit, fmi3, unit | scale | inverse, none},

    {Node::TypeDefinitions, "SimpleType", Node::SimpleType, fmi2, named, none},
    {Node::SimpleType, "Real",        Node::SimpleTypeBase, fmi2, realType,    BaseType::Float64},
    {Node::SimpleType, "Integer",     Node::SimpleTypeBase, fmi2, integerType, BaseType::Int32},
    {Node::SimpleType, "Boolean",     Node::SimpleTypeBase, fmi2, 0,           BaseType::Boolean},
    {Node::SimpleType, "String",      Node::SimpleTypeBase, fmi2, 0,           BaseType::String},
    {Node::SimpleType, "Enumeration", Node::SimpleTypeBase, fmi2, quantity,    BaseType::Enumeration},
    {Node::SimpleTypeBase, "Item", Node::Item, fmi2, named | item, none},

    {Node::TypeDefinitions, "Float64Type",     Node::NamedType, fmi3, named | realType,    BaseType::Float64},
    {Node::TypeDefinitions, "Float32Type",     Node::NamedType, fmi3, named | realType,    BaseType::Float32},
    {Node::TypeDefinitions, "Int8Type",        Node::NamedType, fmi3, named | integerType, BaseType::Int8},
    {Node::TypeDefinitions, "UInt8Type",       Node::NamedType, fmi3, named | integerType, BaseType::UInt8},
    {Node::TypeDefinitions, "Int16Type",       Node::NamedType, fmi3, named | integerType, BaseType::Int16},
    {Node::TypeDefinitions, "UInt16Type",      Node::NamedType, fmi3, named | integerType, BaseType::UInt16},
    {Node::TypeDefinitions, "Int32Type",       Node::NamedType, fmi3, named | integerType, BaseType::Int32},
    {Node::TypeDefinitions, "UInt32Type",      Node::NamedType, fmi3, named | integerType, BaseType::UInt32},
    {Node::TypeDefinitions, "Int64Type",       Node::NamedType, fmi3, named | integerType, BaseType::Int64},
    {Node::TypeDefinitions, "UInt64Type",      Node::NamedType, fmi3, named | integerType, BaseType::UInt64},
    {Node::TypeDefinitions, "BooleanType",     Node::NamedType, fmi3, named,               BaseType::Boolean},
    {Node::TypeDefinitions, "StringType",      Node::NamedType, fmi3, named,               BaseType::String},
    {Node::TypeDefinitions, "BinaryType",      Node::NamedType, fmi3, named | binary,      BaseType::Binary},
    {Node::TypeDefinitions, "ClockType",       Node::NamedType, fmi3, named | clock,       BaseType::Clock},
    {Node::TypeDefinitions, "EnumerationType", Node::NamedType, fmi3, named | quantity,    BaseType::Enumeration},
    {Node::NamedType, "Item", Node::Item, fmi3, named | item, none},

    {Node::ModelVariables, "ScalarVariable", Node::ScalarVariable, fmi2, named | variable | initial, none},
    {Node::ScalarVariable, "Real",        Node::ScalarVariableBase, fmi2, declared | start | realType | derivative, BaseType::Float64},
    {Node::ScalarVariable, "Integer",     Node::ScalarVariableBase, fmi2, declared | start | integerType, BaseType::Int32},
    {Node::ScalarVariable, "Boolean",     Node::ScalarVariableBase, fmi2, declared | start,               BaseType::Boolean},
    {Node::ScalarVariable, "String",      Node::ScalarVariableBase, fmi2, declared | start,               BaseType::String},
    {Node::ScalarVariable, "Enumeration", Node::ScalarVariableBase, fmi2, declared | start | integerType, BaseType::Enumeration},

    {Node::ModelVariables, "Float64",     Node::TypedVariable, fmi3, real3,    BaseType::Float64},
    {Node::ModelVariables, "Float32",     Node::TypedVariable, fmi3, real3,    BaseType::Float32},
    {Node::ModelVariables, "Int8",        Node::TypedVariable, fmi3, integer3, BaseType::Int8},
    {Node::ModelVariables, "UInt8",       Node::TypedVariable, fmi3, integer3, BaseType::UInt8},
    {Node::ModelVariables, "Int16",       Node::TypedVariable, fmi3, integer3, BaseType::Int16},
    {Node::ModelVariables, "UInt16",      Node::TypedVariable, fmi3, integer3, BaseType::UInt16},
    {Node::ModelVariables, "Int32",       Node::TypedVariable, fmi3, integer3, BaseType::Int32},
    {Node::ModelVariables, "UInt32",      Node::TypedVariable, fmi3, integer3, BaseType::UInt32},
    {Node::ModelVariables, "Int64",       Node::TypedVariable, fmi3, integer3, BaseType::Int64},
    {Node::ModelVariables, "UInt64",      Node::TypedVariable, fmi3, integer3, BaseType::UInt64},
    {Node::ModelVariables, "Boolean",     Node::TypedVariable, fmi3, variable3 | initial | start,  BaseType::Boolean},
    {Node::ModelVariables, "String",      Node::TypedVariable, fmi3, variable3 | initial,          BaseType::String},
    {Node::ModelVariables, "Binary",      Node::TypedVariable, fmi3, variable3 | initial | binary, BaseType::Binary},
    {Node::ModelVariables, "Clock",       Node::TypedVariable, fmi3, variable3 | clock,            BaseType::Clock},
    {Node::ModelVariables, "Enumeration", Node::TypedVariable, fmi3, integer3, BaseType::Enumeration},
    {Node::TypedVariable, "Dimension", Node::Dimension, fmi3, extent, none},
    {Node::TypedVariable, "Alias",     Node::Alias,     fmi3, named | alias, none},
    {Node::TypedVariable, "Start",     Node::Start,     fmi3, item, none},

    {Node::ModelStructure, "Outputs",         Node::UnknownList, fmi2, 0, none},
    {Node::ModelStructure, "Derivatives",     Node::UnknownList, fmi2, 0, none},
    {Node::ModelStructure, "InitialUnknowns", Node::UnknownList, fmi2, 0, none},
    {Node::UnknownList, "Unknown", Node::Unknown, fmi2, index | dependent, none},

    {Node::ModelStructure, "Output",                    Node::Unknown, fmi3, target | dependent, none},
    {Node::ModelStructure, "ContinuousStateDerivative", Node::Unknown, fmi3, target | dependent, none},
    {Node::ModelStructure, "ClockedState",              Node::Unknown, fmi3, target | dependent, none},
    {Node::ModelStructure, "InitialUnknown",            Node::Unknown, fmi3, target | dependent, none},
    {Node::ModelStructure, "EventIndicator",            Node::Unknown, fmi3, target | dependent, none}};

/// Elements of FMI 1 that later versions do not have at the same place.
constexpr std::pair<Node, std::string_view> elements1[] = {
    {Node::Root, "Implementation"},
    {Node::UnitDefinitions, "BaseUnit"},
    {Node::Unit, "DisplayUnitDefinition"},
    {Node::TypeDefinitions, "Type"},
    {Node::ScalarVariable, "DirectDependency"}};

struct AttributeRule {
    Set groups;
    std::string_view name;
    Attribute attribute;
};
constexpr AttributeRule readAttributes[] = {
    {root,              "fmiVersion", Attribute::FmiVersion},
    {root,              "modelName", Attribute::ModelName},
    {root,              "variableNamingConvention", Attribute::NamingConvention},
    {named | unit,      "name", Attribute::Name},
    {item,              "value", Attribute::Value},
    {range,             "min", Attribute::Min},
    {range,             "max", Attribute::Max},
    {real,              "nominal", Attribute::Nominal},
    {real,              "unit", Attribute::Unit},
    {real | alias,      "displayUnit", Attribute::DisplayUnit},
    {real,              "relativeQuantity", Attribute::RelativeQuantity},
    {root,              "guid", Attribute::Guid},
    {root,              "instantiationToken", Attribute::InstantiationToken},
    {derivative,        "derivative", Attribute::Derivative},
    {typed,             "previous", Attribute::Previous},
    {typed,             "clocks", Attribute::Clocks},
    {index,             "index", Attribute::Index},
    {dependent,         "dependencies", Attribute::Dependencies},
    {dependent,         "dependenciesKind", Attribute::DependenciesKind},
    {variable | extent | target, "valueReference", Attribute::ValueReference},
    {variable,          "causality", Attribute::Causality},
    {variable,          "variability", Attribute::Variability},
    {initial,           "initial", Attribute::Initial},
    {root | named,      "description", Attribute::Description},
    {quantity,          "quantity", Attribute::Quantity},
    {declared,          "declaredType", Attribute::DeclaredType},
    {start | extent,    "start", Attribute::Start},
    {powers,            "kg", Attribute::Kilogram},
    {powers,            "m", Attribute::Metre},
    {powers,            "s", Attribute::Second},
    {powers,            "A", Attribute::Ampere},
    {powers,            "K", Attribute::Kelvin},
    {powers,            "mol", Attribute::Mole},
    {powers,            "cd", Attribute::Candela},
    {powers,            "rad", Attribute::Radian},
    {scale,             "factor", Attribute::Factor},
    {scale,             "offset", Attribute::Offset},
    {inverse,           "inverse", Attribute::Inverse}};

struct UnreadAttributes {
    Set groups;
    std::initializer_list<std::string_view> names;
};
const UnreadAttributes unreadAttributes[] = {
    {root,         {"author", "version", "copyright", "license",
                    "generationTool", "generationDateAndTime", "numberOfEventIndicators"}},
    {real,         {"unbounded"}},
    {variable,     {"canHandleMultipleSetPerTimeInstant"}},
    {derivative,   {"reinit"}},
    {typed,        {"intermediateUpdate"}},
    {binary,       {"mimeType", "maxSize"}},
    {clock,        {"canBeDeactivated", "priority", "intervalVariability", "intervalDecimal",
                    "shiftDecimal", "supportsFraction", "resolution", "intervalCounter",
                    "shiftCounter"}}};
// clang-format on

/// Annotations are allowed below every element of FMI 3, and below the variables of FMI 2.
constexpr ElementRule annotation{Node::Document, "Annotations", Node::Skipped, both, 0, none};

const ElementRule* findRule(Node parent, std::string_view name, Set version) {
    const auto rule = std::ranges::find_if(elements, [&](const ElementRule& candidate) {
        return candidate.parent == parent && (candidate.versions & version) != 0 &&
               candidate.name == name;
    });
    return rule != std::end(elements) ? rule : nullptr;
}

} // namespace

const ElementRule* findElement(Node parent, std::string_view name, Set version) {
    const bool isAnnotated = version == fmi3 ? parent != Node::Document && parent != Node::Root
                                             : parent == Node::ScalarVariable;
    return isAnnotated && name == annotation.name ? &annotation : findRule(parent, name, version);
}

std::string_view findOtherVersion(Node parent, std::string_view name, Set version) {
    if (findRule(parent, name, both & ~version) != nullptr) {
        return version == fmi3 ? "FMI 2" : "FMI 3";
    }
    const bool isFirst =
        std::ranges::find(elements1, std::pair(parent, name)) != std::end(elements1);
    return isFirst ? "FMI 1" : "";
}

std::optional<Attribute> findAttribute(std::string_view name, Set groups) {
    static const auto rules = [] {
        std::unordered_map<std::string_view, AttributeRule> byName;
        for (const AttributeRule& rule : readAttributes) {
            byName.emplace(rule.name, rule);
        }
        for (const UnreadAttributes& unread : unreadAttributes) {
            for (const std::string_view unreadName : unread.names) {
                byName.emplace(unreadName,
                               AttributeRule{unread.groups, unreadName, Attribute::Known});
            }
        }
        return byName;
    }();
    const auto rule = rules.find(name);
    return rule != rules.end() && (rule->second.groups & groups) != 0
               ? std::optional(rule->second.attribute)
               : std::nullopt;
}

bool isForeign(std::string_view name) {
    return name == "xmlns" || name.find(':') != std::string_view::npos;
}

} // namespace tvtool::fmi
