#include "units/name_reading.h"

#include "units/conventions.h"
#include "units/phrases.h"
#include "units/tokens.h"
#include "units/unit_names.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <functional>
#include <numeric>

namespace tvtool::units {

namespace {

/// Prefixes of units that few people mean when they write a capital letter.
constexpr std::string_view rarePrefixes = "aEfPzZyYrRqQ";

std::string productText(const std::vector<UnitPower>& product) {
    std::string text;
    for (const UnitPower& unit : product) {
        text += text.empty() ? "" : "*";
        text += unit.power == 1 ? unit.name : fmt::format("{}^{}", unit.name, unit.power);
    }
    return text;
}

/// Returns the units that differ from a name in case, without those with a rare prefix.
std::vector<std::string> likelyVariants(std::string_view name) {
    std::vector<std::string> variants = caseVariants(name);
    std::erase_if(variants, [&](const std::string& variant) {
        return rarePrefixes.find(variant.front()) != std::string_view::npos &&
               std::string_view(variant).substr(1) == name.substr(1);
    });
    // The fewest capitals and small letters exchanged first.
    const auto differences = [&](const std::string& variant) {
        return std::inner_product(
            name.begin(),
            name.begin() + static_cast<std::ptrdiff_t>(std::min(name.size(), variant.size())),
            variant.begin(), 0, std::plus<>(), std::not_equal_to<>());
    };
    std::ranges::stable_sort(variants, {}, differences);
    return variants;
}

/// Throws if a name differs from a likely unit in case alone.
void checkCase(std::string_view name) {
    if (const std::vector<std::string> variants = likelyVariants(name); !variants.empty()) {
        throw RefusedName(fmt::format("{} differs from a unit in case; did you mean {}?", name,
                                      fmt::join(variants, ", ")));
    }
}

bool hasLowerCaseOrDigit(std::string_view name) {
    return std::ranges::any_of(
        name, [](char c) { return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9'); });
}

NameReading readSymbols(std::string_view name, bool isRaised) {
    std::vector<UnitPower> product = splitJoined(name);
    if (product.empty() || (!isRaised && !hasLowerCaseOrDigit(name))) {
        return {};
    }
    if (product.front().name == "K" && product.front().power == 1 && product.size() > 1) {
        throw RefusedName("K is the kelvin and k the prefix kilo; write a sign after the kelvin");
    }
    if (isRaised && product.back().name == "ms") {
        throw RefusedName(
            "ms is the millisecond, and metre second to many; write a sign between m and s");
    }
    std::string reason;
    if (product.size() > 1) {
        reason = fmt::format("{} is the product {}", name, productText(product));
        reason += isRaised ? ", whose last unit has the power" : "";
    }
    return {std::move(product), std::move(reason)};
}

} // namespace

NameReading readName(std::string_view written, std::int32_t powerAfter) {
    const std::string name = plainName(written);
    const std::size_t lastLetter = name.find_last_not_of("0123456789");
    const std::string_view letters = std::string_view(name).substr(0, lastLetter + 1);
    const std::string_view digits = std::string_view(name).substr(letters.size());
    const std::int64_t power = powerOfDigits(digits);
    constexpr std::int32_t cube = 3;
    const bool isCube = digits.empty() ? std::abs(powerAfter) == cube : power == cube;
    if (const std::string_view volume = isCube ? gasVolume(letters) : ""; !volume.empty()) {
        return {{{std::string(volume), 1}},
                fmt::format("{}^3 is a gas volume at reference conditions, which is an amount of "
                            "substance",
                            letters)};
    }
    const bool isRaised = powerAfter != 1;
    if (isRaised) {
        NameReading split = readSymbols(name, true);
        if (split.product.size() > 1) {
            return split;
        }
    }
    if (std::string unit = findUnitName(name); !unit.empty()) {
        return {{{std::move(unit), 1}}, {}};
    }
    if (const Convention* const convention = conventionOfName(name)) {
        if (convention->reading.empty()) {
            throw RefusedName(std::string(convention->sentence));
        }
        return {{{std::string(convention->reading), 1}}, std::string(convention->sentence)};
    }
    if (const std::string_view scale = temperatureScale(name); !scale.empty()) {
        return {{{std::string(scale), 1}}, {}};
    }
    checkCase(name);
    if (!digits.empty() && power != 0 && !letters.empty()) {
        NameReading split = readSymbols(name, false);
        if (split.product.size() > 1) {
            return split;
        }
        if (std::string unit = findUnitName(letters); !unit.empty()) {
            return {{{std::move(unit), power}}, {}};
        }
    }
    checkCase(letters);
    if (std::string reason = reasonAgainstName(name); !reason.empty()) {
        throw RefusedName(reason);
    }
    return readSymbols(name, isRaised);
}

std::string remarkOnName(std::string_view name) {
    constexpr std::array<std::string_view, 6> largePrefixes{"peta",  "exa",   "zetta",
                                                            "yotta", "ronna", "quetta"};
    if (name == "pH") {
        return "pH is the picohenry; the pH value is a logarithm, not a multiple of a unit";
    }
    const std::string unit = fullNameOfUnit(name);
    std::vector<std::string> variants = caseVariants(name);
    std::erase(variants, name);
    const bool isLarge = std::ranges::any_of(
        largePrefixes, [&](std::string_view prefix) { return unit.starts_with(prefix); });
    return isLarge && !variants.empty()
               ? fmt::format("{} is {}, which {} differs from in case alone", name, unit,
                             fmt::join(variants, ", "))
               : "";
}

} // namespace tvtool::units
