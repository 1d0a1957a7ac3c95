/// \file
/// Reading of the type definitions of a description.
#pragma once

#include "exchange/bounds.h"
#include "exchange/values.h"
#include "fmi/attribute_checks.h"
#include "fmi/unit_reader.h"
#include "text/quote.h"

#include <cstdint>
#include <limits>
#include <utility>

namespace tvtool::fmi {

/// Reads types from an element that the caller sets before each call.
class TypeReader {
  public:
    TypeReader(Element& element, UnitReader& units) : element_(element), units_(units) {}

    void startType(BaseType base) {
        type_ = {};
        type_.name = element_.requiredName();
        type_.place = element_.place;
        type_.description = element_.text(Attribute::Description);
        element_.subject = {findings::SubjectKind::Type, type_.name};
        if (base != BaseType::None) {
            readBase(base);
        }
    }

    void readBase(BaseType base) {
        if (type_.base != BaseType::None) {
            element_.add(Code::BaseTypeRepeated, "type {} has a second base type",
                         text::quoted(type_.name));
            return;
        }
        type_.base = base;
        type_.unitUse = units_.readUse();
        type_.quantity = element_.text(Attribute::Quantity);
        type_.isRelative = element_.isTrue(Attribute::RelativeQuantity);
        readRange(element_, type_);
    }

    bool hasItems() const { return type_.base == BaseType::Enumeration; }

    void readItem() {
        exchange::Item item{element_.requiredName(), std::nullopt, element_.place};
        if (const char* const value = element_[Attribute::Value]) {
            item.value = readItemValue(value);
        } else {
            element_.addForAttribute(Code::ItemValueMissing, type_.name,
                                     "an item of type {} has no value; such items are numbered "
                                     "from 1",
                                     text::quoted(type_.name));
            item.value = static_cast<std::int64_t>(type_.items.size() + 1);
        }
        type_.items.push_back(item);
        exchange::checkBound(++items_, exchange::itemBound);
    }

    void endType() {
        findings::Findings& findings = element_.findings;
        const findings::Subject subject{findings::SubjectKind::Type, type_.name};
        if (type_.base == BaseType::None) {
            findings.add(Code::BaseTypeMissing, type_.place, subject, "type {} has no base type",
                         text::quoted(type_.name));
        } else if (hasItems() && type_.items.empty()) {
            findings.add(Code::EnumerationEmpty, type_.place, subject,
                         "enumeration {} has no items", text::quoted(type_.name));
        }
        if (!type_.name.empty() && type_.base != BaseType::None) {
            element_.description.types.push_back(std::move(type_));
            exchange::checkBound(element_.description.types.size(), exchange::typeBound);
        }
        type_ = {};
    }

  private:
    using Code = findings::Code;

    /// Items have 32 bits in FMI 2 and 64 in FMI 3.
    std::optional<std::int64_t> readItemValue(const char* text) const {
        constexpr std::int64_t least = std::numeric_limits<std::int32_t>::min();
        constexpr std::int64_t greatest = std::numeric_limits<std::int32_t>::max();
        const bool isWide = element_.description.majorVersion == 3;
        const auto value = exchange::parseNumber<std::int64_t>(text);
        const bool fits = value && *value >= least && *value <= greatest;
        if (!value || (!fits && !isWide)) {
            element_.addForAttribute(Code::ValueInvalid, "value", "value {} is no {}-bit integer",
                                     text::quoted(text), isWide ? 64 : 32);
            return std::nullopt;
        }
        if (!fits) {
            element_.addForAttribute(Code::ItemValueRange, type_.name,
                                     "value {} of an item of type {} is beyond the 32 bits of "
                                     "enumerations in the table",
                                     *value, text::quoted(type_.name));
        }
        return value;
    }

    Element& element_;
    UnitReader& units_;
    TypeDefinition type_;   ///< the open one
    std::size_t items_ = 0; ///< of all types
};

} // namespace tvtool::fmi
