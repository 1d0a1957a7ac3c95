#include "fmi/version1_reader.h"

#include "exchange/bounds.h"
#include "exchange/values.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace tvtool::fmi {

namespace {

constexpr std::string_view rootName = "fmiModelDescription";

/// Elements whose content is read, each with the element that it has to be in.
constexpr std::pair<std::string_view, std::string_view> readElements[] = {
    {rootName, "TypeDefinitions"},
    {"TypeDefinitions", "Type"},
    {"Type", "EnumerationType"},
    {rootName, "ModelVariables"},
    {"ModelVariables", "ScalarVariable"}};

std::string_view attribute(const char* const* attributes, std::string_view name) {
    for (; *attributes != nullptr; attributes += 2) {
        if (name == attributes[0]) {
            return exchange::trimmed(attributes[1]);
        }
    }
    return {};
}

bool isTrue(std::string_view text) { return text == "true" || text == "1"; }

/// Returns the base type of Real, Integer, ..., also of RealType, IntegerType, ...
BaseType baseOf(std::string_view name) {
    constexpr std::pair<std::string_view, BaseType> bases[] = {
        {"Real", BaseType::Float64},
        {"Integer", BaseType::Int32},
        {"Boolean", BaseType::Boolean},
        {"String", BaseType::String},
        {"Enumeration", BaseType::Enumeration}};
    name.remove_suffix(name.ends_with("Type") ? 4 : 0);
    for (const auto& [baseName, base] : bases) {
        if (name == baseName) {
            return base;
        }
    }
    return BaseType::None;
}

Variability variabilityIn(std::string_view text) {
    return text == "constant"    ? Variability::Constant
           : text == "parameter" ? Variability::Fixed
           : text == "discrete"  ? Variability::Discrete
                                 : Variability::Continuous;
}

Causality causalityIn(std::string_view text, bool isParameter) {
    if (text == "output") {
        return Causality::Output;
    }
    return isParameter       ? Causality::Parameter
           : text == "input" ? Causality::Input
                             : Causality::Local;
}

} // namespace

void Version1Reader::startElement(std::string_view name, const char* const* attributes,
                                  exchange::Position position) {
    const std::string_view parent = open_.empty() ? rootName : open_.back();
    const auto* const known = std::ranges::find(
        readElements, std::pair<std::string_view, std::string_view>(parent, name));
    open_.push_back(known == std::end(readElements) ? std::string_view() : known->second);
    if (parent == rootName && name == "Implementation") {
        description_.interfaces.emplace_back("CoSimulation");
    } else if (parent == "TypeDefinitions" && name == "Type") {
        TypeDefinition& type = description_.types.emplace_back();
        exchange::checkBound(description_.types.size(), exchange::typeBound);
        type.name = description_.texts.keep(attribute(attributes, "name"));
        type.place = {"Type", position.line, position.column};
        typeUnits_.push_back(exchange::noIndex);
    } else if (parent == "Type") {
        readType(name, attributes);
    } else if (parent == "EnumerationType" && name == "Item") {
        std::vector<exchange::Item>& items = description_.types.back().items;
        items.push_back({description_.texts.keep(attribute(attributes, "name")),
                         static_cast<std::int64_t>(items.size() + 1),
                         {"Item", position.line, position.column}});
        exchange::checkBound(items.size(), exchange::itemBound);
    } else if (parent == "ModelVariables" && name == "ScalarVariable") {
        startVariable(attributes, position);
    } else if (parent == "ScalarVariable") {
        readBase(name, attributes);
    }
}

void Version1Reader::endElement() {
    if (open_.empty()) {
        if (description_.interfaces.empty()) {
            description_.interfaces.emplace_back("ModelExchange");
        }
        return resolveTypes();
    }
    open_.pop_back();
}

void Version1Reader::startVariable(const char* const* attributes, exchange::Position position) {
    Variable& variable = description_.variables.emplace_back();
    exchange::checkBound(++description_.variableElements, exchange::variableBound);
    variable.position = description_.variableElements;
    variable.name = description_.texts.keep(attribute(attributes, "name"));
    variable.place = {"ScalarVariable", position.line, position.column};
    const std::string_view variability = attribute(attributes, "variability");
    variable.variability = variabilityIn(variability);
    variable.causality =
        causalityIn(attribute(attributes, "causality"), variability == "parameter");
}

void Version1Reader::readType(std::string_view name, const char* const* attributes) {
    TypeDefinition& type = description_.types.back();
    type.base = baseOf(name);
    type.min = description_.texts.intern(attribute(attributes, "min"));
    type.max = description_.texts.intern(attribute(attributes, "max"));
    type.isRelative = isTrue(attribute(attributes, "relativeQuantity"));
    typeUnits_.back() = unitIndex(attribute(attributes, "unit"));
}

void Version1Reader::readBase(std::string_view name, const char* const* attributes) {
    const BaseType base = baseOf(name);
    if (base == BaseType::None) {
        return;
    }
    Variable& variable = description_.variables.back();
    variable.base = base;
    variable.start = description_.texts.keep(attribute(attributes, "start"));
    for (const char* const* i = attributes; *i != nullptr; i += 2) {
        variable.hasStart = variable.hasStart || std::string_view(*i) == "start";
    }
    variable.isRelative = isTrue(attribute(attributes, "relativeQuantity"));
    variable.min = description_.texts.intern(attribute(attributes, "min"));
    variable.max = description_.texts.intern(attribute(attributes, "max"));
    variable.unit = unitIndex(attribute(attributes, "unit"));
    const std::string_view declared = attribute(attributes, "declaredType");
    if (!declared.empty()) {
        variable.declaredType = description_.texts.intern(declared);
    }
}

std::uint32_t Version1Reader::unitIndex(std::string_view name) {
    if (name.empty()) {
        return exchange::noIndex;
    }
    if (const auto known = units_.find(name); known != units_.end()) {
        return known->second;
    }
    const auto index = static_cast<std::uint32_t>(description_.units.size());
    exchange::UnitDefinition& unit = description_.units.emplace_back();
    exchange::checkBound(description_.units.size(), exchange::unitBound);
    unit.name = description_.texts.keep(name);
    unit.isDefined = false;
    units_.emplace(unit.name, index);
    return index;
}

void Version1Reader::resolveTypes() {
    std::unordered_map<std::string_view, std::uint32_t> types;
    for (std::uint32_t i = 0; i < description_.types.size(); ++i) {
        types.emplace(description_.types[i].name, i);
    }
    for (Variable& variable : description_.variables) {
        const auto type = types.find(variable.declaredType.value_or(""));
        if (variable.declaredType && type != types.end()) {
            variable.type = type->second;
            variable.unit =
                variable.unit == exchange::noIndex ? typeUnits_[type->second] : variable.unit;
        }
    }
}

} // namespace tvtool::fmi
