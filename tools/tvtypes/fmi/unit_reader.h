/// \file
/// Reading of the units of a description.
#pragma once

#include "exchange/base_unit.h"
#include "exchange/bounds.h"
#include "exchange/values.h"
#include "fmi/element.h"
#include "text/quote.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <optional>
#include <string_view>
#include <utility>

namespace tvtool::fmi {

/// Reads units from an element that the caller sets before each call.
class UnitReader {
  public:
    explicit UnitReader(Element& element) : element_(element) {}

    void startUnit() {
        unit_ = {};
        unit_.name = element_.requiredName(Empty::Allowed);
        unit_.place = element_.place;
        element_.subject = {SubjectKind::Unit, unit_.name};
        hasBaseUnit_ = false;
    }

    void readBaseUnit() {
        element_.subject = {SubjectKind::Unit, unit_.name};
        if (hasBaseUnit_) {
            element_.add(Code::ElementRepeated, "unit {} has a second BaseUnit",
                         text::quoted(unit_.name));
            return;
        }
        hasBaseUnit_ = true;
        unit_.base =
            exchange::readBaseUnit([this](std::string_view name) { return numberText(name); },
                                   [this](std::string_view name, const char* text,
                                          const char* kind) { addInvalid(name, text, kind); },
                                   [this] { element_.add(Code::UnitFactorZero, "factor is 0"); });
    }

    void readDisplayUnit() {
        isValid_ = true;
        exchange::DisplayUnit unit;
        unit.name = element_.requiredName(Empty::Allowed);
        element_.subject = {SubjectKind::DisplayUnit, unit.name};
        unit.factor = readFactor();
        unit.offset = readNumber(Attribute::Offset, "offset", 0);
        unit.place = element_.place;
        if (const char* const text = element_[Attribute::Inverse]) {
            const std::string_view inverse = text;
            if (!exchange::isValue(inverse, BaseType::Boolean)) {
                element_.addForAttribute(Code::ValueInvalid, "inverse",
                                         "inverse {} is no Boolean value", text::quoted(inverse));
                isValid_ = false;
            }
            unit.isInverse = inverse == "true" || inverse == "1";
        }
        if (isValid_ && !unit.name.empty()) {
            unit_.displayUnits.push_back(unit);
            exchange::checkBound(++displayUnits_, exchange::displayUnitBound);
        }
    }

    void endUnit() {
        if (!unit_.name.empty()) {
            element_.description.units.push_back(std::move(unit_));
            exchange::checkBound(element_.description.units.size(), exchange::unitBound);
        }
    }

    /// Reads the unit attributes of a type or a variable. Returns an index in
    /// Description::unitUses, or noIndex.
    std::uint32_t readUse() {
        const auto value = [&](Attribute attribute) {
            const char* const text = element_[attribute];
            return std::string_view(text == nullptr ? "" : text);
        };
        const std::pair attributes(value(Attribute::Unit), value(Attribute::DisplayUnit));
        if (attributes.first.empty() && attributes.second.empty()) {
            return noIndex;
        }
        if (const auto known = uses_.find(attributes); known != uses_.end()) {
            return known->second;
        }
        Description& description = element_.description;
        const UnitUse use{description.texts.intern(attributes.first),
                          description.texts.intern(attributes.second)};
        const auto index = static_cast<std::uint32_t>(description.unitUses.size());
        description.unitUses.push_back(use);
        uses_.emplace(std::pair(use.unit, use.displayUnit), index);
        exchange::checkBound(uses_.size(), exchange::unitBound);
        return index;
    }

  private:
    /// Returns the text of a power, a factor or an offset; null if it is missing.
    const char* numberText(std::string_view name) const {
        const auto power = std::ranges::find(exchange::baseUnitNames, name);
        if (power != exchange::baseUnitNames.end()) {
            constexpr auto first = static_cast<std::size_t>(Attribute::Kilogram);
            return element_.attributes[first + static_cast<std::size_t>(
                                                   power - exchange::baseUnitNames.begin())];
        }
        return element_[name == "factor" ? Attribute::Factor : Attribute::Offset];
    }

    void addInvalid(std::string_view name, const char* text, const char* kind) {
        element_.addForAttribute(Code::ValueInvalid, name, "{} {} is no {}", name,
                                 text::quoted(text), kind);
        isValid_ = false;
    }

    double readNumber(Attribute attribute, std::string_view name, double absent) {
        return exchange::readFinite(name, element_[attribute], absent,
                                    [this](std::string_view invalid, const char* text,
                                           const char* kind) { addInvalid(invalid, text, kind); })
            .value_or(absent);
    }

    double readFactor() {
        const double factor = readNumber(Attribute::Factor, "factor", 1);
        if (factor == 0) {
            element_.add(Code::UnitFactorZero, "factor is 0");
            isValid_ = false;
        }
        return factor;
    }

    using Code = findings::Code;
    using SubjectKind = findings::SubjectKind;

    Element& element_;
    exchange::UnitDefinition unit_; ///< the open one
    std::size_t displayUnits_ = 0;  ///< of all units
    bool hasBaseUnit_ = false;
    bool isValid_ = true; ///< whether the numbers of the element are valid
    std::map<std::pair<std::string_view, std::string_view>, std::uint32_t> uses_;
};

} // namespace tvtool::fmi
