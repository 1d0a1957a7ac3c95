#include "fmi/reader.h"

#include "fmi/element.h"
#include "fmi/grammar.h"
#include "fmi/unit_reader.h"
#include "fmi/values.h"
#include "fmi/xml.h"
#include "text/quote.h"

#include <limits>
#include <optional>
#include <vector>

namespace tvtool::fmi {

namespace {

using findings::Code;
using findings::Findings;
using findings::SubjectKind;
using text::quoted;

constexpr std::uint32_t maxInt32 = std::numeric_limits<std::int32_t>::max();

/// The root element and its children; those below them have subjects.
constexpr std::size_t depthOfSections = 2;

/// Returns whether an element declares a default namespace other than that of the description.
bool leavesNamespace(const char* const* attributes) {
    for (; *attributes != nullptr; attributes += 2) {
        if (std::string_view(attributes[0]) == "xmlns" && *attributes[1] != '\0') {
            return true;
        }
    }
    return false;
}

class Reader : public XmlHandler {
  public:
    Reader(Description& description, Findings& findings)
        : description_(description), element_{description, findings} {}

    void startElement(std::string_view name, const char* const* attributes,
                      Position position) override {
        const ElementRule* const rule =
            skipped_ > 0 ? nullptr : findRule(name, attributes, position);
        if (rule == nullptr) {
            ++skipped_;
            return;
        }
        element_.place = {rule->name, position.line, position.column};
        if (open_.size() <= depthOfSections) {
            element_.subject = {};
        }
        readAttributes(*rule, attributes);
        open_.push_back(rule->node);
        read(*rule);
    }

    void endElement() override {
        if (skipped_ > 0) {
            --skipped_;
            return;
        }
        const Node node = open_.back();
        open_.pop_back();
        if (node == Node::Unit) {
            units_.endUnit();
        } else if (node == Node::SimpleType || node == Node::NamedType) {
            endType();
        } else if (node == Node::ScalarVariable || node == Node::TypedVariable) {
            endVariable();
        }
    }

  private:
    const char* get(Attribute attribute) const { return element_[attribute]; }
    bool has(Attribute attribute, std::string_view value) const {
        return get(attribute) != nullptr && get(attribute) == value;
    }
    template <class Number>
    std::optional<Number> parse(Attribute attribute) const {
        const char* const text = get(attribute);
        return text == nullptr ? std::nullopt : parseNumber<Number>(text);
    }
    Variable& variable() { return description_.variables.back(); }

    /// Returns the rule of an element that is read, or null for an element to skip.
    const ElementRule* findRule(std::string_view name, const char* const* attributes,
                                Position position) const {
        const bool isRoot = open_.back() == Node::Document;
        const ElementRule* const rule = findElement(open_.back(), name, version_);
        if (isRoot && rule == nullptr) {
            throw files::ReadError(
                fmt::format("the root element is {}, not fmiModelDescription", quoted(name)));
        }
        if (!isRoot && (isForeign(name) || leavesNamespace(attributes))) {
            return nullptr;
        }
        if (rule == nullptr) {
            addUnexpected({name, position.line, position.column});
            return nullptr;
        }
        return rule->node == Node::Skipped ? nullptr : rule;
    }

    void addUnexpected(const Place& place) const {
        element_.findings.addWithCause(Code::ElementUnexpected, place, {}, place.element,
                                       "element {} is not expected here and is skipped",
                                       quoted(place.element));
    }

    void readAttributes(const ElementRule& rule, const char* const* attributes) {
        element_.attributes.fill(nullptr);
        for (; *attributes != nullptr; attributes += 2) {
            const std::string_view name = attributes[0];
            const std::optional<Attribute> known = findAttribute(name, rule.attributeGroups);
            if (known && *known != Attribute::Known) {
                element_.attributes[static_cast<std::size_t>(*known)] = attributes[1];
            } else if (!known && !isForeign(name)) {
                element_.findings.addWithCause(Code::AttributeUnexpected, element_.place, {}, name,
                                               "attribute {} is not expected here and is ignored",
                                               quoted(name));
            }
        }
    }

    void read(const ElementRule& rule) {
        switch (rule.node) {
        case Node::Root:
            return readRoot();
        case Node::SimpleType:
        case Node::NamedType:
            return startType(rule.base);
        case Node::SimpleTypeBase:
            return readTypeBase(rule.base);
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
            return units_.startUnit();
        case Node::BaseUnit:
            return units_.readBaseUnit();
        case Node::DisplayUnit:
            return units_.readDisplayUnit();
        default: // the others have no attributes
            return;
        }
    }

    void readRoot() {
        if (get(Attribute::FmiVersion) == nullptr) {
            throw files::ReadError("fmiModelDescription has no fmiVersion");
        }
        const std::string_view version = get(Attribute::FmiVersion);
        const bool isNumbered =
            version.size() >= 3 && version[1] == '.' && version[2] >= '0' && version[2] <= '9';
        if (!isNumbered || (version[0] != '2' && version[0] != '3')) {
            throw files::ReadError(
                fmt::format("the FMI version is {}; 2.0 and 3.0 can be read", quoted(version)));
        }
        description_.majorVersion = version[0] - '0';
        version_ = version[0] == '2' ? fmi2 : fmi3;
        description_.fmiVersion = description_.texts.keep(version);
        if (const char* const modelName = get(Attribute::ModelName)) {
            description_.modelName = description_.texts.keep(modelName);
        } else {
            element_.addMissing("modelName");
        }
        description_.hasStructuredNames = has(Attribute::NamingConvention, "structured");
        const char* const convention = get(Attribute::NamingConvention);
        if (convention != nullptr && !description_.hasStructuredNames &&
            !has(Attribute::NamingConvention, "flat")) {
            element_.addForAttribute(Code::ValueInvalid, "variableNamingConvention",
                                     "variableNamingConvention {} is neither flat nor structured, "
                                     "and is read as flat",
                                     quoted(convention));
        }
    }

    /// Returns the number of values of an attribute; 0 if one of them is invalid.
    std::uint64_t checkValues(Attribute attribute, std::string_view attributeName, BaseType base) {
        const char* const values = get(attribute);
        if (values == nullptr || base == BaseType::String || base == BaseType::Binary) {
            return 0;
        }
        std::string_view rest = values;
        std::uint64_t count = 0;
        for (std::string_view word = takeWord(rest); !word.empty(); word = takeWord(rest)) {
            ++count;
            if (!isValue(word, base)) {
                element_.addForAttribute(Code::ValueInvalid, attributeName, "{} {} is no {} value",
                                         attributeName, quoted(word),
                                         baseTypeName(base, description_.majorVersion));
                return 0;
            }
        }
        // In FMI 3, an array has a start value for each element.
        const bool isStart = attribute == Attribute::Start;
        if (count != 1 && !(isStart && description_.majorVersion == 3)) {
            element_.addForAttribute(isStart ? Code::StartCount : Code::ValueInvalid, attributeName,
                                     "{} has {} values; it takes one", attributeName, count);
        }
        return count;
    }

    /// Returns the number of start values; 0 if one of them is invalid.
    std::uint64_t checkAllValues(BaseType base) {
        const std::uint64_t count = checkValues(Attribute::Start, "start", base);
        checkValues(Attribute::Min, "min", base);
        checkValues(Attribute::Max, "max", base);
        checkValues(Attribute::Nominal, "nominal", base);
        return count;
    }

    void startType(BaseType base) {
        type_ = {};
        type_.name = element_.requiredName();
        type_.place = element_.place;
        type_.description = element_.text(Attribute::Description);
        element_.subject = {SubjectKind::Type, type_.name};
        if (base != BaseType::None) {
            readTypeBase(base);
        }
    }

    void readTypeBase(BaseType base) {
        if (type_.base != BaseType::None) {
            element_.add(Code::BaseTypeRepeated, "type {} has a second base type",
                         quoted(type_.name));
            return;
        }
        type_.base = base;
        type_.unitUse = units_.readUse();
        type_.quantity = element_.text(Attribute::Quantity);
        checkAllValues(base);
        readRange(type_);
    }

    void readItem() {
        if (type_.base != BaseType::Enumeration) {
            addUnexpected(element_.place);
            return;
        }
        Item item{element_.requiredName(), std::nullopt, element_.place};
        const std::size_t position = type_.items.size() + 1;
        if (const char* const value = get(Attribute::Value)) {
            item.value = parse<std::int32_t>(Attribute::Value);
            if (!item.value) {
                element_.addForAttribute(Code::ValueInvalid, "value",
                                         "value {} is no 32-bit integer", quoted(value));
            }
        } else if (position <= maxInt32) {
            element_.add(Code::ItemValueMissing,
                         "value is missing; items without one are numbered from 1");
            item.value = static_cast<std::int32_t>(position);
        }
        type_.items.push_back(item);
    }

    void endType() {
        Findings& findings = element_.findings;
        const findings::Subject subject{SubjectKind::Type, type_.name};
        if (type_.base == BaseType::None) {
            findings.add(Code::BaseTypeMissing, type_.place, subject, "type {} has no base type",
                         quoted(type_.name));
        } else if (type_.base == BaseType::Enumeration && type_.items.empty()) {
            findings.add(Code::EnumerationEmpty, type_.place, subject,
                         "enumeration {} has no items", quoted(type_.name));
        }
        if (!type_.name.empty() && type_.base != BaseType::None) {
            description_.types.push_back(std::move(type_));
        }
        type_ = {};
    }

    /// Returns the value reference; empty if it is missing or, with a problem, if it is invalid.
    std::optional<std::uint32_t> parseValueReference() const {
        const char* const text = get(Attribute::ValueReference);
        const auto number = parse<std::uint32_t>(Attribute::ValueReference);
        if (text != nullptr && !number) {
            element_.addForAttribute(Code::ValueInvalid, "valueReference",
                                     "valueReference {} is no unsigned 32-bit number",
                                     quoted(text));
        }
        return number;
    }

    void startVariable(BaseType base) {
        Variable& variable = description_.variables.emplace_back();
        variable.name = element_.requiredName();
        variable.place = element_.place;
        element_.subject = {SubjectKind::Variable, variable.name};
        variable.description = element_.text(Attribute::Description);
        variable.causality = listed(Attribute::Causality, "causality", causalityName,
                                    Causality::StructuralParameter);
        variable.variability =
            listed(Attribute::Variability, "variability", variabilityName, Variability::Continuous);
        variable.initial = listed(Attribute::Initial, "initial", initialName, Initial::Calculated);
        const std::optional<std::uint32_t> number = parseValueReference();
        variable.hasValueReference = number.has_value();
        variable.valueReference = number.value_or(0);
        if (get(Attribute::ValueReference) == nullptr) {
            element_.addMissing("valueReference");
        }
        if (base != BaseType::None) {
            readVariableBase(base);
        }
    }

    void endVariable() {
        if (variable().base == BaseType::None) {
            element_.findings.add(Code::BaseTypeMissing, variable().place,
                                  {SubjectKind::Variable, variable().name},
                                  "variable {} has no type", quoted(variable().name));
        }
        if (!variable().name.empty()) {
            return;
        }
        const auto index = static_cast<std::uint32_t>(description_.variables.size() - 1);
        while (!description_.aliases.empty() && description_.aliases.back().variable == index) {
            description_.aliases.pop_back();
        }
        if (variable().hasValueReference) {
            description_.unnamedReferences.insert(variable().valueReference);
        }
        description_.variables.pop_back();
    }

    void readVariableBase(BaseType base) {
        if (variable().base != BaseType::None) {
            element_.add(Code::BaseTypeRepeated, "variable {} has a second type",
                         quoted(variable().name));
            return;
        }
        variable().base = base;
        if (const char* const declaredType = get(Attribute::DeclaredType)) {
            variable().declaredType = description_.texts.intern(declaredType);
        }
        variable().unitUse = units_.readUse();
        variable().startCount = checkAllValues(base);
        variable().hasStart = get(Attribute::Start) != nullptr;
        variable().start = element_.text(Attribute::Start);
        readRange(variable());
        readSize(variable());
    }

    template <class Record>
    void readRange(Record& record) const {
        record.min = element_.text(Attribute::Min);
        record.max = element_.text(Attribute::Max);
        record.nominal = element_.text(Attribute::Nominal);
    }

    /// Returns the value of an attribute with listed values, up to `last`.
    template <class Value>
    Value listed(Attribute attribute, std::string_view attributeName,
                 std::string_view (*valueName)(Value), Value last) const {
        if (get(attribute) == nullptr) {
            return Value::None;
        }
        const std::string_view text = trimmed(get(attribute));
        for (auto value = static_cast<std::uint8_t>(Value::Invalid) + 1;
             value <= static_cast<std::uint8_t>(last); ++value) {
            if (text == valueName(static_cast<Value>(value))) {
                return static_cast<Value>(value);
            }
        }
        element_.addForAttribute(Code::ValueInvalid, attributeName,
                                 "{} {} is not one of its values", attributeName, quoted(text));
        return Value::Invalid;
    }

    /// The start value of a structural parameter or a constant can be the size of a dimension.
    void readSize(Variable& variable) {
        variable.isSize = variable.base == BaseType::UInt64 && variable.hasValueReference &&
                          (variable.causality == Causality::StructuralParameter ||
                           variable.variability == Variability::Constant);
        const auto size = parse<std::uint64_t>(Attribute::Start);
        if (variable.isSize && size) {
            description_.sizes.emplace(variable.valueReference, *size);
        }
    }

    void readDimension() {
        const char* const start = get(Attribute::Start);
        const char* const reference = get(Attribute::ValueReference);
        if ((start == nullptr) == (reference == nullptr)) {
            element_.add(Code::DimensionInvalid, "a dimension has either start or valueReference");
        }
        const auto size = parse<std::uint64_t>(Attribute::Start);
        if (start != nullptr && !size) {
            element_.addForAttribute(Code::ValueInvalid, "start", "start {} is no UInt64 value",
                                     quoted(start));
        }
        const auto target = parseValueReference();
        if (size.has_value() == target.has_value()) {
            variable().hasBadDimension = true;
            return;
        }
        if (variable().dimensionCount++ == 0) {
            variable().firstDimension = static_cast<std::uint32_t>(description_.dimensions.size());
        }
        description_.dimensions.push_back(size ? Dimension{*size, false}
                                               : Dimension{*target, true});
    }

    /// Texts and bytes have an element for each start value.
    void readStart() {
        if (variable().base == BaseType::String || variable().base == BaseType::Binary) {
            if (variable().startCount++ == 0) {
                variable().hasStart = true;
                variable().start = element_.text(Attribute::Value);
            }
        }
    }

    void readAlias() {
        if (const std::string_view name = element_.requiredName(); !name.empty()) {
            description_.aliases.push_back(
                {name, element_.text(Attribute::DisplayUnit), element_.text(Attribute::Description),
                 static_cast<std::uint32_t>(description_.variables.size() - 1), element_.place});
        }
    }

    Description& description_;
    Set version_ = fmi2 | fmi3;
    std::vector<Node> open_{Node::Document};
    std::uint64_t skipped_ = 0; ///< number of open elements that are skipped
    Element element_;
    TypeDefinition type_; ///< the open one
    UnitReader units_{element_};
};

} // namespace

std::unique_ptr<Description> readDescription(const Source& source, Findings& findings) {
    auto description = std::make_unique<Description>();
    Reader reader(*description, findings);
    parseXml(source, reader);
    return description;
}

} // namespace tvtool::fmi
