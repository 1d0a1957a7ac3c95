#include "units/convertible.h"

#include "text/utf16.h"
#include "units/definitions.h"
#include "units/shown_number.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <tuple>

namespace tvtool::units {

namespace {

using TVTypeSys::UnitBase;

constexpr std::size_t notCommon = std::numeric_limits<std::size_t>::max();
/// Significant digits in a list.
constexpr std::size_t mostListedDigits = 10;
constexpr int roundedListedDigits = 6;

struct Candidate {
    const UnitBase* unit = nullptr;
    Conversion conversion;
    /// Candidates are listed in ascending order of these.
    std::size_t rank = notCommon; ///< among the common units of its quantity
    bool isNotCoherent = false;   ///< whether it is not an SI unit with the factor 1
    double distance = 0;          ///< between the sizes: the logarithm of their ratio
    std::string name;

    auto order() const { return std::tie(rank, isNotCoherent, distance, name); }
};

bool isCoherent(const UnitBase& unit, const Expansion& expansion) {
    const std::vector<std::string> systems = systemNames(unit);
    return expansion.factor == 1 && expansion.offset == 0 &&
           std::ranges::find(systems, "SI") != systems.end();
}

Candidate candidate(const UnitBase& unit, const Expansion& from, const Expansion& to) {
    Candidate result{&unit, conversionBetween(from, to), notCommon, !isCoherent(unit, to),
                     0,     text::toUtf8(unit.name)};
    if (const auto* const concrete = dynamic_cast<const TVTypeSys::Unit*>(&unit)) {
        result.rank = definitions()
                          .commonRank(concrete->abstractUnit.get().name, unit.symbol)
                          .value_or(notCommon);
    }
    result.distance = std::abs(std::log(exact::toDouble(result.conversion.factor)));
    return result;
}

/// Returns a factor in few digits, because a list is read at a glance.
std::string listedFactor(const ShownNumber& factor) {
    const auto count = static_cast<std::size_t>(
        std::ranges::count_if(factor.digits, [](char c) { return c >= '0' && c <= '9'; }));
    return !factor.isRounded && count <= mostListedDigits
               ? factor.digits
               : fmt::format("about {:.{}g}", factor.decimal, roundedListedDigits);
}

ConvertibleUnit listed(const Candidate& candidate) {
    const Conversion& conversion = candidate.conversion;
    ConvertibleUnit unit;
    unit.name = candidate.name;
    unit.symbol = text::toUtf8(candidate.unit->symbol);
    const std::string& shortest = unit.symbol.empty() ? unit.name : unit.symbol;
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
