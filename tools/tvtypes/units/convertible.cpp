#include "units/convertible.h"

#include "text/utf16.h"
#include "units/definitions.h"
#include "units/shown_number.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <tuple>

namespace tvtool::units {

namespace {

using TVTypeSys::UnitBase;

constexpr double notCommon = 2;
/// Significant digits in a list, a point included.
constexpr std::size_t mostListedDigits = 11;
constexpr int roundedListedDigits = 6;

struct Candidate {
    const UnitBase* unit = nullptr;
    std::string name;
    Conversion conversion;
    /// Candidates are listed in ascending order of these. The rank is the position among the common
    /// units of the quantity, from 0 to 1. So if a composite has units of several quantities, those
    /// with many common units come before those with few.
    double rank = notCommon;
    bool isCoherent = false;
    double distance = 0; ///< between the sizes: the logarithm of their ratio

    auto order() const { return std::tuple(rank, !isCoherent, distance, name); }
};

/// Returns whether this is an SI unit with the factor 1.
bool isCoherent(const UnitBase& unit, const Expansion& expansion) {
    const std::vector<std::string> systems = systemNames(unit);
    return expansion.factor == 1 && expansion.offset == 0 &&
           std::ranges::find(systems, "SI") != systems.end();
}

Candidate candidate(const UnitBase& unit, const Expansion& from, const Expansion& to) {
    Candidate result{&unit, text::toUtf8(unit.name), conversionBetween(from, to)};
    result.isCoherent = isCoherent(unit, to);
    result.distance = std::abs(std::log(exact::toDouble(result.conversion.factor)));
    if (const auto* const concrete = dynamic_cast<const TVTypeSys::Unit*>(&unit)) {
        const auto& common = definitions().commonUnits(concrete->abstractUnit.get().name);
        const auto position = std::ranges::find(common, unit.symbol) - common.begin();
        if (position < std::ssize(common)) {
            // The first place is that of the coherent unit.
            const bool isFirst = position == 0 && !result.isCoherent;
            result.rank = static_cast<double>(position + (isFirst ? 1 : 0)) /
                          static_cast<double>(common.size());
        }
    }
    return result;
}

/// Returns a factor in few digits, because a list is read at a glance.
std::string listedFactor(const ShownNumber& factor) {
    const std::size_t first = factor.digits.find_first_not_of("0.");
    return !factor.isRounded && factor.digits.size() - first <= mostListedDigits
               ? factor.digits
               : fmt::format("about {:.{}g}", factor.decimal, roundedListedDigits);
}

ConvertibleUnit listed(const Candidate& candidate) {
    const Conversion& conversion = candidate.conversion;
    ConvertibleUnit unit;
    unit.name = candidate.name;
    unit.symbol = text::toUtf8(candidate.unit->symbol);
    // The symbol of the unit "one" is 1.
    const std::string& shortest =
        unit.symbol.empty() || unit.symbol == "1" ? unit.name : unit.symbol;
    if (conversion.offset != 0) {
        unit.conversion = conversion.text();
        unit.text = fmt::format("{} {}", unit.conversion, shortest);
        return unit;
    }
    const ShownNumber factor =
        shownNumber(conversion.factor, conversion.piPower, conversion.uncertainty);
    unit.factor = factor.decimal;
    unit.exact = factor.exact;
    unit.text = fmt::format("{} {}", listedFactor(factor), shortest);
    return unit;
}

} // namespace

ConvertibleUnits convertibleUnits(const FoundUnit& found, std::size_t most) {
    Expander expander;
    std::vector<Candidate> candidates;
    for (const auto& reference : TVTypeSys::UnitDatabase::getUnitDatabase()->getAllUnits()) {
        const UnitBase& other = reference.get();
        if (found.unit->compare(other) != 0 && found.unit->compatibleWithUnit(other) &&
            found.unit->dimensionallyEquivalentWithUnit(other)) {
            if (const std::optional<Expansion>& expansion = expander.expand(other)) {
                candidates.push_back(candidate(other, *found.expansion, *expansion));
            }
        }
    }
    std::ranges::sort(candidates, {}, &Candidate::order);
    ConvertibleUnits result;
    result.count = candidates.size();
    candidates.resize(std::min(candidates.size(), most));
    std::ranges::transform(candidates, std::back_inserter(result.units), listed);
    return result;
}

} // namespace tvtool::units
