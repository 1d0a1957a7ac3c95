// The units that everybody has: what the library holds, against what the sources define.
#include "catalogue.h"
#include "fault.h"
#include "source_file.h"
#include "support/refusal.h"

#include <tvtypes/units.h>

#include <fndi18n/ustring.h>
#include <tv_services/diagnostics.h>

#include <boost/algorithm/string/replace.hpp>
#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <iterator>
#include <memory>

namespace TVTypeSys {

namespace {

using fnd::i18n::to_ustring;
using tvdata::Exact;

const tvdata::Catalogue& catalogue() {
    static const tvdata::Catalogue all = [] {
        tvdata::Catalogue read;
        for (const std::string& path : tvdata::splitList(TVTYPES_UNIT_SOURCES)) {
            tvdata::readSourceFile(path, read);
        }
        return read;
    }();
    return all;
}

const UnitDatabase& database() { return *UnitDatabase::getUnitDatabase(); }

Exact valueOf(const Rational& number) {
    return tvdata::valueOf({number.numerator(), number.denominator(), number.exponent()});
}

/// How far a factor may be from the product of those that it is made of.
testing::AssertionResult isNear(const Rational& factor, const Exact& exact, double tolerance) {
    const auto error = static_cast<double>(valueOf(factor) / exact - 1);
    return std::abs(error) <= tolerance
               ? testing::AssertionSuccess()
               : testing::AssertionFailure() << factor.toString() << " is off by " << error;
}

/// Powers by the symbols of the fundamental units, those of 0 included.
tvdata::Powers dimensionOf(const UnitBase& unit) {
    tvdata::Powers dimension;
    for (const auto& [base, info] : unit.fundamentalExprAST) {
        dimension.emplace(ConvertUStringToStdString(base.get().symbol, true), info.power);
    }
    return dimension;
}

/// What a text means by its parts, whether or not it is an alias.
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
            meaning.factor *= tvdata::raised(unit->factor, power);
            // A unit with an offset is not taken apart.
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

std::vector<std::string> compounds() {
    std::ifstream file(TVTYPES_UNIT_COMPOUNDS);
    return {std::istream_iterator<std::string>(file), {}};
}

} // namespace

TEST(UnitData, LoadsWithoutAWarning) {
    std::vector<std::string> warnings;
    const auto before = tvsvSetWarningHandler(
        [&](const tvsvDiagnosticImpl& warning) { warnings.push_back(summaryOf(warning)); });
    EXPECT_ACCEPTED(UnitDatabase::getUnitDatabase());
    tvsvSetWarningHandler(before);
    EXPECT_EQ(warnings, std::vector<std::string>());
    EXPECT_EQ(database().getNumUnits(), catalogue().units().size());
    EXPECT_EQ(database().getNumAbstractUnits(), catalogue().quantities().size());
    EXPECT_EQ(database().getNumUnitSystems(), catalogue().systems().size());
    EXPECT_GE(database().getNumUnits(), 1200);
}

TEST(UnitData, UnitsAreAsDefinedUnderEachOfTheirTexts) {
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
        // Exact if there is any way to hold it.
        const bool isExact = !tvdata::exactForms(defined.factor).empty();
        EXPECT_TRUE(isNear(unit.baseScalingFactor, defined.factor, isExact ? 0 : 1e-12));
        EXPECT_EQ(dimensionOf(unit), defined.dimension);
        EXPECT_EQ(valueOf(unit.offset), tvdata::valueOf(defined.offset));
        EXPECT_EQ(unit.abstractUnit.get().name, to_ustring(defined.quantity));
        EXPECT_EQ(unit.display, defined.display);
        EXPECT_FALSE(unit.ownerUnitSystems.empty());
    }
}

// The units in the database are copies, which do not have the flag any more.
TEST(UnitData, NoUnitLosesDigitsWhenItIsRead) {
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

TEST(UnitData, CompoundsComeOutRight) {
    UnitTable table;
    for (const std::string& text : compounds()) {
        SCOPED_TRACE(text);
        const UnitBase* const unit = table.getUnit(table.registerUnit(text.c_str(), true));
        ASSERT_NE(unit, nullptr);
        const auto* const defined = catalogue().findUnit(text);
        const auto meaning = meaningOf(text);
        ASSERT_TRUE(defined != nullptr || meaning);
        EXPECT_TRUE(
            isNear(unit->baseScalingFactor, meaning ? meaning->factor : defined->factor, 2e-12));
        EXPECT_EQ(dimensionOf(*unit), meaning ? meaning->dimension : defined->dimension);
        EXPECT_EQ(unit->baseScalingFactor.precision(), 0);
    }
    EXPECT_GE(table.getNumUnits(), 1000);
}

// Otherwise Btu/lb could not be converted to kJ/kg, which the parser reads.
TEST(UnitData, AliasesThatAreCompoundsMeanWhatTheySay) {
    int count = 0;
    for (const tvdata::Unit& unit : catalogue().units()) {
        for (const std::string& alias : unit.aliases) {
            // Degrees Fahrenheit are meant as a difference there.
            const auto meaning = meaningOf(boost::replace_all_copy(alias, "degF", "degR"));
            if (meaning && tvdata::parseExpression(alias).size() > 1) {
                ++count;
                EXPECT_EQ(meaning->factor, unit.factor) << alias;
                EXPECT_EQ(meaning->dimension, unit.dimension) << alias;
            }
        }
    }
    EXPECT_GE(count, 100);
}

TEST(UnitData, AnglesAreExactAmongEachOther) {
    const auto factor = [](const char16_t* text) {
        return valueOf(database().getUnit(text).begin()->get().baseScalingFactor);
    };
    EXPECT_EQ(factor(u"rev"), 360 * factor(u"deg"));
    EXPECT_EQ(factor(u"deg"), 60 * factor(u"arcmin"));
    EXPECT_EQ(factor(u"arcmin"), 60 * factor(u"arcsec"));
    EXPECT_EQ(factor(u"rev"), 400 * factor(u"gon"));
    EXPECT_EQ(factor(u"rev"), 60 * factor(u"rpm"));
}

// What handbooks print, so that a slip in a definition is found.
TEST(UnitData, AgreesWithHandbooks) {
    struct Row {
        const char* from;
        const char* to;
        double factor;
    };
    constexpr double pi = 3.14159265358979323846;
    UnitTable table;
    const auto unit = [&](const char* text) -> const UnitBase& {
        return *table.getUnit(table.registerUnit(text, true));
    };
    for (const Row& row :
         std::initializer_list<Row>{{"ft", "in", 12},
                                    {"mi", "ft", 5280},
                                    {"nmi", "m", 1852},
                                    {"yd", "m", 0.9144},
                                    {"mil", "um", 25.4},
                                    {"au", "km", 149597870.7},
                                    {"ly", "m", 9.4607304725808e15},
                                    {"pc", "m", 3.0856775814913673e16},
                                    {"angstrom", "nm", 0.1},
                                    {"ha", "m^2", 1e4},
                                    {"ac", "m^2", 4046.8564224},
                                    {"barn", "m^2", 1e-28},
                                    {"gal", "L", 3.785411784},
                                    {"gal_imp", "L", 4.54609},
                                    {"floz", "mL", 29.5735295625},
                                    {"bbl", "L", 158.987294928},
                                    {"bu", "L", 35.23907016688},
                                    {"tsp", "mL", 4.92892159375},
                                    {"gpm", "L/s", 0.0630901964},
                                    {"cfm", "L/s", 0.4719474432},
                                    {"mph", "m/s", 0.44704},
                                    {"kn", "km/h", 1.852},
                                    {"mpg", "km/L", 0.42514370743027200},
                                    {"L/100km", "L/km", 0.01},
                                    {"oz", "g", 28.349523125},
                                    {"gr", "mg", 64.79891},
                                    {"ton", "kg", 907.18474},
                                    {"slug", "kg", 14.593902937206365},
                                    {"ozt", "g", 31.1034768},
                                    {"Da", "g", 1.66053906892e-24},
                                    {"lbf", "N", 4.4482216152605},
                                    {"kgf", "N", 9.80665},
                                    {"dyn", "uN", 10},
                                    {"pdl", "N", 0.138254954376},
                                    {"psi", "kPa", 6.894757293168361},
                                    {"atm", "bar", 1.01325},
                                    {"Torr", "Pa", 133.32236842105263},
                                    {"mmHg", "Pa", 133.322387415},
                                    {"inHg", "kPa", 3.386388640341},
                                    {"psf", "Pa", 47.88025898033584},
                                    {"lbf*ft", "N*m", 1.3558179483314004},
                                    {"slug*ft^2", "kg*m^2", 1.3558179483314004},
                                    {"lb/ft^3", "kg/m^3", 16.018463373960139},
                                    {"P", "Pa*s", 0.1},
                                    {"St", "cm^2/s", 1},
                                    {"kWh", "MJ", 3.6},
                                    {"eV", "J", 1.602176634e-19},
                                    {"cal", "J", 4.184},
                                    {"Btu", "kJ", 1.05505585262},
                                    {"erg", "nJ", 100},
                                    {"hp", "W", 745.69987158227022},
                                    {"PS", "W", 735.49875},
                                    {"TR", "kW", 3.5168528420666667},
                                    {"Btu/lb", "kJ/kg", 2.326},
                                    {"Btu/(lb*degR)", "kJ/(kg*K)", 4.1868},
                                    {"Btu/(h*ft^2)", "W/m^2", 3.15459074506305},
                                    {"Btu/(h*ft^2*degR)", "W/(m^2*K)", 5.6782633411134878},
                                    {"Btu/(h*ft*degR)", "W/(m*K)", 1.7307346663713911},
                                    {"R_us", "m^2*K/W", 0.17611018368230585},
                                    {"lb/(hp*h)", "g/kWh", 453.59237 / 0.74569987158227022},
                                    {"degR", "K", 5.0 / 9},
                                    {"Ah", "C", 3600},
                                    {"G", "uT", 100},
                                    {"Oe", "A/m", 250 / pi},
                                    {"Mx", "nWb", 10},
                                    {"fc", "lx", 10.763910416709722},
                                    {"statC", "nC", 0.33356409519815206},
                                    {"Ci", "GBq", 37},
                                    {"R", "uC/kg", 258},
                                    {"rem", "mSv", 10},
                                    {"M", "mol/m^3", 1000},
                                    {"GiB", "B", 1073741824},
                                    {"kB", "kbit", 8},
                                    {"min", "s", 60},
                                    {"wk", "h", 168},
                                    {"yr", "d", 365.25},
                                    {"deg", "rad", pi / 180},
                                    {"rpm", "rad/s", pi / 30},
                                    {"dB", "Np", 0.11512925464970228}}) {
        const double factor = unit(row.from).getScalingFactorToConvertTo(unit(row.to));
        EXPECT_NEAR(factor / row.factor, 1, 2e-12) << row.from << " in " << row.to;
    }
}

} // namespace TVTypeSys
