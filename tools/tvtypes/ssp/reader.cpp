#include "ssp/reader.h"

#include "exchange/bounds.h"
#include "exchange/xml.h"
#include "ssp/definition_reader.h"
#include "ssp/grammar.h"
#include "ssp/namespaces.h"
#include "ssp/signal_reader.h"
#include "ssp/structure_reader.h"
#include "text/quote.h"

#include <boost/unordered/unordered_flat_set.hpp>
#include <fmt/format.h>

#include <optional>

namespace tvtool::ssp {

namespace {

using findings::Code;
using findings::SubjectKind;
using text::quoted;

/// What the file is read into.
struct Target {
    Package& package;
    File& file;
    SystemFile* system = nullptr; ///< null for the other kinds of files
    References* references = nullptr;
};

class Reader : public exchange::XmlHandler {
  public:
    Reader(const Target& target, Node root)
        : target_(target),
          root_(root),
          xml_{target.file},
          namespaces_(root == Node::Structure          ? Vocabulary::Structure
                      : root == Node::ParameterSet     ? Vocabulary::Values
                      : root == Node::ParameterMapping ? Vocabulary::Mapping
                                                       : Vocabulary::Dictionary,
                      target.file.findings) {}

    void startElement(std::string_view name, const char* const* attributes,
                      exchange::Position position) override {
        if (skipped_ > 0) {
            ++skipped_;
            return;
        }
        const Place place{name, position.line, position.column};
        const auto [vocabulary, local] = namespaces_.enter(name, attributes, place);
        const ElementRule* const rule = findRule(vocabulary, local, place);
        if (rule == nullptr || rule->node == Node::Skipped) {
            addNewAttributes(rule, attributes, place);
            namespaces_.leave();
            ++skipped_;
            return;
        }
        xml_.start(*rule, attributes, place);
        open_.push_back(rule->node);
        read(*rule);
    }

    void endElement() override {
        if (skipped_ > 0) {
            --skipped_;
            return;
        }
        namespaces_.leave();
        const Node node = open_.back();
        open_.pop_back();
        end(node);
    }

    ParameterSet* set = nullptr;
    ParameterMapping* mapping = nullptr;
    SignalDictionary* dictionary = nullptr;

  private:
    const ElementRule* findRule(Vocabulary vocabulary, std::string_view local, const Place& place) {
        const Node parent = open_.back();
        const ElementRule* const rule = findElement(parent, local);
        if (parent == Node::Document && (rule == nullptr || rule->node != root_)) {
            throw files::ReadError(
                fmt::format("the root element is {}, not {}", quoted(place.element), rootName()));
        }
        if (parent == Node::Document && vocabulary == Vocabulary::Foreign) {
            throw files::ReadError(
                fmt::format("the root element {} is of another namespace", quoted(place.element)));
        }
        if (parent == Node::InlineValues || parent == Node::BindingMapping ||
            parent == Node::DictionaryPlace || vocabulary != Vocabulary::Foreign) {
            if (rule == nullptr) {
                xml_.findings().addWithCause(Code::ElementUnexpected, place, {}, local,
                                             "element {} is not expected here and is skipped",
                                             quoted(place.element));
            } else if (rule->isNew) {
                xml_.addNewFeature(place, fmt::format("element {}", local));
            }
            return rule;
        }
        xml_.findings().addWithCause(Code::ElementForeign, place, {}, place.element,
                                     "element {} is of another namespace and is skipped",
                                     quoted(place.element));
        return nullptr;
    }

    /// Adds errors about the attributes of a skipped element that are new in version 2.0.
    void addNewAttributes(const ElementRule* rule, const char* const* attributes,
                          const Place& place) const {
        for (; rule != nullptr && *attributes != nullptr; attributes += 2) {
            if (isNewAttribute(*rule, *attributes)) {
                xml_.addNewFeature(place, fmt::format("attribute {}", *attributes));
            }
        }
    }

    const char* rootName() const {
        switch (root_) {
        case Node::Structure:
            return "SystemStructureDescription";
        case Node::ParameterSet:
            return "ParameterSet";
        case Node::ParameterMapping:
            return "ParameterMapping";
        default:
            return "SignalDictionary";
        }
    }

    void read(const ElementRule& rule) {
        switch (rule.node) {
        case Node::Structure:
            xml_.readVersion();
            target_.system->version = xml_.text("version");
            target_.system->name = xml_.required("name");
            scopes_.push_back(&target_.system->definitions);
            return;
        case Node::System:
        case Node::Component:
        case Node::DictionaryReference:
            return structure_.start(rule.node);
        case Node::Connector:
            return startConnector();
        case Node::Type:
        case Node::ParameterType:
        case Node::Dimension:
        case Node::Value:
            return readSignal(rule);
        case Node::Binding:
            return structure_.startBinding();
        case Node::BindingMapping:
            return structure_.startBindingMapping();
        case Node::Connection:
            transformation_ = &structure_.startConnection().transformation;
            return;
        case Node::MappingEntry:
            return startMappingEntry();
        case Node::Linear:
        case Node::Mapping:
            return readTransformation(xml_, rule, *transformation_);
        case Node::MapEntry:
            return readMapEntry(xml_, *transformation_);
        case Node::DictionaryPlace:
            return startDictionaryPlace();
        case Node::Dictionary:
            return startDictionary();
        case Node::Entry:
            return startEntry();
        case Node::ParameterSet:
            return startSet();
        case Node::Parameter:
            return startParameter();
        case Node::ParameterMapping:
            return startMapping();
        case Node::Enumeration:
        case Node::Item:
        case Node::Unit:
        case Node::BaseUnit:
            return definitions_.read(rule.node, *scopes_.back());
        default: // the others only contain elements
            return;
        }
    }

    void end(Node node) {
        switch (node) {
        case Node::System:
        case Node::Component:
        case Node::DictionaryReference:
            return structure_.end();
        case Node::Enumeration:
            return definitions_.endEnumeration();
        case Node::Unit:
            return definitions_.endUnit();
        case Node::Structure:
        case Node::ParameterSet:
        case Node::Dictionary:
            definitions_.checkUses(*scopes_.back());
            scopes_.pop_back();
            return;
        case Node::Parameter:
            if (signal_.type->base == BaseType::None) {
                const Parameter& parameter = set->parameters.back();
                xml_.findings().add(Code::ElementMissing, parameter.place,
                                    {SubjectKind::Parameter, parameter.name},
                                    "parameter {} has no type", quoted(parameter.name));
            }
            signal_ = {};
            return;
        case Node::Connector:
        case Node::Entry:
            signal_ = {};
            return;
        case Node::Binding:
            return structure_.endBinding();
        case Node::BindingMapping:
            return structure_.endBindingMapping();
        case Node::DictionaryPlace:
            return structure_.endDictionary(hasDictionary_);
        default:
            return;
        }
    }

    void startConnector() {
        Connector& connector = structure_.startConnector();
        signal_ = {&connector.type, &connector.dimensions, nullptr};
    }

    void startEntry() {
        SignalDictionary& owner = *dictionary;
        exchange::checkBound(++dictionaryEntries_, exchange::connectorBound);
        Connector& entry = owner.entries.emplace_back();
        entry.name = xml_.required("name");
        entry.place = xml_.place();
        xml_.subject = {SubjectKind::Connector, entry.name};
        signal_ = {&entry.type, &entry.dimensions, nullptr};
        if (!entry.name.empty() && !names_.emplace(&owner, entry.name).second) {
            xml_.add(Code::ConnectorRepeated, "the dictionary has a second entry {}",
                     quoted(entry.name));
        }
    }

    void startParameter() {
        exchange::checkBound(++parameters_, exchange::parameterBound);
        Parameter& parameter = set->parameters.emplace_back();
        parameter.name = xml_.required("name");
        parameter.place = xml_.place();
        xml_.subject = {SubjectKind::Parameter, parameter.name};
        signal_ = {&parameter.type, &parameter.dimensions, &parameter.values};
    }

    void readSignal(const ElementRule& rule) {
        if (signal_.type == nullptr) {
            return;
        }
        switch (rule.node) {
        case Node::Dimension:
            return readDimension(xml_, *signal_.dimensions, signal_.isConnector());
        case Node::Value:
            signal_.values->push_back(xml_.untrimmed("value"));
            return;
        default:
            break;
        }
        readType(xml_, rule, signal_);
        definitions_.use(signal_.type->unit, signal_.type->enumeration, *scopes_.back());
    }

    void startSet() {
        if (open_.size() == 2) {
            xml_.readVersion();
        }
        set = &target_.package.sets.emplace_back();
        set->file = &target_.file;
        set->name = xml_.required("name");
        scopes_.push_back(&set->definitions);
        if (Element* const owner = structure_.current()) {
            owner->bindings.back().set = set;
        }
    }

    void startMapping() {
        if (open_.size() == 2) {
            xml_.readVersion();
        }
        mapping = &target_.package.mappings.emplace_back();
        mapping->file = &target_.file;
        if (Element* const owner = structure_.current()) {
            owner->bindings.back().mapping = mapping;
        }
    }

    void startMappingEntry() {
        exchange::checkBound(++mappingEntries_, exchange::mappingBound);
        MappingEntry& entry = mapping->entries.emplace_back();
        entry.source = xml_.required("source");
        entry.target = xml_.required("target");
        entry.suppressesUnitConversion = xml_.boolean("suppressUnitConversion");
        entry.place = xml_.place();
        transformation_ = &entry.transformation;
    }

    void startDictionaryPlace() {
        dictionary = &target_.package.dictionaries.emplace_back();
        dictionary->file = &target_.file;
        hasDictionary_ = false;
        structure_.startDictionary(*dictionary);
    }

    void startDictionary() {
        if (open_.size() == 2) {
            xml_.readVersion();
            dictionary = &target_.package.dictionaries.emplace_back();
            dictionary->file = &target_.file;
        }
        hasDictionary_ = true;
        scopes_.push_back(&dictionary->definitions);
    }

    Target target_;
    Node root_;
    ElementText xml_;
    StructureReader structure_{xml_, target_.system, target_.references};
    Namespaces namespaces_;
    std::vector<Node> open_{Node::Document};
    std::uint64_t skipped_ = 0; ///< number of open elements that are skipped
    std::vector<Definitions*> scopes_;
    DefinitionReader definitions_{xml_};
    Signal signal_; ///< the open connector, entry or parameter
    Transformation* transformation_ = nullptr;
    bool hasDictionary_ = false; ///< whether a dictionary in a system has been read
    boost::unordered_flat_set<std::pair<const void*, std::string_view>> names_; ///< of entries
    std::size_t dictionaryEntries_ = 0;
    std::size_t parameters_ = 0;
    std::size_t mappingEntries_ = 0;
};

} // namespace

void readSystem(const exchange::Source& source, SystemFile& file, Package& package,
                References& references) {
    Reader reader({package, file.file, &file, &references}, Node::Structure);
    exchange::parseXml(source, reader);
    if (file.elements.empty()) {
        throw files::ReadError("there is no element System");
    }
}

const ParameterSet& readParameterSet(const exchange::Source& source, File& file, Package& package) {
    Reader reader({package, file}, Node::ParameterSet);
    exchange::parseXml(source, reader);
    return *reader.set;
}

const ParameterMapping& readMapping(const exchange::Source& source, File& file, Package& package) {
    Reader reader({package, file}, Node::ParameterMapping);
    exchange::parseXml(source, reader);
    return *reader.mapping;
}

const SignalDictionary& readDictionary(const exchange::Source& source, File& file,
                                       Package& package) {
    Reader reader({package, file}, Node::Dictionary);
    exchange::parseXml(source, reader);
    return *reader.dictionary;
}

} // namespace tvtool::ssp
