#include "ssp/signal_reader.h"

#include "exchange/base_unit.h"
#include "exchange/values.h"

#include <array>
#include <optional>

namespace tvtool::ssp {

namespace {

using exchange::BaseType;
using findings::Code;
using findings::SubjectKind;

/// In the order of Kind.
constexpr std::array<std::string_view, 11> kindNames{"",
                                                     "",
                                                     "input",
                                                     "output",
                                                     "inout",
                                                     "parameter",
                                                     "calculatedParameter",
                                                     "structuralParameter",
                                                     "constant",
                                                     "local",
                                                     "unspecified"};

bool isNew(Kind kind) {
    return kind == Kind::StructuralParameter || kind == Kind::Constant || kind == Kind::Local ||
           kind == Kind::Unspecified;
}

std::optional<std::vector<std::uint64_t>> readIndices(const ElementText& element,
                                                      std::string_view name) {
    if (!element.has(name)) {
        return std::nullopt;
    }
    std::vector<std::uint64_t> indices;
    std::string_view rest = element.text(name);
    for (std::string_view word = exchange::takeWord(rest); !word.empty();
         word = exchange::takeWord(rest)) {
        const auto index = exchange::parseNumber<std::uint64_t>(word);
        if (!index) {
            element.addInvalid(name, word, "list of indices");
            return std::nullopt;
        }
        indices.push_back(*index);
    }
    return indices;
}

EndReference readEnd(const ElementText& element, std::string_view elementName,
                     std::string_view connectorName, std::string_view indicesName) {
    EndReference end;
    if (element.has(elementName)) {
        end.element = element.required(elementName);
    }
    end.connector = element.required(connectorName);
    end.indices = readIndices(element, indicesName);
    return end;
}

} // namespace

std::string_view kindName(Kind kind) { return kindNames[static_cast<std::size_t>(kind)]; }

void readConnector(ElementText& element, Connector& connector) {
    connector.name = element.required("name");
    connector.place = element.place();
    element.subject = {SubjectKind::Connector, connector.name};
    if (!element.has("kind")) {
        return element.addForAttribute(Code::AttributeMissing, "kind", "kind is missing");
    }
    const std::string_view text = element.text("kind");
    connector.kind = Kind::Invalid;
    for (std::size_t i = static_cast<std::size_t>(Kind::Input); i < kindNames.size(); ++i) {
        connector.kind = text == kindNames[i] ? static_cast<Kind>(i) : connector.kind;
    }
    if (connector.kind == Kind::Invalid) {
        element.addInvalid("kind", text, "kind of connectors");
    } else if (isNew(connector.kind)) {
        element.addNewFeature(connector.place, fmt::format("kind {}", text));
    }
}

void readType(ElementText& element, const ElementRule& rule, const Signal& signal) {
    Type& type = *signal.type;
    // An element Clock with a name is a reference to a clock of the component.
    if (rule.base == BaseType::Clock && element.has("name")) {
        return;
    }
    if (type.base != BaseType::None) {
        return element.add(Code::BaseTypeRepeated, "there is a second type");
    }
    type.base = rule.base;
    type.element = rule.name;
    type.place = element.place();
    type.unit = element.text("unit");
    type.mimeType = element.text("mime-type");
    type.intervalVariability = element.text("intervalVariability");
    if (rule.base == BaseType::Enumeration) {
        type.enumeration = element.text("name");
        if (type.enumeration.empty() && signal.isConnector()) {
            element.addForAttribute(Code::AttributeMissing, "name", "name is missing");
        }
    }
    if (signal.values == nullptr || !element.has("value")) {
        return;
    }
    if (rule.base == BaseType::String || rule.base == BaseType::Binary) {
        signal.values->push_back(element.untrimmed("value"));
        return;
    }
    std::string_view rest = element.text("value");
    if (rule.base == BaseType::Enumeration) {
        signal.values->push_back(rest);
        return;
    }
    for (std::string_view word = exchange::takeWord(rest); !word.empty();
         word = exchange::takeWord(rest)) {
        signal.values->push_back(word);
    }
}

void readDimension(ElementText& element, std::vector<Dimension>& dimensions, bool isConnector) {
    Dimension& dimension = dimensions.emplace_back();
    dimension.place = element.place();
    dimension.sizeConnector = element.text("sizeConnector");
    if (element.has("size")) {
        const std::string_view text = element.text("size");
        dimension.size = exchange::parseNumber<std::uint64_t>(text);
        if (!dimension.size) {
            element.addInvalid("size", text, "unsigned integer");
        }
    }
    if (element.has("size") && element.has("sizeConnector")) {
        element.add(Code::DimensionAttributes, "a dimension has both size and sizeConnector");
        dimension.sizeConnector = {};
    } else if (!isConnector && !element.has("size")) {
        element.add(Code::DimensionAttributes, "the dimension of a parameter has no size");
    }
}

void readConnection(ElementText& element, Connection& connection) {
    connection.place = element.place();
    element.subject = {SubjectKind::Connection, {}};
    connection.start = readEnd(element, "startElement", "startConnector", "startIndices");
    connection.end = readEnd(element, "endElement", "endConnector", "endIndices");
    connection.suppressesUnitConversion = element.boolean("suppressUnitConversion");
}

void readTransformation(ElementText& element, const ElementRule& rule,
                        Transformation& transformation) {
    if (transformation.kind != TransformationKind::None) {
        return element.add(Code::ElementRepeated, "there is a second transformation");
    }
    transformation.kind = rule.transformation;
    transformation.place = element.place();
    const auto number = [&](std::string_view name, double absent) {
        return exchange::readFinite(
                   name, element.attribute(name), absent,
                   [&](std::string_view attribute, const char* text, const char* kind) {
                       element.addInvalid(attribute, text, kind);
                   })
            .value_or(absent);
    };
    if (rule.transformation == TransformationKind::Linear) {
        transformation.factor = number("factor", 1);
        transformation.offset = number("offset", 0);
    }
}

void readMapEntry(ElementText& element, Transformation& transformation) {
    MapEntry& entry = transformation.entries.emplace_back();
    entry.source = element.text("source");
    entry.target = element.text("target");
    entry.place = element.place();
    for (const char* const name : {"source", "target"}) {
        if (!element.has(name)) {
            element.addForAttribute(Code::AttributeMissing, name, "{} is missing", name);
        }
    }
}

} // namespace tvtool::ssp
