// Resolution of the units of types, variables and aliases.
#include "exchange/bounds.h"
#include "fmi/description_checks.h"
#include "text/quote.h"

#include <boost/container_hash/hash.hpp>

#include <map>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace tvtool::fmi {

namespace {

using findings::Code;
using findings::Findings;
using findings::Subject;
using findings::SubjectKind;
using text::quoted;

/// The longest list of units in a sentence, in bytes.
constexpr std::size_t longestList = 60;

/// The index of a unit and the name of a display unit.
using DisplayName = std::pair<std::uint32_t, std::string_view>;

/// Resolves uses of units. Repeated invalid uses make one finding, with the first place.
class UnitResolver {
  public:
    UnitResolver(Description& description, Findings& findings)
        : description_(description),
          findings_(findings),
          definesUnits_(!description.units.empty()) {
        for (const exchange::UnitDefinition& unit : description.units) {
            const auto index = static_cast<std::uint32_t>(indices_.size());
            indices_.emplace(unit.name, index);
            for (const exchange::DisplayUnit& display : unit.displayUnits) {
                displayUnits_.emplace(index, display.name);
            }
        }
    }

    /// Returns the index of the unit, which is added to the units if it is not defined.
    std::uint32_t resolve(const UnitUse& use, const Place& place, Subject subject) {
        if (use.unit.empty()) {
            findings_.addWithCause(Code::DisplayUnitAlone, firstPlace(use, place), subject,
                                   use.displayUnit, "displayUnit {} has no unit",
                                   quoted(use.displayUnit));
            return noIndex;
        }
        const auto [entry, isNew] =
            indices_.try_emplace(use.unit, static_cast<std::uint32_t>(description_.units.size()));
        if (isNew) {
            description_.units.push_back({use.unit, std::nullopt, {}, false, place});
            exchange::checkBound(description_.units.size(), exchange::unitBound);
        }
        const exchange::UnitDefinition& unit = description_.units[entry->second];
        if (!unit.isDefined && definesUnits_) {
            findings_.add(Code::UnitUndefined, firstPlace({use.unit, {}}, place),
                          {SubjectKind::Unit, use.unit}, "unit {} is not defined",
                          quoted(use.unit));
        }
        const bool isKnown = use.displayUnit.empty() || use.displayUnit == use.unit ||
                             !unit.isDefined ||
                             displayUnits_.contains({entry->second, use.displayUnit});
        if (!isKnown) {
            const bool isIgnored = description_.majorVersion == 2;
            findings_.add(isIgnored ? Code::DisplayUnitIgnored : Code::DisplayUnitUndefined,
                          firstPlace(use, place), {SubjectKind::DisplayUnit, use.displayUnit},
                          "displayUnit {} is not defined for unit {}", quoted(use.displayUnit),
                          quoted(use.unit));
        }
        return entry->second;
    }

    /// Reports that no unit is defined. To be called after the last use.
    void end() {
        if (definesUnits_ || description_.units.empty()) {
            return;
        }
        std::string list;
        for (const exchange::UnitDefinition& unit : description_.units) {
            if (list.size() + unit.name.size() > longestList) {
                list += list.empty() ? text::shortened(unit.name, longestList) : ", ...";
                break;
            }
            list += (list.empty() ? "" : ", ") + std::string(unit.name);
        }
        findings_.add(Code::UnitsMissing, description_.units.front().place, {},
                      "the file defines no units, and {} {} used: {}", description_.units.size(),
                      description_.units.size() == 1 ? "is" : "are", list);
    }

  private:
    /// Returns the place with the element of the first use: equal findings have equal elements.
    Place firstPlace(const UnitUse& use, Place place) {
        const auto [entry, isNew] =
            elements_.try_emplace({use.unit, use.displayUnit}, place.element);
        place.element = entry->second;
        return place;
    }

    Description& description_;
    Findings& findings_;
    const bool definesUnits_;
    std::unordered_map<std::string_view, std::uint32_t> indices_; ///< of units, by name
    std::unordered_set<DisplayName, boost::hash<DisplayName>> displayUnits_;
    std::map<std::pair<std::string_view, std::string_view>, std::string_view> elements_;
};

/// Returns the unit attributes of a variable; those of its type where it has none.
UnitUse findUse(const Variable& variable, const Description& description) {
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

void resolveUnits(Description& description, Findings& findings) {
    UnitResolver units(description, findings);
    for (const TypeDefinition& type : description.types) {
        // A display unit alone can belong to the units of the variables.
        if (type.unitUse != noIndex && !description.unitUses[type.unitUse].unit.empty()) {
            units.resolve(description.unitUses[type.unitUse], type.place,
                          {SubjectKind::Type, type.name});
        }
    }
    for (Variable& variable : description.variables) {
        const UnitUse use = findUse(variable, description);
        if (!use.unit.empty() || !use.displayUnit.empty()) {
            variable.unit =
                units.resolve(use, variable.place, {SubjectKind::Variable, variable.name});
        }
    }
    for (const Alias& alias : description.aliases) {
        const std::uint32_t unit = description.variables[alias.variable].unit;
        if (!alias.displayUnit.empty()) {
            units.resolve({unit == noIndex ? "" : description.units[unit].name, alias.displayUnit},
                          alias.place, {SubjectKind::Variable, alias.name});
        }
    }
    units.end();
}

} // namespace tvtool::fmi
