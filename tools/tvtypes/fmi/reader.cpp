#include "fmi/reader.h"

#include "fmi/attributes.h"
#include "fmi/grammar.h"
#include "fmi/unit_reader.h"
#include "fmi/values.h"
#include "fmi/xml.h"
#include "text/quote.h"

#include <fmt/format.h>

#include <limits>
#include <optional>
#include <string>

namespace tvtool::fmi {

namespace {

class Reader : public XmlHandler {
  public:
    Reader(Description& description, Remarks& remarks)
        : description_(description), remarks_(remarks), units_(description, remarks) {}

    void startElement(std::string_view name, const char* const* attributes,
                      std::uint64_t line) override;
    void endElement() override;

  private:
    const char* get(Attribute attribute) const { return attributes_[attribute]; }
    void readAttributes(const ElementRule& rule, const char* const* attributes);
    std::string_view requiredName() {
        return tvtool::fmi::requiredName(attributes_, place_, description_, remarks_);
    }
    std::uint64_t checkValues(Attribute attribute, std::string_view attributeName, BaseType base);
    std::uint64_t checkAllValues(BaseType base);

    void enter(const ElementRule& rule);
    void readRoot();
    void startType(BaseType base);
    void readSimpleTypeBase(BaseType base);
    void readItem();
    void startVariable(BaseType base);
    void readVariableBase(BaseType base);
    void noteSize(Variable& variable);
    void readDimension();
    void readStart();
    void readAlias();
    void endSimpleType();
    void endType();
    void endScalarVariable();

    Description& description_;
    Remarks& remarks_;
    Set version_ = fmi2 | fmi3;
    std::vector<Node> open_{Node::Document};
    std::uint64_t skipped_ = 0; ///< open elements at and below one that is skipped
    Place place_;               ///< of the element at hand
    Attributes attributes_;
    TypeDefinition type_; ///< the one that is open
    UnitReader units_;
};

/// Whether an element declares a default namespace, and so leaves that of the description.
bool leavesNamespace(const char* const* attributes) {
    for (; *attributes != nullptr; attributes += 2) {
        if (std::string_view(attributes[0]) == "xmlns" && *attributes[1] != '\0') {
            return true;
        }
    }
    return false;
}

void Reader::startElement(std::string_view name, const char* const* attributes,
                          std::uint64_t line) {
    const Node parent = open_.back();
    if (skipped_ > 0) {
        ++skipped_;
        return;
    }
    const ElementRule* const rule = findElement(parent, name, version_);
    if (parent == Node::Document && rule == nullptr) {
        throw files::ReadError(
            fmt::format("the root element is {}, not fmiModelDescription", text::quoted(name)));
    }
    if (parent != Node::Document && (isForeign(name) || leavesNamespace(attributes))) {
        ++skipped_;
        return;
    }
    if (rule == nullptr) {
        remarks_.note({name, line}, "the element is not expected here and is skipped");
        ++skipped_;
        return;
    }
    if (rule->node == Node::Skipped) {
        ++skipped_;
        return;
    }
    place_ = {rule->name, line};
    readAttributes(*rule, attributes);
    open_.push_back(rule->node);
    enter(*rule);
}

void Reader::endElement() {
    if (skipped_ > 0) {
        --skipped_;
        return;
    }
    const Node node = open_.back();
    open_.pop_back();
    if (node == Node::Unit) {
        units_.endUnit();
    } else if (node == Node::SimpleType) {
        endSimpleType();
    } else if (node == Node::NamedType) {
        endType();
    } else if (node == Node::ScalarVariable) {
        endScalarVariable();
    }
}

void Reader::readAttributes(const ElementRule& rule, const char* const* attributes) {
    attributes_.clear();
    for (; *attributes != nullptr; attributes += 2) {
        const std::string_view name = attributes[0];
        const AttributeRule* const known = findAttribute(name, rule.attributeGroups);
        if (known == nullptr) {
            if (!isForeign(name)) {
                remarks_.note(place_, fmt::format("attribute {} is not expected here and is "
                                                  "ignored",
                                                  text::quoted(name)));
            }
        } else if (known->attribute != Attribute::Known) {
            attributes_.set(known->attribute, attributes[1]);
        }
    }
}

void Reader::enter(const ElementRule& rule) {
    switch (rule.node) {
    case Node::Root:
        return readRoot();
    case Node::SimpleType:
    case Node::NamedType:
        return startType(rule.base);
    case Node::SimpleTypeBase:
        return readSimpleTypeBase(rule.base);
    case Node::Item:
        return readItem();
    case Node::ScalarVariable:
    case Node::TypedVariable:
        return startVariable(rule.base);
    case Node::ScalarVariableBase:
        return readVariableBase(rule.base);
    case Node::Dimension:
        return readDimension();
    case Node::Start:
        return readStart();
    case Node::Alias:
        return readAlias();
    case Node::Unit:
        return units_.startUnit(attributes_, place_);
    case Node::BaseUnit:
        return units_.readBaseUnit(attributes_, place_);
    case Node::DisplayUnit:
        return units_.readDisplayUnit(attributes_, place_);
    case Node::Document:
    case Node::UnitDefinitions:
    case Node::TypeDefinitions:
    case Node::ModelVariables:
    case Node::Skipped:
        return;
    }
}

void Reader::readRoot() {
    const char* const version = get(Attribute::FmiVersion);
    if (version == nullptr) {
        throw files::ReadError("fmiModelDescription has no fmiVersion");
    }
    const std::string_view text = version;
    const bool isNumbered = text.size() >= 3 && text[1] == '.' && text[2] >= '0' && text[2] <= '9';
    if (!isNumbered || (text[0] != '2' && text[0] != '3')) {
        throw files::ReadError(
            fmt::format("the FMI version is {}; 2.0 and 3.0 can be read", text::quoted(text)));
    }
    description_.majorVersion = text[0] - '0';
    version_ = text[0] == '2' ? fmi2 : fmi3;
    description_.fmiVersion = description_.texts.keep(text);
    if (const char* const modelName = get(Attribute::ModelName)) {
        description_.modelName = description_.texts.keep(modelName);
    } else {
        remarks_.problem(place_, "modelName is missing");
    }
    if (const char* const convention = get(Attribute::NamingConvention)) {
        description_.hasStructuredNames = std::string_view(convention) == "structured";
        if (!description_.hasStructuredNames && std::string_view(convention) != "flat") {
            remarks_.problem(place_, fmt::format("variableNamingConvention {} is neither flat nor "
                                                 "structured, and is read as flat",
                                                 text::quoted(convention)));
        }
    }
}

/// How many values there are; 0 if one of them is none.
std::uint64_t Reader::checkValues(Attribute attribute, std::string_view attributeName,
                                  BaseType base) {
    const char* const values = get(attribute);
    if (values == nullptr || base == BaseType::String || base == BaseType::Binary) {
        return 0;
    }
    std::string_view rest = values;
    std::uint64_t count = 0;
    for (std::string_view word = takeWord(rest); !word.empty(); word = takeWord(rest)) {
        ++count;
        if (!isValue(word, base)) {
            remarks_.problem(place_,
                             fmt::format("{} {} is no {} value", attributeName, text::quoted(word),
                                         nameOf(base, description_.majorVersion)));
            return 0;
        }
    }
    // An array of FMI 3 starts with a value an element.
    const bool isList = attribute == Attribute::Start && description_.majorVersion == 3;
    if (count != 1 && !isList) {
        remarks_.problem(place_,
                         fmt::format("{} has {} values; it takes one", attributeName, count));
    }
    return count;
}

/// How many start values there are.
std::uint64_t Reader::checkAllValues(BaseType base) {
    const std::uint64_t count = checkValues(Attribute::Start, "start", base);
    checkValues(Attribute::Min, "min", base);
    checkValues(Attribute::Max, "max", base);
    checkValues(Attribute::Nominal, "nominal", base);
    return count;
}

void Reader::startType(BaseType base) {
    type_ = {requiredName(), base, {}, units_.readUse(attributes_), place_};
    checkAllValues(base);
}

void Reader::readSimpleTypeBase(BaseType base) {
    if (type_.base != BaseType::None) {
        remarks_.problem(place_,
                         fmt::format("type {} has a second base type", text::quoted(type_.name)));
        return;
    }
    type_.base = base;
    type_.unitUse = units_.readUse(attributes_);
    checkAllValues(base);
}

void Reader::readItem() {
    const std::size_t position = type_.items.size() + 1;
    if (type_.base != BaseType::Enumeration) {
        remarks_.note(place_, "the element is not expected here and is skipped");
        return;
    }
    Item item{requiredName(), std::nullopt, place_};
    if (const char* const value = get(Attribute::Value)) {
        item.value = parseInt32(value);
        if (!item.value) {
            remarks_.problem(place_,
                             fmt::format("value {} is no 32-bit integer", text::quoted(value)));
        }
    } else if (position <= std::numeric_limits<std::int32_t>::max()) {
        remarks_.note(place_, "value is missing; items without one are numbered from 1");
        item.value = static_cast<std::int32_t>(position);
    }
    type_.items.push_back(item);
}

void Reader::endSimpleType() {
    if (type_.base == BaseType::None) {
        remarks_.problem(type_.place,
                         fmt::format("type {} has no base type", text::quoted(type_.name)));
    }
    endType();
}

void Reader::endType() {
    if (type_.base == BaseType::Enumeration && type_.items.empty()) {
        remarks_.problem(type_.place,
                         fmt::format("enumeration {} has no items", text::quoted(type_.name)));
    }
    if (!type_.name.empty() && type_.base != BaseType::None) {
        description_.types.push_back(std::move(type_));
    }
    type_ = {};
}

void Reader::startVariable(BaseType base) {
    Variable variable;
    variable.name = requiredName();
    variable.place = place_;
    if (const char* const text = get(Attribute::ValueReference)) {
        const std::optional<std::uint32_t> number = parseUInt32(text);
        variable.hasValueReference = number.has_value();
        variable.valueReference = number.value_or(0);
        if (!number) {
            remarks_.problem(place_, fmt::format("valueReference {} is no unsigned 32-bit number",
                                                 text::quoted(text)));
        } else if (*number > static_cast<std::uint32_t>(std::numeric_limits<std::int32_t>::max())) {
            remarks_.note(place_, "valueReference is above 2147483647 and is read as unsigned");
        }
    } else {
        remarks_.problem(place_, "valueReference is missing");
    }
    description_.variables.push_back(variable);
    if (base != BaseType::None) {
        readVariableBase(base);
    }
}

void Reader::readVariableBase(BaseType base) {
    Variable& variable = description_.variables.back();
    if (variable.base != BaseType::None) {
        remarks_.problem(place_,
                         fmt::format("variable {} has a second type", text::quoted(variable.name)));
        return;
    }
    variable.base = base;
    if (const char* const declaredType = get(Attribute::DeclaredType)) {
        variable.declaredType = description_.texts.intern(declaredType);
    }
    variable.unitUse = units_.readUse(attributes_);
    variable.startCount = checkAllValues(base);
    noteSize(variable);
}

/// Other variables may have as many elements as a structural parameter or a constant says.
void Reader::noteSize(Variable& variable) {
    const auto is = [this](Attribute attribute, std::string_view value) {
        const char* const text = get(attribute);
        return text != nullptr && text == value;
    };
    variable.isSize =
        variable.base == BaseType::UInt64 && variable.hasValueReference &&
        (is(Attribute::Causality, "structuralParameter") || is(Attribute::Variability, "constant"));
    const char* const start = get(Attribute::Start);
    const std::optional<std::uint64_t> size = start == nullptr ? std::nullopt : parseUInt64(start);
    if (variable.isSize && size) {
        description_.sizes.emplace(variable.valueReference, *size);
    }
}

void Reader::endScalarVariable() {
    const Variable& variable = description_.variables.back();
    if (variable.base == BaseType::None) {
        remarks_.problem(variable.place,
                         fmt::format("variable {} has no type", text::quoted(variable.name)));
    }
}

void Reader::readDimension() {
    const char* const start = get(Attribute::Start);
    const char* const reference = get(Attribute::ValueReference);
    const std::optional<std::uint64_t> size = start == nullptr ? std::nullopt : parseUInt64(start);
    const std::optional<std::uint32_t> target =
        reference == nullptr ? std::nullopt : parseUInt32(reference);
    if ((start == nullptr) == (reference == nullptr)) {
        remarks_.problem(place_, "a dimension has either start or valueReference");
    }
    if (start != nullptr && !size) {
        remarks_.problem(place_, fmt::format("start {} is no UInt64 value", text::quoted(start)));
    }
    if (reference != nullptr && !target) {
        remarks_.problem(place_, fmt::format("valueReference {} is no unsigned 32-bit number",
                                             text::quoted(reference)));
    }
    Variable& variable = description_.variables.back();
    if (size.has_value() == target.has_value()) {
        variable.hasBadDimension = true;
        return;
    }
    if (variable.dimensionCount++ == 0) {
        variable.firstDimension = static_cast<std::uint32_t>(description_.dimensions.size());
    }
    description_.dimensions.push_back(size ? Dimension{*size, false} : Dimension{*target, true});
}

/// Texts and bytes start with an element a value.
void Reader::readStart() {
    Variable& variable = description_.variables.back();
    if (variable.base == BaseType::String || variable.base == BaseType::Binary) {
        ++variable.startCount;
    }
}

void Reader::readAlias() {
    const std::string_view name = requiredName();
    if (!name.empty()) {
        description_.aliases.push_back({name, place_});
    }
}

} // namespace

std::unique_ptr<Description> readDescription(Source& source, Remarks& remarks) {
    auto description = std::make_unique<Description>();
    Reader reader(*description, remarks);
    parseXml(source, reader);
    return description;
}

} // namespace tvtool::fmi
