#include "fmi/reader.h"

#include "exchange/xml.h"
#include "fmi/element.h"
#include "fmi/grammar.h"
#include "fmi/model_structure.h"
#include "fmi/type_reader.h"
#include "fmi/unit_reader.h"
#include "fmi/variable_reader.h"
#include "fmi/version1_reader.h"
#include "text/quote.h"

#include <algorithm>
#include <optional>
#include <vector>

namespace tvtool::fmi {

namespace {

using findings::Code;
using findings::Findings;
using text::quoted;

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

class Reader : public exchange::XmlHandler {
  public:
    Reader(Description& description, Findings& findings, Versions versions)
        : description_(description), versions_(versions), element_{description, findings} {}

    void startElement(std::string_view name, const char* const* attributes,
                      exchange::Position position) override {
        if (version1_) {
            return version1_->startElement(name, attributes, position);
        }
        const ElementRule* const rule =
            skipped_ > 0 ? nullptr : findRule(name, attributes, position);
        if (rule == nullptr) {
            ++skipped_;
            return;
        }
        element_.place = {rule->name, position.line, position.column};
        if (rule->node == Node::Root) {
            root_ = element_.place;
        }
        if (open_.size() <= depthOfSections) {
            element_.subject = {};
        }
        readAttributes(*rule, attributes);
        open_.push_back(rule->node);
        read(*rule);
    }

    void endElement() override {
        if (version1_) {
            return version1_->endElement();
        }
        if (skipped_ > 0) {
            --skipped_;
            return;
        }
        const Node node = open_.back();
        open_.pop_back();
        switch (node) {
        case Node::Root:
            return checkRequired();
        case Node::Unit:
            return units_.endUnit();
        case Node::SimpleType:
        case Node::NamedType:
            return types_.endType();
        case Node::ScalarVariable:
        case Node::TypedVariable:
            return variables_.endVariable();
        case Node::ModelVariables:
            return structure_.endVariables();
        case Node::ModelStructure:
            return structure_.endStructure();
        default:
            return;
        }
    }

  private:
    const char* get(Attribute attribute) const { return element_[attribute]; }
    bool has(Attribute attribute, std::string_view value) const {
        return get(attribute) != nullptr && get(attribute) == value;
    }
    /// Returns the rule of an element that is read, or null for an element to skip.
    const ElementRule* findRule(std::string_view name, const char* const* attributes,
                                exchange::Position position) {
        const Node parent = open_.back();
        const bool isRoot = parent == Node::Document;
        const ElementRule* const rule = findElement(parent, name, version_);
        const Place place{name, position.line, position.column};
        if (isRoot && rule == nullptr) {
            throw files::ReadError(
                fmt::format("the root element is {}, not fmiModelDescription", quoted(name)));
        }
        if (!isRoot && (isForeign(name) || leavesNamespace(attributes))) {
            element_.findings.addWithCause(Code::ElementForeign, place, {}, name,
                                           "element {} is of another namespace and is skipped",
                                           quoted(name));
            return nullptr;
        }
        if (rule == nullptr) {
            addUnexpected(place, findOtherVersion(parent, name, version_));
            return nullptr;
        }
        if (parent == Node::Root) {
            checkOrder(*rule, place);
        }
        return rule->node == Node::Skipped ? nullptr : rule;
    }

    void addUnexpected(const Place& place, std::string_view otherVersion) const {
        if (!otherVersion.empty()) {
            element_.findings.addWithCause(
                Code::ElementVersion, place, {}, place.element,
                "element {} is of {}, and the description of FMI {}; it is skipped",
                quoted(place.element), otherVersion, description_.fmiVersion);
        } else {
            element_.findings.addWithCause(Code::ElementUnexpected, place, {}, place.element,
                                           "element {} is not expected here and is skipped",
                                           quoted(place.element));
        }
    }

    void addUnexpectedAttribute(std::string_view name) const {
        element_.findings.addWithCause(Code::AttributeUnexpected, element_.place, {}, name,
                                       "attribute {} is not expected here and is ignored",
                                       quoted(name));
    }

    /// Checks that the children of the root occur once and in their order.
    void checkOrder(const ElementRule& rule, const Place& place) {
        if (std::ranges::find(sections_, &rule) != sections_.end()) {
            element_.findings.add(Code::ElementRepeated, place, {}, "element {} occurs again",
                                  quoted(rule.name));
            return;
        }
        if (!sections_.empty() && sections_.back()->rank > rule.rank) {
            element_.findings.add(Code::ElementOrder, place, {}, "element {} belongs before {}",
                                  quoted(rule.name), quoted(sections_.back()->name));
        }
        sections_.push_back(&rule);
        if (rule.rank == interfaceRank) {
            description_.interfaces.push_back(rule.name);
        }
    }

    /// Checks that the root has the children that the standard requires.
    void checkRequired() const {
        const auto check = [&](int rank, std::string_view name, std::string_view sentence) {
            if (std::ranges::find(sections_, rank, &ElementRule::rank) == sections_.end()) {
                element_.findings.addWithCause(Code::ElementMissing, root_, {}, name, "{}",
                                               sentence);
            }
        };
        check(interfaceRank, "an interface",
              "the description has no element of an interface, "
              "such as CoSimulation");
        check(variablesRank, "ModelVariables", "element ModelVariables is missing");
        check(structureRank, "ModelStructure", "element ModelStructure is missing");
    }

    void readAttributes(const ElementRule& rule, const char* const* attributes) {
        element_.attributes.fill(nullptr);
        for (; *attributes != nullptr; attributes += 2) {
            const std::string_view name = attributes[0];
            const std::optional<Attribute> known = findAttribute(name, rule.attributeGroups);
            if (known && *known != Attribute::Known) {
                element_.attributes[static_cast<std::size_t>(*known)] = attributes[1];
            } else if (!known && !isForeign(name)) {
                addUnexpectedAttribute(name);
            }
        }
    }

    void read(const ElementRule& rule) {
        switch (rule.node) {
        case Node::Root:
            return readRoot();
        case Node::SimpleType:
        case Node::NamedType:
            return types_.startType(rule.base);
        case Node::SimpleTypeBase:
            return types_.readBase(rule.base);
        case Node::Item:
            return types_.hasItems() ? types_.readItem() : addUnexpected(element_.place, "");
        case Node::ScalarVariable:
        case Node::TypedVariable:
            return variables_.startVariable(rule.base);
        case Node::ScalarVariableBase:
            return variables_.readBase(rule.base);
        case Node::Dimension:
            return variables_.readDimension();
        case Node::Start:
            return variables_.readStart();
        case Node::Alias:
            return variables_.readAlias();
        case Node::UnknownList:
            return structure_.startList(rule.name);
        case Node::Unknown:
            return structure_.readUnknown(rule.name);
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
        if (versions_ == Versions::All && version.starts_with("1.")) {
            return startVersion1(version);
        }
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
        if (description_.majorVersion == 2) {
            checkToken(Attribute::Guid, Attribute::InstantiationToken, "guid",
                       "instantiationToken");
        } else {
            checkToken(Attribute::InstantiationToken, Attribute::Guid, "instantiationToken",
                       "guid");
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

    void startVersion1(std::string_view version) {
        description_.majorVersion = 1;
        description_.fmiVersion = description_.texts.keep(version);
        description_.modelName = description_.texts.keep(
            get(Attribute::ModelName) == nullptr ? "" : get(Attribute::ModelName));
        // The attributes of the root have been compared with those of later versions.
        element_.findings.retain([](Code code) { return code != Code::AttributeUnexpected; });
        version1_.emplace(description_);
    }

    /// Checks the attribute that identifies the model, which has a name for each version.
    void checkToken(Attribute required, Attribute other, std::string_view requiredName,
                    std::string_view otherName) const {
        if (get(required) == nullptr) {
            element_.addMissing(requiredName);
        }
        if (get(other) != nullptr) {
            addUnexpectedAttribute(otherName);
        }
    }

    Description& description_;
    Versions versions_;
    std::optional<Version1Reader> version1_;
    Set version_ = fmi2 | fmi3;
    std::vector<Node> open_{Node::Document};
    std::uint64_t skipped_ = 0; ///< number of open elements that are skipped
    Element element_;
    UnitReader units_{element_};
    TypeReader types_{element_, units_};
    VariableReader variables_{element_, units_};
    ModelStructureReader structure_{element_};
    Place root_;
    std::vector<const ElementRule*> sections_; ///< the children of the root so far
};

} // namespace

std::unique_ptr<Description> readDescription(const exchange::Source& source, Findings& findings,
                                             Versions versions) {
    auto description = std::make_unique<Description>();
    Reader reader(*description, findings, versions);
    exchange::parseXml(source, reader);
    return description;
}

} // namespace tvtool::fmi
