// The units of the database against the definitions of their sources, in exact arithmetic.
#include "fault.h"
#include "support/errors.h"
#include "unit_sources.h"

#include <tvtypes/units.h>

#include <fnd/filesystem.h>
#include <fndi18n/ustring.h>
#include <tv_services/diagnostics.h>

#include <boost/algorithm/string/replace.hpp>
#include <boost/json/parse.hpp>
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <memory>
#include <regex>
#include <set>

namespace TVTypeSys {

namespace {

using fnd::i18n::to_ustring;
using tvdata::Exact;

const UnitDatabase& database() { return *UnitDatabase::getUnitDatabase(); }

Exact valueOf(const Rational& number) {
    return tvdata::valueOf({number.numerator(), number.denominator(), number.exponent()});
}

/// Compares a factor with an exact one, up to a relative tolerance.
testing::AssertionResult isNear(const Rational& factor, const Exact& exact, double tolerance) {
    const auto error = static_cast<double>(valueOf(factor) / exact - 1);
    return std::abs(error) <= tolerance
               ? testing::AssertionSuccess()
               : testing::AssertionFailure() << factor.toString() << " is off by " << error;
}

/// Powers by symbol of the fundamental unit, with powers of 0.
tvdata::Powers dimensionOf(const UnitBase& unit) {
    tvdata::Powers dimension;
    for (const auto& [base, info] : unit.fundamentalExprAST) {
        dimension.emplace(ConvertUStringToStdString(base.get().symbol, true), info.power);
    }
    return dimension;
}

/// Factor and dimension of a compound, computed from its units even if the text is an alias.
struct Meaning {
    Exact factor = 1;
    tvdata::Powers dimension;
};

std::optional<Meaning> meaningOf(const std::string& text) {
    Meaning meaning;
    try {
        for (const auto& [name, power] : tvdata::parseExpression(text)) {
            const tvdata::Unit* const unit = catalogue().findUnit(name);
            if (unit == nullptr) {
                return std::nullopt;
            }
            meaning.factor *= tvdata::raised(unit->factor.value(), power);
            // A unit with an offset is not expanded.
            const bool isAtom = unit->offset.numerator != 0;
            for (const auto& [base, exponent] :
                 isAtom ? tvdata::Powers{{unit->symbol, 1}} : unit->dimension) {
                meaning.dimension[base] += power * exponent;
            }
        }
    } catch (const tvdata::Fault&) {
        return std::nullopt;
    }
    return meaning;
}

/// Records of a variable of a file in the folder of the database.
boost::json::array records(const char* fileName, std::string_view variable) {
    const auto database = fnd::filesystem::get_install_path() + UnitDatabase::unitDBPath;
    std::ifstream file(std::filesystem::path(std::u16string(database)).replace_filename(fileName));
    const std::string text((std::istreambuf_iterator<char>(file)), {});
    return boost::json::parse(text).at(variable).as_array();
}

/// Records of the definitions of units or quantities, by name.
std::map<std::string, boost::json::value> definitions(std::string_view variable) {
    std::map<std::string, boost::json::value> byName;
    for (const auto& record : records("unitdefinitions.oxd", variable)) {
        byName.emplace(record.at("Name").as_string(), record);
    }
    return byName;
}

std::string field(const boost::json::value& record, std::string_view name) {
    const auto* const value = record.as_object().if_contains(name);
    return value == nullptr ? "" : std::string(value->as_string());
}

} // namespace

TEST(UnitData, LoadsWithoutWarnings) {
    std::vector<std::string> warnings;
    const auto before = tvsvSetWarningHandler(
        [&](const tvsvDiagnosticImpl& warning) { warnings.push_back(messageSummary(warning)); });
    EXPECT_NO_ERROR(UnitDatabase::getUnitDatabase());
    tvsvSetWarningHandler(before);
    EXPECT_EQ(warnings, std::vector<std::string>());
    EXPECT_EQ(database().getNumUnits(), catalogue().units().size());
    EXPECT_EQ(database().getNumAbstractUnits(), catalogue().quantities().size());
    EXPECT_EQ(database().getNumUnitSystems(), catalogue().systems().size());
    EXPECT_GE(database().getNumUnits(), 1200);
}

TEST(UnitData, MatchesDefinitions) {
    for (const tvdata::Unit& defined : catalogue().units()) {
        SCOPED_TRACE(defined.name);
        const auto found = database().getUnit(to_ustring(defined.name));
        ASSERT_EQ(found.size(), 1);
        const auto& unit = static_cast<const Unit&>(found.begin()->get());
        std::vector<std::string> texts = defined.aliases;
        texts.push_back(defined.symbol);
        for (const std::string& text : texts) {
            const auto same = database().getUnit(to_ustring(text));
            ASSERT_EQ(same.size(), 1) << text;
            EXPECT_EQ(&same.begin()->get(), &unit) << text;
        }
        // Exact if there is an exact representation.
        const bool isExact = !tvdata::exactForms(defined.factor.value()).empty();
        EXPECT_TRUE(isNear(unit.baseScalingFactor, defined.factor.value(), isExact ? 0 : 1e-12));
        EXPECT_EQ(dimensionOf(unit), defined.dimension);
        EXPECT_EQ(valueOf(unit.offset), tvdata::valueOf(defined.offset));
        EXPECT_EQ(unit.abstractUnit.get().name, to_ustring(defined.quantity));
        EXPECT_EQ(unit.display, defined.display);
        EXPECT_FALSE(unit.ownerUnitSystems.empty());
    }
}

// Units in the database are copies, whose precision flag is reset.
TEST(UnitData, LosesNoDigits) {
    int lossy = 0;
    for (const UnitBase& unit : database().getAllUnits()) {
        const std::unique_ptr<TVTypeSys::Unit> read(
            TVTypeSys::UnitFactory::createUnit(unit.expression, unit.scaling, unit.offset,
                                               TVTypeSys::UnitFactory::getDefaultAbstractUnit()));
        read->parseExpressionAndGenerateAST();
        lossy += read->baseScalingFactor.precision();
    }
    EXPECT_EQ(lossy, 0);
}

TEST(UnitData, ComputesCompoundsExactly) {
    UnitTable table;
    for (const std::string& text : compounds()) {
        SCOPED_TRACE(text);
        const UnitBase* const unit = table.getUnit(table.registerUnit(text.c_str(), true));
        ASSERT_NE(unit, nullptr);
        const auto* const defined = catalogue().findUnit(text);
        const auto meaning = meaningOf(text);
        ASSERT_TRUE(defined != nullptr || meaning);
        EXPECT_TRUE(isNear(unit->baseScalingFactor,
                           meaning ? meaning->factor : defined->factor.value(), 2e-12));
        EXPECT_EQ(dimensionOf(*unit), meaning ? meaning->dimension : defined->dimension);
        EXPECT_EQ(unit->baseScalingFactor.precision(), 0);
    }
    EXPECT_GE(table.getNumUnits(), 1000);
}

// Otherwise Btu/lb, an alias, could not be converted to kJ/kg, which is parsed.
TEST(UnitData, CompoundAliasesMatchTheirText) {
    int count = 0;
    for (const tvdata::Unit& unit : catalogue().units()) {
        for (const std::string& alias : unit.aliases) {
            // In a compound, degrees Fahrenheit are a difference.
            const auto meaning = meaningOf(boost::replace_all_copy(alias, "degF", "degR"));
            if (meaning && tvdata::parseExpression(alias).size() > 1) {
                ++count;
                EXPECT_EQ(meaning->factor, unit.factor.value()) << alias;
                EXPECT_EQ(meaning->dimension, unit.dimension) << alias;
            }
        }
    }
    EXPECT_GE(count, 100);
}

// Factors of the database through its expressions, from the field "Exact" if there is one.
TEST(UnitData, ExactFieldsMatchDefinitions) {
    std::map<std::string, tvdata::Number, std::less<>> factors;
    std::map<std::string, boost::json::value> defined = definitions("units");
    int measured = 0;
    for (const auto& record : records("unitdatabase.oxd", "units")) {
        const boost::json::value& definition =
            defined.try_emplace(field(record, "Name"), boost::json::object()).first->second;
        const std::string symbol = field(record, "Symbol");
        SCOPED_TRACE(symbol);
        const auto part = [&](const std::string& name) {
            return record.at(name + "OfScaling").to_number<int>();
        };
        tvdata::Number factor{
            tvdata::valueOf({part("Numerator"), part("Denominator"), part("Base10Exponent")})};
        if (const std::string exact = field(definition, "Exact"); !exact.empty()) {
            const std::regex exponent("e([-0-9]+)");
            const auto number = tvdata::parseNumber(std::regex_replace(exact, exponent, "*10^$1"));
            EXPECT_LT(abs(factor.rational / number.value() - 1), tvdata::raised(Exact(10), -12));
            factor = number;
        }
        if (const std::string uncertainty = field(definition, "Uncertainty");
            !uncertainty.empty()) {
            factor.uncertainty = Exact(std::stod(uncertainty));
            ++measured;
        }
        for (const auto& [term, power] : tvdata::parseExpression(field(record, "Expression"))) {
            factor *= tvdata::raised(factors[term], power);
        }
        const tvdata::Number& source = catalogue().findUnit(symbol)->factor;
        EXPECT_EQ(factor.rational, source.rational);
        EXPECT_EQ(factor.piPower, source.piPower);
        // Two digits.
        EXPECT_NEAR(static_cast<double>(factor.uncertainty),
                    static_cast<double>(source.uncertainty),
                    0.05 * static_cast<double>(source.uncertainty));
        factors.emplace(symbol, factor);
    }
    EXPECT_GE(measured, 15);
}

TEST(UnitData, ListsCommonUnits) {
    std::map<std::string, int> unitCounts;
    std::set<std::string> coherent;
    for (const tvdata::Unit& unit : catalogue().units()) {
        ++unitCounts[unit.quantity];
        if (unit.factor.value() == 1 && unit.offset.numerator == 0) {
            coherent.insert(unit.quantity);
        }
    }
    std::map<std::string, boost::json::value> common = definitions("quantities");
    EXPECT_LT(30, common.size());
    for (const tvdata::Quantity& quantity : catalogue().quantities()) {
        const std::string& name = quantity.name;
        SCOPED_TRACE(name);
        const auto symbols = tvdata::splitList(
            field(common.try_emplace(name, boost::json::object()).first->second, "Common"));
        EXPECT_TRUE(!symbols.empty() || unitCounts[name] <= 1);
        EXPECT_EQ(std::set(symbols.begin(), symbols.end()).size(), symbols.size());
        for (const std::string& symbol : symbols) {
            EXPECT_EQ(catalogue().findUnit(symbol)->quantity, name) << symbol;
        }
        if (!symbols.empty() && coherent.contains(name)) {
            EXPECT_EQ(catalogue().findUnit(symbols.front())->factor.value(), 1);
        }
    }
}

TEST(UnitData, AngleRatiosAreExact) {
    const auto factor = [](const char16_t* text) {
        return valueOf(database().getUnit(text).begin()->get().baseScalingFactor);
    };
    EXPECT_EQ(factor(u"rev"), 360 * factor(u"deg"));
    EXPECT_EQ(factor(u"deg"), 60 * factor(u"arcmin"));
    EXPECT_EQ(factor(u"arcmin"), 60 * factor(u"arcsec"));
    EXPECT_EQ(factor(u"rev"), 400 * factor(u"gon"));
    EXPECT_EQ(factor(u"rev"), 60 * factor(u"rpm"));
}

// Factors as handbooks print them: from a unit, to a unit, factor.
TEST(UnitData, MatchesHandbooks) {
    UnitTable table;
    const auto unit = [&](const std::string& text) -> const UnitBase& {
        return *table.getUnit(table.registerUnit(text.c_str(), true));
    };
    std::ifstream file(TVTYPES_TEST_DATA "/handbook_factors.txt");
    int count = 0;
    std::string from;
    std::string to;
    for (double expected = 0; file >> from >> to >> expected; ++count) {
        const double factor = unit(from).getScalingFactorToConvertTo(unit(to));
        EXPECT_NEAR(factor / expected, 1, 2e-12) << from << " in " << to;
    }
    EXPECT_TRUE(file.eof());
    EXPECT_GE(count, 75);
}

} // namespace TVTypeSys
