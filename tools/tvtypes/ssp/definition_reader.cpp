#include "ssp/definition_reader.h"

#include "exchange/base_unit.h"
#include "exchange/bounds.h"
#include "text/quote.h"

#include <cstdint>
#include <limits>
#include <unordered_set>
#include <utility>

namespace tvtool::ssp {

namespace {

using findings::Code;
using findings::SubjectKind;
using text::quoted;

} // namespace

void DefinitionReader::read(Node node, Definitions& scope) {
    scope_ = &scope;
    switch (node) {
    case Node::Enumeration:
        enumeration_ = {element_.required("name"), {}, element_.place()};
        return;
    case Node::Item:
        return readItem();
    case Node::Unit:
        unit_ = {};
        unit_.name = element_.required("name");
        unit_.place = element_.place();
        hasBaseUnit_ = false;
        return;
    default:
        return readBaseUnit();
    }
}

void DefinitionReader::readItem() {
    element_.subject = {SubjectKind::Type, enumeration_.name};
    exchange::Item item{element_.required("name"), std::nullopt, element_.place()};
    const std::string_view value = element_.text("value");
    item.value = exchange::parseNumber<std::int64_t>(value);
    if (!element_.has("value")) {
        element_.addForAttribute(Code::AttributeMissing, "value", "value is missing");
    } else if (!item.value) {
        element_.addInvalid("value", value, "64-bit integer");
    } else if (*item.value < std::numeric_limits<std::int32_t>::min() ||
               *item.value > std::numeric_limits<std::int32_t>::max()) {
        element_.addNewFeature(element_.place(), "an item beyond 32 bits");
    }
    enumeration_.items.push_back(item);
    exchange::checkBound(++items_, exchange::itemBound);
}

void DefinitionReader::endEnumeration() {
    std::unordered_set<std::string_view> names;
    std::unordered_set<std::int64_t> values;
    const findings::Subject subject{SubjectKind::Type, enumeration_.name};
    for (const exchange::Item& item : enumeration_.items) {
        if (!item.name.empty() && !names.insert(item.name).second) {
            element_.findings().add(Code::ItemRepeated, item.place, subject,
                                    "enumeration {} has a second item {}",
                                    quoted(enumeration_.name), quoted(item.name));
        }
        if (item.value && !values.insert(*item.value).second) {
            element_.findings().add(Code::ItemValueRepeated, item.place, subject,
                                    "enumeration {} has a second item with the value {}",
                                    quoted(enumeration_.name), *item.value);
        }
    }
    if (enumeration_.items.empty()) {
        element_.findings().add(Code::EnumerationEmpty, enumeration_.place,
                                {SubjectKind::Type, enumeration_.name},
                                "enumeration {} has no items", quoted(enumeration_.name));
    }
    scope_->enumerations.push_back(std::move(enumeration_));
    exchange::checkBound(scope_->enumerations.size(), exchange::typeBound);
}

void DefinitionReader::readBaseUnit() {
    element_.subject = {SubjectKind::Unit, unit_.name};
    if (hasBaseUnit_) {
        return element_.add(Code::ElementRepeated, "unit {} has a second BaseUnit",
                            quoted(unit_.name));
    }
    hasBaseUnit_ = true;
    unit_.base =
        exchange::readBaseUnit([this](std::string_view name) { return element_.attribute(name); },
                               [this](std::string_view name, const char* text, const char* kind) {
                                   element_.addInvalid(name, text, kind);
                               },
                               [this] { element_.add(Code::UnitFactorZero, "factor is 0"); });
}

void DefinitionReader::endUnit() {
    if (!hasBaseUnit_) {
        element_.findings().add(Code::ElementMissing, unit_.place, {SubjectKind::Unit, unit_.name},
                                "unit {} has no BaseUnit", quoted(unit_.name));
    }
    scope_->units.push_back(std::move(unit_));
    exchange::checkBound(scope_->units.size(), exchange::unitBound);
}

void DefinitionReader::use(std::string_view unit, std::string_view enumeration,
                           const Definitions& scope) {
    if (!unit.empty() || !enumeration.empty()) {
        uses_.push_back({&scope, unit, enumeration, element_.place()});
    }
}

void DefinitionReader::checkUses(const Definitions& scope) {
    findings::Findings& findings = element_.findings();
    std::unordered_set<std::string_view> units;
    for (const exchange::UnitDefinition& unit : scope.units) {
        if (!units.insert(unit.name).second) {
            findings.add(Code::UnitRepeated, unit.place, {SubjectKind::Unit, unit.name},
                         "unit {} is defined again", quoted(unit.name));
        }
    }
    std::unordered_set<std::string_view> enumerations;
    for (const Enumeration& enumeration : scope.enumerations) {
        if (!enumerations.insert(enumeration.name).second) {
            findings.add(Code::EnumerationRepeated, enumeration.place,
                         {SubjectKind::Type, enumeration.name}, "enumeration {} is defined again",
                         quoted(enumeration.name));
        }
    }
    // Those of an inner scope are the last ones, and have been removed.
    for (const Use& use : uses_) {
        if (use.scope != &scope) {
            continue;
        }
        if (!use.unit.empty() && !units.contains(use.unit)) {
            findings.add(Code::UnitUndefined, use.place, {SubjectKind::Unit, use.unit},
                         "unit {} is not defined in the file", quoted(use.unit));
        }
        if (!use.enumeration.empty() && !enumerations.contains(use.enumeration)) {
            findings.add(Code::EnumerationUndefined, use.place,
                         {SubjectKind::Type, use.enumeration},
                         "enumeration {} is not defined in the file", quoted(use.enumeration));
        }
    }
    std::erase_if(uses_, [&](const Use& use) { return use.scope == &scope; });
}

} // namespace tvtool::ssp
