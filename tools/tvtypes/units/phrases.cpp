#include "units/phrases.h"

#include "units/tokens.h"
#include "units/unit_names.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <optional>

namespace tvtool::units {

namespace {

struct Synonyms {
    std::string_view word;
    std::string_view meaning;
};

constexpr std::array<std::string_view, 10> degreeWords{
    "degrees", "degree", "degs", "deg", "Degrees", "Degree", "Degs", "Deg", "\u00B0", "DEG"};
constexpr std::array<Synonyms, 13> scales{{{"C", "degC"},
                                           {"Celsius", "degC"},
                                           {"celsius", "degC"},
                                           {"Centigrade", "degC"},
                                           {"centigrade", "degC"},
                                           {"F", "degF"},
                                           {"Fahrenheit", "degF"},
                                           {"fahrenheit", "degF"},
                                           {"R", "degR"},
                                           {"Rankine", "degR"},
                                           {"rankine", "degR"},
                                           {"K", "K"},
                                           {"Kelvin", "K"}}};

/// Units of mass that stand for their force beside a length, with the unit of force.
constexpr std::array<Synonyms, 9> massesAsForces{{{"lb", "lbf"},
                                                  {"lbs", "lbf"},
                                                  {"Lb", "lbf"},
                                                  {"pound", "lbf"},
                                                  {"pounds", "lbf"},
                                                  {"LB", "lbf"},
                                                  {"oz", "ozf"},
                                                  {"ounce", "ozf"},
                                                  {"ounces", "ozf"}}};
constexpr std::array<Synonyms, 6> arms{
    {{"ft", "ft"}, {"foot", "ft"}, {"feet", "ft"}, {"in", "in"}, {"inch", "in"}, {"inches", "in"}}};

constexpr std::array<Synonyms, 6> columns{
    {{"mm", "mm"}, {"cm", "cm"}, {"m", "m"}, {"in", "in"}, {"inch", "in"}, {"ft", "ft"}}};
constexpr std::array<Synonyms, 9> liquids{{{"Hg", "Hg"},
                                           {"HG", "Hg"},
                                           {"mercury", "Hg"},
                                           {"H2O", "H2O"},
                                           {"water", "H2O"},
                                           {"WC", "H2O"},
                                           {"wc", "H2O"},
                                           {"WG", "H2O"},
                                           {"wg", "H2O"}}};

struct Pair {
    std::string_view first;
    std::string_view second;
    std::string_view unit;
};
/// Pairs of symbols that are products only with a sign between them.
constexpr std::array<Pair, 7> pairs{{{"lb", "m", "lbm"},
                                     {"lbs", "m", "lbm"},
                                     {"ft", "c", "fc"},
                                     {"ft", "cd", "fc"},
                                     {"ft", "candle", "fc"},
                                     {"ft", "L", "ftL"},
                                     {"ft", "lambert", "ftL"}}};

struct Country {
    std::string_view word;
    std::string_view before; ///< of a name in words
    std::string_view after;  ///< of a symbol
};
constexpr std::array<Country, 8> countries{{{"US", "us_", "_us"},
                                            {"USA", "us_", "_us"},
                                            {"us", "us_", "_us"},
                                            {"UK", "imperial_", "_imp"},
                                            {"imp", "imperial_", "_imp"},
                                            {"Imp", "imperial_", "_imp"},
                                            {"imperial", "imperial_", "_imp"},
                                            {"Imperial", "imperial_", "_imp"}}};

template <std::size_t Count>
std::string_view meaningIn(const std::array<Synonyms, Count>& rows, std::string_view word) {
    const auto found = std::ranges::find(rows, word, &Synonyms::word);
    return found == rows.end() ? std::string_view() : found->meaning;
}

bool isRaised(const SpeltName& name) { return name.power != 1; }

/// Finds ft-lb and the like. A pound or an ounce beside a length means its force, except that of a
/// moment of inertia, lb-ft^2.
Phrase findTorque(std::span<const SpeltName> names) {
    const std::string_view words[] = {names[0].name, names[1].name};
    for (std::size_t first = 0; first < std::size(words); ++first) {
        const std::string_view force = meaningIn(massesAsForces, words[first]);
        const std::string_view arm = meaningIn(arms, words[1 - first]);
        if (force.empty() || arm.empty() || isRaised(names[0]) || isRaised(names[1])) {
            continue;
        }
        const bool isEnergy = first == 1 && force == "lbf" && arm == "ft";
        std::string unit = isEnergy ? "ft_lbf" : fmt::format("{}_{}", force, arm);
        if (!findUnitName(unit).empty()) {
            return {2, std::move(unit),
                    fmt::format("{} beside {} is the force; the mass times a length is written "
                                "{}*{}",
                                words[first], words[1 - first], words[first], words[1 - first])};
        }
    }
    return {};
}

Phrase findPair(std::span<const SpeltName> names) {
    const auto found = std::ranges::find_if(pairs, [&](const Pair& pair) {
        return pair.first == names[0].name && pair.second == names[1].name;
    });
    if (found == pairs.end() || isRaised(names[0]) || isRaised(names[1])) {
        return {};
    }
    return {2, std::string(found->unit),
            fmt::format("{} and {} without a sign are one unit; the product is written {}*{}",
                        found->first, found->second, found->first, found->second)};
}

/// Finds columns of liquids, such as mm Hg and inch of water.
Phrase findColumn(std::span<const SpeltName> names) {
    const bool isAbbreviated = names.size() > 2 && names[2].joint == Joint::Dot;
    const std::size_t last = names.size() > 2 && (isAbbreviated || names[1].name == "of") ? 2 : 1;
    const std::string_view length = meaningIn(columns, names[0].name);
    // W.C. has a point.
    const std::string word =
        fmt::format("{}{}", isAbbreviated ? names[1].name : "", names[last].name);
    const std::string_view liquid = meaningIn(liquids, plainName(word));
    if (length.empty() || liquid.empty()) {
        return {};
    }
    std::string unit = findUnitName(fmt::format("{}{}", length, liquid));
    return unit.empty() ? Phrase() : Phrase{last + 1, std::move(unit), {}};
}

/// Finds names of the database that have underscores between the words. A product of two units,
/// such as ohm_m, is one only without a power.
Phrase findWords(std::span<const SpeltName> names) {
    std::string text(names[0].name);
    Phrase found;
    bool isProduct = !findUnitName(names[0].name).empty();
    bool anyRaised = isRaised(names[0]);
    bool areLetters = text.size() == 1;
    for (std::size_t i = 1; i < names.size(); ++i) {
        text += fmt::format("_{}", names[i].name);
        isProduct = isProduct && !findUnitName(names[i].name).empty();
        anyRaised = anyRaised || isRaised(names[i]);
        areLetters = areLetters && names[i].name.size() == 1;
        if (areLetters || (isProduct && anyRaised)) {
            continue;
        }
        if (std::string unit = findUnitName(text); !unit.empty()) {
            found = {i + 1, std::move(unit), {}};
        }
    }
    return found;
}

/// Finds a name with a word that qualifies it, as in US fl oz and metric hp.
Phrase findQualified(std::span<const SpeltName> names) {
    for (std::size_t count = std::min<std::size_t>(names.size(), 3); count > 1; --count) {
        std::string rest(names[1].name);
        rest += count > 2 ? fmt::format("_{}", names[2].name) : "";
        std::string unit = qualifiedUnit(rest, names[0].name);
        if (unit.empty() && count == 2) {
            unit = qualifiedUnit(names[0].name, names[1].name);
        }
        if (!unit.empty()) {
            return {count, std::move(unit), {}};
        }
    }
    return {};
}

} // namespace

Phrase findPhrase(std::span<const SpeltName> names) {
    if (names.size() < 2) {
        return {};
    }
    const std::string first = plainName(names[0].name);
    if (std::ranges::find(degreeWords, first) != degreeWords.end() && !isRaised(names[0])) {
        if (const std::string_view scale = meaningIn(scales, names[1].name); !scale.empty()) {
            return {2, std::string(scale), {}};
        }
    }
    for (Phrase (*const find)(std::span<const SpeltName>) :
         {findTorque, findPair, findColumn, findWords, findQualified}) {
        if (Phrase phrase = find(names); phrase.count > 0) {
            return phrase;
        }
    }
    return {};
}

std::string_view temperatureScale(std::string_view name) {
    for (const std::string_view word : degreeWords) {
        if (name.starts_with(word)) {
            const std::string_view rest = name.substr(word.size());
            return meaningIn(scales, rest.starts_with('_') ? rest.substr(1) : rest);
        }
    }
    return {};
}

std::string qualifiedUnit(std::string_view name, std::string_view word) {
    if (const auto country = std::ranges::find(countries, word, &Country::word);
        country != countries.end()) {
        std::string symbol(name);
        std::erase(symbol, '_');
        for (const std::string& unit : {fmt::format("{}{}", name, country->after),
                                        fmt::format("{}{}", symbol, country->after),
                                        fmt::format("{}{}", country->before, name)}) {
            if (!findUnitName(unit).empty()) {
                return unit;
            }
        }
        return {};
    }
    // Words, since n_m and the like would be other units.
    constexpr std::size_t shortestWord = 2;
    if (word.size() < shortestWord && name.size() < shortestWord) {
        return {};
    }
    if (!findUnitName(word).empty()) {
        return {};
    }
    std::string unit = findUnitName(fmt::format("{}_{}", name, word));
    return unit.empty() ? findUnitName(fmt::format("{}_{}", word, name)) : unit;
}

} // namespace tvtool::units
