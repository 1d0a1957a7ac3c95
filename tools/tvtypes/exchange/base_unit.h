/// \file
/// Reading of the definition of a unit.
#pragma once

#include "exchange/records.h"
#include "exchange/values.h"

#include <cmath>
#include <optional>
#include <string_view>

namespace tvtool::exchange {

/// Reads a finite number. Returns nothing if it is invalid, which `addInvalid` is called for with
/// the name of the attribute, the text and what it is not. \param text null for the default
template <class AddInvalid>
std::optional<double> readFinite(std::string_view name, const char* text, double absent,
                                 AddInvalid addInvalid) {
    const std::optional<double> number = text == nullptr ? absent : parseNumber<double>(text);
    if (!number || !std::isfinite(*number)) {
        addInvalid(name, text, "finite number");
        return std::nullopt;
    }
    return number;
}

/// Reads the powers, the factor and the offset of an element BaseUnit. Returns nothing if one of
/// them is invalid, or the factor is 0, which `addZero` is called for.
/// \param attribute returns the text of an attribute by its name; null if it is missing
template <class Attribute, class AddInvalid, class AddZero>
std::optional<BaseUnit> readBaseUnit(Attribute attribute, AddInvalid addInvalid, AddZero addZero) {
    BaseUnit base;
    bool isValid = true;
    for (std::size_t i = 0; i < base.powers.size(); ++i) {
        const char* const text = attribute(baseUnitNames[i]);
        const auto power = parseNumber<std::int32_t>(text == nullptr ? "0" : text);
        if (!power) {
            addInvalid(baseUnitNames[i], text, "32-bit integer");
        }
        isValid = isValid && power.has_value();
        base.powers[i] = power.value_or(0);
    }
    const auto factor = readFinite("factor", attribute("factor"), 1, addInvalid);
    const auto offset = readFinite("offset", attribute("offset"), 0, addInvalid);
    base.factor = factor.value_or(1);
    base.offset = offset.value_or(0);
    if (base.factor == 0) {
        addZero();
        isValid = false;
    }
    return isValid && factor && offset ? std::optional(base) : std::nullopt;
}

} // namespace tvtool::exchange
