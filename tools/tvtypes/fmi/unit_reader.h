/// \file
/// Reading of the units of a description.
#pragma once

#include "exchange/bounds.h"
#include "exchange/values.h"
#include "fmi/element.h"
#include "text/quote.h"

#include <cmath>
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
        isValid_ = true;
        exchange::BaseUnit base;
        for (std::size_t i = 0; i < base.powers.size(); ++i) {
            constexpr auto first = static_cast<std::size_t>(Attribute::Kilogram);
            const char* const text = element_.attributes[first + i];
            const auto power = exchange::parseNumber<std::int32_t>(text == nullptr ? "0" : text);
            if (!power) {
                element_.addForAttribute(Code::ValueInvalid, exchange::baseUnitNames[i],
                                         "{} {} is no 32-bit integer", exchange::baseUnitNames[i],
                                         text::quoted(text));
                isValid_ = false;
            }
            base.powers[i] = power.value_or(0);
        }
        base.factor = readFactor();
        base.offset = readNumber(Attribute::Offset, "offset", 0);
        if (isValid_) {
            unit_.base = base;
        }
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
    double readNumber(Attribute attribute, std::string_view name, double absent) {
        const char* const text = element_[attribute];
        if (text == nullptr) {
            return absent;
        }
        const std::optional<double> number = exchange::parseNumber<double>(text);
        if (!number || !std::isfinite(*number)) {
            element_.addForAttribute(Code::ValueInvalid, name, "{} {} is no finite number", name,
                                     text::quoted(text));
            isValid_ = false;
            return absent;
        }
        return *number;
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
