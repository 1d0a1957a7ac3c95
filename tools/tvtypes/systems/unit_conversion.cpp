#include "systems/unit_conversion.h"

#include "exact/number.h"
#include "model/unit_checks.h"
#include "text/quote.h"
#include "units/expansion.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

namespace tvtool::systems {

namespace {

using exchange::BaseUnit;

/// Definitions are rounded, so factors this close to 1 are those of the same unit.
constexpr double tolerance = 1e-9;

const BaseUnit* baseOf(const UnitEnd& end) {
    const bool isDefined =
        end.definition != nullptr && end.definition->isDefined && end.definition->base;
    return isDefined ? &*end.definition->base : nullptr;
}

UnitConversion conversion(const exact::Number& factor, const exact::Number& offset) {
    UnitConversion result;
    const bool isSame = offset == 0 && exact::areClose(factor, 1, tolerance);
    result.relation = isSame ? UnitRelation::Same : UnitRelation::Converted;
    if (!isSame) {
        result.factor = exact::toDouble(factor);
        result.offset = exact::toDouble(offset);
    }
    return result;
}

UnitConversion incompatible(const std::string& source, const std::string& target) {
    return {UnitRelation::Incompatible, 1, 0,
            fmt::format("one is in {}, the other in {}", source, target)};
}

/// Returns the product of the base units without factor and offset.
std::string dimensionText(BaseUnit base) {
    base.factor = 1;
    base.offset = 0;
    return model::baseUnitText(base);
}

UnitConversion convertDefined(const BaseUnit& source, const BaseUnit& target, bool isRelative) {
    const auto radian = source.powers.size() - 1;
    if (!std::equal(source.powers.begin(), source.powers.begin() + radian, target.powers.begin())) {
        return incompatible(dimensionText(source), dimensionText(target));
    }
    const exact::Number divisor = decimalOf(target.factor);
    const exact::Number offset =
        isRelative ? 0
                   : exact::Number((decimalOf(source.offset) - decimalOf(target.offset)) / divisor);
    UnitConversion result = conversion(decimalOf(source.factor) / divisor, offset);
    if (source.powers[radian] != target.powers[radian]) {
        result.relation = UnitRelation::RadianDiffers;
    }
    return result;
}

/// Compares units by their names, one of which has no definition.
UnitConversion convertNamed(const UnitEnd& source, const UnitEnd& target) {
    if (source.name == target.name) {
        return {UnitRelation::Same, 1, 0, {}};
    }
    UnitConversion undecided{UnitRelation::Undecided, 1, 0, "their names differ"};
    const auto from = model::meaningOfName(source.name).meaning;
    const auto to = model::meaningOfName(target.name).meaning;
    if (!from || !to) {
        return undecided;
    }
    if (from->powers != to->powers) {
        undecided.reason =
            fmt::format("by their names one is in {}, the other in {}",
                        units::productText(from->powers), units::productText(to->powers));
        return undecided;
    }
    const units::Conversion between = units::conversionBetween(*from, *to);
    const bool isRelative = source.isRelative || target.isRelative;
    UnitConversion byName =
        conversion(between.factor, isRelative ? exact::Number(0) : between.offset);
    if (byName.relation == UnitRelation::Same) {
        return byName;
    }
    undecided.reason = fmt::format("by their names the conversion is {}", conversionText(byName));
    return undecided;
}

} // namespace

exact::Number decimalOf(double number) { return exact::parseDecimal(fmt::format("{}", number)); }

UnitConversion convertUnits(const UnitEnd& source, const UnitEnd& target) {
    if (source.name.empty() || target.name.empty()) {
        return {};
    }
    const BaseUnit* const from = baseOf(source);
    const BaseUnit* const to = baseOf(target);
    return from != nullptr && to != nullptr
               ? convertDefined(*from, *to, source.isRelative || target.isRelative)
               : convertNamed(source, target);
}

const UnitConversion& UnitConversions::between(const UnitEnd& source, const UnitEnd& target) {
    const auto [entry, isNew] =
        known_.try_emplace({source.name, source.definition, target.name, target.definition,
                            source.isRelative || target.isRelative});
    if (isNew) {
        entry->second = convertUnits(source, target);
    }
    return entry->second;
}

std::string conversionText(const UnitConversion& conversion) {
    std::string text = conversion.factor == 1 ? "x" : fmt::format("{:.12g} * x", conversion.factor);
    if (conversion.offset != 0) {
        text += fmt::format(" {} {:.12g}", conversion.offset < 0 ? '-' : '+',
                            std::abs(conversion.offset));
    }
    return text;
}

} // namespace tvtool::systems
