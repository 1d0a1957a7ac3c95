#include "ssp/structure_reader.h"

#include "exchange/bounds.h"
#include "ssp/signal_reader.h"
#include "text/quote.h"

#include <algorithm>

namespace tvtool::ssp {

using findings::Code;
using findings::SubjectKind;
using text::quoted;

void StructureReader::start(Node node) {
    exchange::checkBound(system_->elements.size() + 1, exchange::systemElementBound);
    exchange::checkBound(open_.size() + 1, exchange::systemLevelBound);
    Element& element = system_->elements.emplace_back();
    element.kind = node == Node::System      ? ElementKind::System
                   : node == Node::Component ? ElementKind::Component
                                             : ElementKind::DictionaryReference;
    element.file = system_;
    // The root system need not be named by others.
    element.name = open_.empty() ? element_.text("name") : element_.required("name");
    element.place = element_.place();
    element_.subject = {SubjectKind::Element, element.name};
    if (Element* const parent = current()) {
        if (!names_.emplace(parent, element.name).second) {
            element_.add(Code::ElementNameRepeated, "a second element has the name {}",
                         quoted(element.name));
        }
        parent->elements.push_back(&element);
    }
    open_.push_back(&element);
    if (node == Node::System && element_.has("id")) {
        references_->systems.emplace(element_.text("id"), &element);
    }
    if (node == Node::Component) {
        readComponent(element);
    } else if (node == Node::DictionaryReference) {
        element.dictionaryName = element_.required("dictionary");
    }
}

void StructureReader::readComponent(Element& component) {
    component.type = element_.text("type");
    component.implementation = element_.text("implementation");
    if (component.type.starts_with("text/x-modelica")) {
        element_.addNewFeature(component.place, "type text/x-modelica");
    }
    constexpr std::string_view implementations[] = {"", "any", "CoSimulation", "ModelExchange",
                                                    "ScheduledExecution"};
    if (std::ranges::count(implementations, component.implementation) == 0) {
        element_.addInvalid("implementation", component.implementation, "implementation");
        component.implementation = {};
    }
    if (component.implementation == "ScheduledExecution") {
        element_.addNewFeature(component.place, "implementation ScheduledExecution");
    }
    if (element_.has("source")) {
        component.source = element_.text("source");
        if (component.source->starts_with('#')) {
            element_.addNewFeature(component.place, "a source in the same file");
        }
        references_->sources.push_back({ReferenceKind::Component, &component, 0, nullptr,
                                        *component.source, component.type, false, component.place});
    }
}

Connector& StructureReader::startConnector() {
    Element& owner = *current();
    exchange::checkBound(++connectors_, exchange::connectorBound);
    Connector& connector = owner.connectors.emplace_back();
    readConnector(element_, connector);
    if (!connector.name.empty() && !names_.emplace(&owner.connectors, connector.name).second) {
        element_.add(Code::ConnectorRepeated, "{} has a second connector {}", quoted(owner.name),
                     quoted(connector.name));
    }
    return connector;
}

Connection& StructureReader::startConnection() {
    exchange::checkBound(++connections_, exchange::connectionBound);
    Connection& connection = current()->connections.emplace_back();
    readConnection(element_, connection);
    return connection;
}

void StructureReader::startBinding() {
    ParameterBinding& binding = current()->bindings.emplace_back();
    binding.prefix = element_.text("prefix");
    binding.place = element_.place();
    binding_ = startContent("application/x-ssp-parameter-set", ReferenceKind::Set);
}

void StructureReader::endBinding() {
    checkContent(binding_, current()->bindings.back().set != nullptr,
                 "the binding has neither a source nor a parameter set");
}

void StructureReader::startBindingMapping() {
    current()->bindings.back().hasMapping = true;
    mapping_ = startContent("application/x-ssp-parameter-mapping", ReferenceKind::Mapping);
}

void StructureReader::endBindingMapping() {
    checkContent(mapping_, current()->bindings.back().mapping != nullptr,
                 "the mapping of the binding has neither a source nor entries");
}

void StructureReader::startDictionary(SignalDictionary& dictionary) {
    dictionary.name = element_.required("name");
    dictionary.place = element_.place();
    current()->dictionaries.push_back(&dictionary);
    dictionary_ =
        startContent("application/x-ssp-signal-dictionary", ReferenceKind::Dictionary, &dictionary);
}

void StructureReader::endDictionary(bool hasContent) {
    checkContent(dictionary_, hasContent, "the dictionary has neither a source nor content");
}

StructureReader::Content StructureReader::startContent(std::string_view standardType,
                                                       ReferenceKind kind,
                                                       SignalDictionary* dictionary) {
    const std::string_view type = element_.text("type");
    if (!element_.has("source")) {
        return {element_.place(), type.empty() || type == standardType};
    }
    const std::string_view base = element_.text("sourceBase");
    if (!base.empty() && base != "SSD" && base != "component") {
        element_.addForAttribute(Code::ValueInvalid, "sourceBase",
                                 "sourceBase {} is neither SSD nor component", quoted(base));
    }
    Element& owner = *current();
    const std::size_t binding = owner.bindings.empty() ? 0 : owner.bindings.size() - 1;
    references_->sources.push_back({kind, &owner, binding, dictionary, element_.text("source"),
                                    type, base == "component", element_.place()});
    return {};
}

void StructureReader::checkContent(const Content& content, bool hasContent,
                                   const char* sentence) const {
    if (content.isRequired && !hasContent) {
        element_.findings().add(Code::ElementMissing, content.place, {}, "{}", sentence);
    }
}

} // namespace tvtool::ssp
