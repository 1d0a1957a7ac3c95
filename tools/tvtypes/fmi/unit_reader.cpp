#include "fmi/unit_reader.h"

#include "fmi/values.h"
#include "text/quote.h"

#include <fmt/format.h>

#include <cstddef>
#include <utility>

namespace tvtool::fmi {

void UnitReader::startUnit(const Attributes& attributes, const Place& place) {
    unit_ = {};
    unit_.name = requiredName(attributes, place, description_, remarks_);
    unit_.place = place;
    hasBaseUnit_ = false;
}

void UnitReader::readBaseUnit(const Attributes& attributes, const Place& place) {
    if (hasBaseUnit_) {
        remarks_.problem(place,
                         fmt::format("unit {} has a second BaseUnit", text::quoted(unit_.name)));
        return;
    }
    hasBaseUnit_ = true;
    isRight_ = true;
    BaseUnit base;
    for (std::size_t i = 0; i < base.powers.size(); ++i) {
        const auto attribute =
            static_cast<Attribute>(static_cast<std::size_t>(Attribute::Kilogram) + i);
        const char* const text = attributes[attribute];
        if (text == nullptr) {
            continue;
        }
        if (const std::optional<std::int32_t> power = parseInt32(text)) {
            base.powers[i] = *power;
        } else {
            remarks_.problem(place, fmt::format("{} {} is no 32-bit integer", baseUnitNames[i],
                                                text::quoted(text)));
            isRight_ = false;
        }
    }
    base.factor = readFactor(attributes, place);
    base.offset = readOffset(attributes, place);
    if (isRight_) {
        unit_.base = base;
    }
}

void UnitReader::readDisplayUnit(const Attributes& attributes, const Place& place) {
    isRight_ = true;
    DisplayUnit unit;
    unit.name = requiredName(attributes, place, description_, remarks_);
    unit.factor = readFactor(attributes, place);
    unit.offset = readOffset(attributes, place);
    unit.place = place;
    if (const char* const inverse = attributes[Attribute::Inverse]) {
        if (!isValue(inverse, BaseType::Boolean)) {
            remarks_.problem(place,
                             fmt::format("inverse {} is no Boolean value", text::quoted(inverse)));
            isRight_ = false;
        }
        unit.isInverse = std::string_view(inverse) == "true" || std::string_view(inverse) == "1";
    }
    if (isRight_ && !unit.name.empty()) {
        unit_.displayUnits.push_back(unit);
    }
}

void UnitReader::endUnit() {
    if (!unit_.name.empty()) {
        description_.units.push_back(std::move(unit_));
    }
}

double UnitReader::readNumber(const char* text, double absent, std::string_view name,
                              const Place& place) {
    if (text == nullptr) {
        return absent;
    }
    const std::optional<double> number = parseReal(text);
    if (!number) {
        remarks_.problem(place, fmt::format("{} {} is no finite number", name, text::quoted(text)));
        isRight_ = false;
    }
    return number.value_or(absent);
}

double UnitReader::readFactor(const Attributes& attributes, const Place& place) {
    const double factor = readNumber(attributes[Attribute::Factor], 1, "factor", place);
    if (factor == 0) {
        remarks_.problem(place, "factor is 0");
        isRight_ = false;
    }
    return factor;
}

double UnitReader::readOffset(const Attributes& attributes, const Place& place) {
    return readNumber(attributes[Attribute::Offset], 0, "offset", place);
}

std::uint32_t UnitReader::readUse(const Attributes& attributes) {
    const auto textOf = [&](Attribute attribute) {
        const char* const text = attributes[attribute];
        return std::string_view(text == nullptr ? "" : text);
    };
    const std::string_view unit = textOf(Attribute::Unit);
    const std::string_view displayUnit = textOf(Attribute::DisplayUnit);
    if (unit.empty() && displayUnit.empty()) {
        return noIndex;
    }
    if (const auto known = uses_.find({unit, displayUnit}); known != uses_.end()) {
        return known->second;
    }
    const UnitUse use{description_.texts.intern(unit), description_.texts.intern(displayUnit)};
    const auto index = static_cast<std::uint32_t>(description_.unitUses.size());
    description_.unitUses.push_back(use);
    uses_.emplace(std::pair(use.unit, use.displayUnit), index);
    return index;
}

} // namespace tvtool::fmi
