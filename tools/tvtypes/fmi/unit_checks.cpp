#include "fmi/unit_checks.h"

#include "text/quote.h"

#include <fmt/format.h>

#include <algorithm>
#include <unordered_map>
#include <utility>

namespace tvtool::fmi {

namespace {

using Lines = std::unordered_map<std::string_view, std::uint64_t>;

/// Keeps the first of each name.
template <class Unit>
void eraseRepeated(std::vector<Unit>& units, const char* kind, Remarks& remarks) {
    Lines lines;
    std::erase_if(units, [&](const Unit& unit) {
        const auto [entry, isNew] = lines.try_emplace(unit.name, unit.place.line);
        if (!isNew) {
            remarks.problem(unit.place, fmt::format("{} {} is defined on line {} already", kind,
                                                    text::quoted(unit.name), entry->second));
        }
        return !isNew;
    });
}

/// Brings uses of units to definitions, and says what is wrong with a use where it occurs first.
class Uses {
  public:
    Uses(Description& description, Remarks& remarks)
        : description_(description), remarks_(remarks) {
        for (const UnitDefinition& unit : description.units) {
            indices_.emplace(unit.name, static_cast<std::uint32_t>(indices_.size()));
        }
    }

    std::uint32_t resolve(const UnitUse& use, const Place& place) {
        if (use.unit.empty()) {
            if (isFirst("", use.displayUnit)) {
                remarks_.problem(place, fmt::format("displayUnit {} has no unit to go with it",
                                                    text::quoted(use.displayUnit)));
            }
            return noIndex;
        }
        const auto [entry, isNew] =
            indices_.try_emplace(use.unit, static_cast<std::uint32_t>(description_.units.size()));
        if (isNew) {
            remarks_.problem(place, fmt::format("unit {} is not defined", text::quoted(use.unit)));
            description_.units.push_back({use.unit, std::nullopt, {}, false, place});
        }
        checkDisplayUnit(description_.units[entry->second], use.displayUnit, place);
        return entry->second;
    }

  private:
    bool isFirst(std::string_view unit, std::string_view displayUnit) {
        return said_[unit].try_emplace(displayUnit, 0).second;
    }

    void checkDisplayUnit(const UnitDefinition& unit, std::string_view name, const Place& place) {
        const bool isKnown = name.empty() || name == unit.name || !unit.isDefined ||
                             std::ranges::find(unit.displayUnits, name, &DisplayUnit::name) !=
                                 unit.displayUnits.end();
        if (!isKnown && isFirst(unit.name, name)) {
            remarks_.note(place, fmt::format("displayUnit {} is not defined for unit {}",
                                             text::quoted(name), text::quoted(unit.name)));
        }
    }

    Description& description_;
    Remarks& remarks_;
    std::unordered_map<std::string_view, std::uint32_t> indices_;
    std::unordered_map<std::string_view, Lines> said_;
};

/// What a variable says, and where it says nothing, its type.
UnitUse useOf(const Variable& variable, const Description& description) {
    UnitUse use = variable.unitUse == noIndex ? UnitUse() : description.unitUses[variable.unitUse];
    const std::uint32_t ofType =
        variable.type == noIndex ? noIndex : description.types[variable.type].unitUse;
    if (ofType != noIndex) {
        const UnitUse& type = description.unitUses[ofType];
        use.unit = use.unit.empty() ? type.unit : use.unit;
        use.displayUnit = use.displayUnit.empty() ? type.displayUnit : use.displayUnit;
    }
    return use;
}

} // namespace

void checkUnits(Description& description, Remarks& remarks) {
    eraseRepeated(description.units, "unit", remarks);
    for (UnitDefinition& unit : description.units) {
        eraseRepeated(unit.displayUnits, "display unit", remarks);
    }
    Uses uses(description, remarks);
    for (const TypeDefinition& type : description.types) {
        // A display unit may be meant for the units of the variables.
        if (type.unitUse != noIndex && !description.unitUses[type.unitUse].unit.empty()) {
            uses.resolve(description.unitUses[type.unitUse], type.place);
        }
    }
    for (Variable& variable : description.variables) {
        const UnitUse use = useOf(variable, description);
        if (!use.unit.empty() || !use.displayUnit.empty()) {
            variable.unit = uses.resolve(use, variable.place);
        }
    }
}

} // namespace tvtool::fmi
