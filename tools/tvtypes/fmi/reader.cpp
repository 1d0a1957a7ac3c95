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

using text::quoted;

constexpr std::uint32_t maxInt32 = std::numeric_limits<std::int32_t>::max();
constexpr const char* unexpectedElement = "the element is not expected here and is skipped";

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
    Reader(Description& description, Remarks& remarks)
        : description_(description), element_{description, remarks} {}

    void startElement(std::string_view name, const char* const* attributes,
                      std::uint64_t line) override {
        const ElementRule* const rule = skipped_ > 0 ? nullptr : findRule(name, attributes, line);
        if (rule == nullptr) {
            ++skipped_;
            return;
        }
        element_.place = {rule->name, line};
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
        } else if (node == Node::ScalarVariable && variable().base == BaseType::None) {
            element_.remarks.problem(variable().place, "variable {} has no type",
                                     quoted(variable().name));
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
                                std::uint64_t line) const {
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
            element_.remarks.note({name, line}, "{}", unexpectedElement);
            return nullptr;
        }
        return rule->node == Node::Skipped ? nullptr : rule;
    }

    void readAttributes(const ElementRule& rule, const char* const* attributes) {
        element_.attributes.fill(nullptr);
        for (; *attributes != nullptr; attributes += 2) {
            const std::string_view name = attributes[0];
            const std::optional<Attribute> known = findAttribute(name, rule.attributeGroups);
            if (known && *known != Attribute::Known) {
                element_.attributes[static_cast<std::size_t>(*known)] = attributes[1];
            } else if (!known && !isForeign(name)) {
                element_.note("attribute {} is not expected here and is ignored", quoted(name));
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
            element_.problem("modelName is missing");
        }
        description_.hasStructuredNames = has(Attribute::NamingConvention, "structured");
        const char* const convention = get(Attribute::NamingConvention);
        if (convention != nullptr && !description_.hasStructuredNames &&
            !has(Attribute::NamingConvention, "flat")) {
            element_.problem("variableNamingConvention {} is neither flat nor structured, and is "
                             "read as flat",
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
                element_.problem("{} {} is no {} value", attributeName, quoted(word),
                                 baseTypeName(base, description_.majorVersion));
                return 0;
            }
        }
        // In FMI 3, an array has a start value for each element.
        const bool isList = attribute == Attribute::Start && description_.majorVersion == 3;
        if (count != 1 && !isList) {
            element_.problem("{} has {} values; it takes one", attributeName, count);
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
        type_ = {element_.requiredName(), BaseType::None, {}, noIndex, element_.place};
        if (base != BaseType::None) {
            readTypeBase(base);
        }
    }

    void readTypeBase(BaseType base) {
        if (type_.base != BaseType::None) {
            element_.problem("type {} has a second base type", quoted(type_.name));
            return;
        }
        type_.base = base;
        type_.unitUse = units_.readUse();
        checkAllValues(base);
    }

    void readItem() {
        if (type_.base != BaseType::Enumeration) {
            element_.note("{}", unexpectedElement);
            return;
        }
        Item item{element_.requiredName(), std::nullopt, element_.place};
        const std::size_t position = type_.items.size() + 1;
        if (const char* const value = get(Attribute::Value)) {
            item.value = parse<std::int32_t>(Attribute::Value);
            if (!item.value) {
                element_.problem("value {} is no 32-bit integer", quoted(value));
            }
        } else if (position <= maxInt32) {
            element_.note("value is missing; items without one are numbered from 1");
            item.value = static_cast<std::int32_t>(position);
        }
        type_.items.push_back(item);
    }

    void endType() {
        Remarks& remarks = element_.remarks;
        if (type_.base == BaseType::None) {
            remarks.problem(type_.place, "type {} has no base type", quoted(type_.name));
        } else if (type_.base == BaseType::Enumeration && type_.items.empty()) {
            remarks.problem(type_.place, "enumeration {} has no items", quoted(type_.name));
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
            element_.problem("valueReference {} is no unsigned 32-bit number", quoted(text));
        }
        return number;
    }

    void startVariable(BaseType base) {
        Variable& variable = description_.variables.emplace_back();
        variable.name = element_.requiredName();
        variable.place = element_.place;
        const std::optional<std::uint32_t> number = parseValueReference();
        variable.hasValueReference = number.has_value();
        variable.valueReference = number.value_or(0);
        if (get(Attribute::ValueReference) == nullptr) {
            element_.problem("valueReference is missing");
        } else if (number > maxInt32) {
            element_.note("valueReference is above 2147483647 and is read as unsigned");
        }
        if (base != BaseType::None) {
            readVariableBase(base);
        }
    }

    void readVariableBase(BaseType base) {
        if (variable().base != BaseType::None) {
            element_.problem("variable {} has a second type", quoted(variable().name));
            return;
        }
        variable().base = base;
        if (const char* const declaredType = get(Attribute::DeclaredType)) {
            variable().declaredType = description_.texts.intern(declaredType);
        }
        variable().unitUse = units_.readUse();
        variable().startCount = checkAllValues(base);
        readSize(variable());
    }

    /// The start value of a structural parameter or a constant can be the size of a dimension.
    void readSize(Variable& variable) {
        variable.isSize = variable.base == BaseType::UInt64 && variable.hasValueReference &&
                          (has(Attribute::Causality, "structuralParameter") ||
                           has(Attribute::Variability, "constant"));
        const auto size = parse<std::uint64_t>(Attribute::Start);
        if (variable.isSize && size) {
            description_.sizes.emplace(variable.valueReference, *size);
        }
    }

    void readDimension() {
        const char* const start = get(Attribute::Start);
        const char* const reference = get(Attribute::ValueReference);
        if ((start == nullptr) == (reference == nullptr)) {
            element_.problem("a dimension has either start or valueReference");
        }
        const auto size = parse<std::uint64_t>(Attribute::Start);
        if (start != nullptr && !size) {
            element_.problem("start {} is no UInt64 value", quoted(start));
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
            ++variable().startCount;
        }
    }

    void readAlias() {
        if (const std::string_view name = element_.requiredName(); !name.empty()) {
            description_.aliases.push_back({name, element_.place});
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

std::unique_ptr<Description> readDescription(const Source& source, Remarks& remarks) {
    auto description = std::make_unique<Description>();
    Reader reader(*description, remarks);
    parseXml(source, reader);
    return description;
}

} // namespace tvtool::fmi
