#include "fmi/model_structure.h"

#include "exchange/values.h"
#include "fmi/attribute_checks.h"
#include "text/quote.h"

#include <algorithm>
#include <iterator>

namespace tvtool::fmi {

namespace {

using findings::Code;
using findings::SubjectKind;
using text::quoted;

// Properties of variables. The first ones are the references that a variable has.
constexpr std::uint8_t hasDerivative = 1;
constexpr std::uint8_t hasPrevious = 2;
constexpr std::uint8_t firstListed = 4;

/// The lists of both versions. What has the same index is the same list.
struct List {
    std::string_view name2;
    std::string_view name3;
    std::uint8_t property; ///< that its variables have
    const char* needed;
};
constexpr List lists[] = {
    {"Outputs", "Output", 0, "no output"},
    {"Derivatives", "ContinuousStateDerivative", hasDerivative,
     "no derivative: it has no attribute derivative"},
    {"InitialUnknowns", "InitialUnknown", 0, ""},
    {"", "ClockedState", hasPrevious, "no clocked state: it has no attribute previous"},
    {"", "EventIndicator", 0, ""}};
constexpr std::size_t outputs = 0;
constexpr std::size_t initialUnknowns = 2;

std::size_t listIndex(std::string_view name) {
    const auto* const found = std::ranges::find_if(
        lists, [&](const List& list) { return list.name2 == name || list.name3 == name; });
    return static_cast<std::size_t>(found - std::begin(lists));
}

std::uint8_t listedIn(std::size_t list) { return static_cast<std::uint8_t>(firstListed << list); }

bool isKind(std::string_view word, bool isInitial) {
    return word == "dependent" || word == "constant" ||
           (!isInitial && (word == "fixed" || word == "tunable" || word == "discrete"));
}

} // namespace

void ModelStructureReader::endVariables() {
    const Description& description = element_.description;
    variables_.emplace(description);
    properties_.assign(description.variables.size(), 0);
    for (const Reference& reference : description.references) {
        properties_[reference.variable] |= reference.kind == ReferenceKind::Derivative
                                               ? hasDerivative
                                           : reference.kind == ReferenceKind::Previous ? hasPrevious
                                                                                       : 0;
    }
}

void ModelStructureReader::readUnknown(std::string_view name) {
    const bool isIndex = element_.description.majorVersion == 2;
    list_ = isIndex ? list_ : name;
    element_.subject = {};
    const Attribute attribute = isIndex ? Attribute::Index : Attribute::ValueReference;
    const std::string_view attributeName = isIndex ? "index" : "valueReference";
    if (element_[attribute] == nullptr) {
        element_.addMissing(attributeName);
    }
    const auto target = readUnsigned(element_, attribute, attributeName);
    if (target && variables_) {
        if (!variables_->exists(*target)) {
            element_.addForAttribute(Code::ReferenceUndefined, list_,
                                     "{} lists {}, which no variable has", list_,
                                     variables_->text(*target));
        } else if (const std::uint32_t index = variables_->find(*target); index != noIndex) {
            checkKind(index);
        }
    }
    checkDependencies();
}

void ModelStructureReader::checkKind(std::uint32_t index) {
    const Variable& variable = element_.description.variables[index];
    element_.subject = {SubjectKind::Variable, variable.name};
    const std::size_t list = listIndex(list_);
    std::uint8_t& properties = properties_[index];
    if ((properties & listedIn(list)) != 0) {
        element_.addForAttribute(Code::StructureRepeated, list_, "{} lists variable {} again",
                                 list_, quoted(variable.name));
    }
    properties |= listedIn(list);
    const bool isKind =
        list == outputs
            ? variable.causality == Causality::Output || variable.causality == Causality::Invalid
            : (properties & lists[list].property) == lists[list].property;
    if (!isKind) {
        element_.addForAttribute(Code::StructureKind, list_, "{} lists variable {}, which is {}",
                                 list_, quoted(variable.name), lists[list].needed);
    }
}

void ModelStructureReader::checkDependencies() {
    const char* const dependencies = element_[Attribute::Dependencies];
    std::size_t count = 0;
    std::string_view rest = dependencies == nullptr ? "" : dependencies;
    for (std::string_view word = exchange::takeWord(rest); !word.empty();
         word = exchange::takeWord(rest), ++count) {
        const auto target = exchange::parseNumber<std::uint32_t>(word);
        if (!target) {
            element_.addForAttribute(Code::ValueInvalid, "dependencies",
                                     "dependencies {} is no unsigned 32-bit number", quoted(word));
        } else if (variables_ && !variables_->exists(*target)) {
            element_.addForAttribute(Code::ReferenceUndefined, "dependencies",
                                     "dependencies has {}, which no variable has",
                                     variables_->text(*target));
        }
    }
    if (element_[Attribute::DependenciesKind] == nullptr) {
        return;
    }
    // The schema of FMI 2 permits all kinds in each list.
    const bool isInitial =
        listIndex(list_) == initialUnknowns && element_.description.majorVersion == 3;
    std::size_t kinds = 0;
    rest = element_[Attribute::DependenciesKind];
    for (std::string_view word = exchange::takeWord(rest); !word.empty();
         word = exchange::takeWord(rest), ++kinds) {
        if (!isKind(word, isInitial)) {
            element_.addForAttribute(Code::ValueInvalid, "dependenciesKind",
                                     "dependenciesKind {} is not one of its values", quoted(word));
        }
    }
    if (dependencies == nullptr) {
        element_.add(Code::DependenciesKind, "dependenciesKind has no dependencies");
    } else if (kinds != count) {
        element_.add(Code::DependenciesKind, "dependenciesKind has {} values and dependencies {}",
                     kinds, count);
    }
}

void ModelStructureReader::endStructure() {
    const Description& description = element_.description;
    for (std::size_t i = 0; i < properties_.size(); ++i) {
        const Variable& variable = description.variables[i];
        if (variable.causality == Causality::Output && (properties_[i] & listedIn(outputs)) == 0) {
            element_.findings.add(
                Code::OutputUnlisted, variable.place, {SubjectKind::Variable, variable.name},
                "output {} is not listed in the ModelStructure", quoted(variable.name));
        }
    }
}

} // namespace tvtool::fmi
