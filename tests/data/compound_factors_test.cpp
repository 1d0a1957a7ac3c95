// Factors of compounds in many spellings, compared with the definitions of their units.
#include "fault.h"
#include "support/random_seed.h"
#include "unit_sources.h"

#include <tvtypes/units.h>

#include <boost/json/parse.hpp>
#include <fmt/format.h>
#include <fmt/ranges.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <optional>
#include <random>

namespace TVTypeSys {

namespace {

std::mt19937 generator; // NOLINT: seeded by each FactorCheck

template <class Range>
const auto& randomElement(const Range& range) {
    return range[std::uniform_int_distribution<std::size_t>(0, range.size() - 1)(generator)];
}

bool coin() { return std::bernoulli_distribution(0.5)(generator); }

double factorOf(const tvdata::Unit& unit) { return static_cast<double>(unit.factor.value()); }

/// Factor of a text by the definitions of its units; no value if it is no compound of units.
std::optional<double> definedFactor(const std::string& text) {
    double factor = 1;
    try {
        for (const auto& [name, power] : tvdata::parseExpression(text)) {
            const tvdata::Unit* const unit = catalogue().findUnit(name);
            if (unit == nullptr) {
                return std::nullopt;
            }
            factor *= std::pow(factorOf(*unit), power);
        }
    } catch (const tvdata::Fault&) {
        return std::nullopt;
    }
    return factor;
}

/// A name, the symbol or an alias of a unit, or that of its square or cube: "ft2", "cubic_foot".
std::string spelling(const std::string& key, int power) {
    const auto named = [](const tvdata::Unit& unit) {
        std::vector<std::string> names{unit.name, unit.symbol};
        std::ranges::copy_if(unit.aliases, std::back_inserter(names), tvdata::isName);
        return randomElement(names);
    };
    const tvdata::Unit& unit = *catalogue().findUnit(key);
    const auto* const whole = catalogue().findUnit(fmt::format("{}{}", unit.symbol, power));
    if (power > 1 && whole != nullptr && coin()) {
        return named(*whole);
    }
    return power > 1 ? fmt::format("{}^{}", named(unit), power) : named(unit);
}

/// Formats a compound with random spellings of its units, in random order, with blanks.
std::string respelt(const std::string& text) {
    std::vector<std::string> over;
    std::vector<std::string> under;
    for (const auto& [name, power] : tvdata::parseExpression(text)) {
        if (power != 0) {
            (power > 0 ? over : under).push_back(spelling(name, std::abs(power)));
        }
    }
    std::ranges::shuffle(over, generator);
    std::ranges::shuffle(under, generator);
    const std::string_view times = coin() ? "*" : " * ";
    const std::string_view per = coin() ? "/" : " / ";
    std::string result = over.empty() ? "1" : fmt::format("{}", fmt::join(over, times));
    if (under.size() > 1 && coin()) {
        return fmt::format("{}{}({})", result, per, fmt::join(under, times));
    }
    for (const std::string& term : under) {
        result += fmt::format("{}{}", per, term);
    }
    return result;
}

/// Registers texts and finds those whose factor is wrong, although it has no precision flag.
class FactorCheck {
  public:
    FactorCheck() { generator.seed(randomSeed(17)); }

    void add(const std::string& text, double factor) {
        if (++count_ % 1000 == 0) {
            table_.resetToBuiltin();
        }
        try {
            const int id = table_.registerUnit(text.c_str(), true);
            const Rational& actual = table_.getUnit(id)->baseScalingFactor;
            if (!(std::abs(actual.toDouble() / factor - 1) <= 1e-9) && actual.precision() == 0) {
                wrong_.push_back(text);
            }
        } catch (const boost::bad_rational&) {
            // ft^3*ft^3: its power has the denominator 0 in 32 bits, which is no silent error.
        }
    }

    std::size_t count() const { return count_; }
    const std::vector<std::string>& wrong() const { return wrong_; }

  private:
    UnitTable table_;
    std::size_t count_ = 0;
    std::vector<std::string> wrong_;
};

/// Classes of units and combinations of them: a list of classes for the numerator and the
/// denominator.
struct Combinations {
    std::map<std::string, std::vector<std::string>, std::less<>> classes;
    std::vector<std::array<std::vector<std::string>, 2>> products;
};

Combinations readCombinations() {
    const auto list = [](const boost::json::value& record, std::string_view field) {
        const auto* const text = record.as_object().if_contains(field);
        return tvdata::splitList(text == nullptr ? std::string_view() : text->as_string());
    };
    const std::string paths = TVTYPES_UNIT_SOURCES;
    std::ifstream file(paths.substr(paths.rfind(',') + 1));
    const auto value = boost::json::parse(std::string((std::istreambuf_iterator<char>(file)), {}));
    Combinations combinations;
    for (const auto& record : value.at("classes").as_array()) {
        std::vector<std::string>& units =
            combinations.classes[std::string(record.at("name").as_string())];
        units = list(record, "units");
        for (const std::string& quantity : list(record, "common_units_of")) {
            const auto found =
                std::ranges::find(catalogue().quantities(), quantity, &tvdata::Quantity::name);
            std::ranges::copy(found->commonUnits, std::back_inserter(units));
        }
    }
    for (const auto& record : value.at("combinations").as_array()) {
        combinations.products.push_back({list(record, "over"), list(record, "under")});
    }
    return combinations;
}

/// A random compound of a combination.
std::string randomCompound(const Combinations& combinations,
                           const std::array<std::vector<std::string>, 2>& product) {
    std::string text;
    for (std::size_t side = 0; side < 2; ++side) {
        for (const std::string& name : product[side]) {
            const auto found = combinations.classes.find(name);
            const std::string unit =
                found == combinations.classes.end() ? name : randomElement(found->second);
            text += fmt::format("{}({})", text.empty() ? "" : side == 0 ? "*" : "/", unit);
        }
    }
    return text;
}

} // namespace

TEST(CompoundFactors, MatchRespeltCompounds) {
    FactorCheck check;
    for (const std::string& text : compounds()) {
        if (const auto factor = definedFactor(text)) {
            for (int i = 0; i < 10; ++i) {
                check.add(respelt(text), *factor);
            }
        }
    }
    EXPECT_GE(check.count(), 10000);
    EXPECT_THAT(check.wrong(), testing::IsEmpty());
}

TEST(CompoundFactors, MatchCombinations) {
    const Combinations combinations = readCombinations();
    FactorCheck check;
    for (const auto& product : combinations.products) {
        for (int i = 0; i < 200; ++i) {
            const std::string text = randomCompound(combinations, product);
            check.add(respelt(text), definedFactor(text).value());
        }
    }
    EXPECT_GE(check.count(), 10000);
    EXPECT_THAT(check.wrong(), testing::IsEmpty());
}

TEST(CompoundFactors, MatchProductsAndQuotientsOfCommonUnits) {
    const std::vector<std::string> units = readCombinations().classes.at("common");
    std::vector<double> factors;
    std::ranges::transform(units, std::back_inserter(factors),
                           [](const std::string& unit) { return definedFactor(unit).value(); });
    FactorCheck check;
    for (std::size_t i = 0; i < units.size(); ++i) {
        for (std::size_t k = 0; k < units.size(); ++k) {
            check.add(units[i] + "*" + units[k], factors[i] * factors[k]);
            check.add(units[i] + "/" + units[k], factors[i] / factors[k]);
        }
    }
    EXPECT_GE(check.count(), 100000);
    EXPECT_THAT(check.wrong(), testing::IsEmpty());
}

} // namespace TVTypeSys
