#include "exact/pi.h"
#include "support.h"
#include "support/random_seed.h"
#include "text/utf16.h"
#include "units/definitions.h"
#include "units/factor.h"

#include <fnd/filesystem.h>
#include <tvtypes/units.h>

#include <boost/math/constants/constants.hpp>
#include <boost/multiprecision/cpp_bin_float.hpp>
#include <fmt/format.h>
#include <gmock/gmock.h>

#include <cstdlib>
#include <map>
#include <random>

namespace tvtool::units {

namespace {

namespace json = boost::json;
using testing::HasSubstr;

/// The path of a file in the folder of the database, relative to the root of an installation.
std::string relativePath(const char* fileName) {
    return std::filesystem::path(TVTypeSys::UnitDatabase::unitDBPath.substr(1))
        .replace_filename(fileName)
        .string();
}

json::value readInstalled(const char* fileName) {
    const std::string root = text::toUtf8(fnd::filesystem::get_install_path());
    return json::parse(readFile(root + '/' + relativePath(fileName)));
}

TEST(ExactNumbers, RoundsLikeTheParserOfC) {
    std::mt19937_64 random(randomSeed(17));
    for (int i = 0; i < 20000; ++i) {
        // Every tenth one is subnormal or near it.
        const auto exponent = i % 10 == 0 ? -330 - static_cast<int>(random() % 30)
                                          : static_cast<int>(random() % 640) - 340;
        const std::string text = fmt::format("{}{}e{}", random(), random(), exponent);
        EXPECT_EQ(exact::toDouble(exact::parseDecimal(text)), std::strtod(text.c_str(), nullptr))
            << text;
    }
}

TEST(ExactNumbers, FormatsFewestDigits) {
    const exact::Number third(1, 3);
    const struct {
        exact::Number number;
        const char* text;
        bool isExact = true;
    } rows[] = {
        {0, "0"},
        {exact::parseDecimal("-4.4482216152605"), "-4.4482216152605"},
        {exact::parseDecimal("123456789012345678.901234"), "1.23456789012345678901234e+17"},
        {exact::powerOfTen(15), "1000000000000000"},
        {exact::powerOfTen(16), "1e+16"},
        {exact::powerOfTen(-6), "0.000001"},
        {exact::powerOfTen(-7), "1e-07"},
        {third, "0.3333333333333333", false},
        {-third * exact::powerOfTen(-20), "-3.3333333333333333e-21", false},
        {third * exact::powerOfTen(400), "3.3333333333333333e+399", false},
        {exact::pi(), "3.141592653589793", false},
    };
    for (const auto& row : rows) {
        const exact::Decimal decimal = exact::shortestDecimal(row.number);
        EXPECT_EQ(decimal.text, row.text);
        EXPECT_EQ(decimal.isExact, row.isExact) << row.text;
    }
}

TEST(UnitDefinitions, AreParsedAndFormatted) {
    const std::pair<const char*, const char*> rows[] = {
        {"4.4482216152605", "4.4482216152605"},
        {"44482216152605e-13", "4.4482216152605"},
        {"8896443230521/2000000000000", "4.4482216152605"},
        {"1e-3/3", "1/3000"},
        {"pi*1/180", "pi/180"},
        {"pi*2", "2*pi"},
        {"pi^2*1/32400", "pi^2/32400"},
        {"pi^-1*648000", "648000/pi"},
        {"pi^-1*5/18", "5/(18*pi)"},
        {"pi*16129e-14", "16129*10^-14*pi"}};
    for (const auto& [text, expected] : rows) {
        const Definition definition = parseDefinition(text);
        EXPECT_EQ(exact::multipleOfPiText(definition.factor, definition.piPower), expected);
    }
    for (const char* const text : {"", "pi", "pi*", "pi2*1", "pi^*1", "pi^0*1", "pi^x*1", "1/",
                                   "/2", "1/0", "0", "-1", "x", "1/2/3", "pi^999999999*1"}) {
        EXPECT_THROW(parseDefinition(text), std::invalid_argument) << text;
    }
}

using Float = boost::multiprecision::cpp_bin_float_100;

/// Computes factors of units from the records of the database and of definitions, to 100 digits.
class ReferenceModel {
  public:
    ReferenceModel(const json::array& units, const json::array& definitions) {
        std::map<std::string, std::string> symbols;
        for (const json::value& unit : units) {
            const std::string name(unit.at("Name").as_string());
            symbols[name] = unit.at("Symbol").as_string();
            byKey_[name] = byKey_[symbols[name]] = unit.as_object();
        }
        for (const json::value& definition : definitions) {
            const std::string name(definition.at("Name").as_string());
            byKey_.at(name)["Exact"] = byKey_.at(symbols.at(name))["Exact"] =
                definition.at("Exact");
        }
    }

    Float factor(const std::string& key) const {
        const json::object& unit = byKey_.at(key);
        const auto text = [&unit](const char* field) {
            return std::string(unit.at(field).as_string());
        };
        if (text("Expression") == text("Symbol")) {
            return 1;
        }
        Float product = unit.contains("Exact") ? definition(text("Exact")) : scaling(unit);
        Monomial terms;
        EXPECT_TRUE(parseUnitExpr(text::toUtf16(text("Expression")), terms));
        for (std::size_t i = 0; i < terms.names.size(); ++i) {
            product *= pow(factor(text::toUtf8(terms.names[i])), terms.powers[i]);
        }
        return product;
    }

  private:
    static Float scaling(const json::object& unit) {
        const auto part = [&unit](const char* field) {
            return unit.at(field).to_number<std::int64_t>();
        };
        return Float(part("NumeratorOfScaling")) / part("DenominatorOfScaling") *
               pow(Float(10), part("Base10ExponentOfScaling"));
    }

    static Float definition(const std::string& text) {
        const std::size_t times = text.find('*') + 1;
        const std::size_t solidus = std::min(text.find('/'), text.size());
        const int power = times == 0 ? 0 : text[2] == '^' ? std::stoi(text.substr(3)) : 1;
        const Float divisor = solidus < text.size() ? Float(text.substr(solidus + 1)) : Float(1);
        return Float(text.substr(times, solidus - times)) / divisor *
               pow(boost::math::constants::pi<Float>(), power);
    }

    std::map<std::string, json::object> byKey_;
};

TEST(UnitFactors, AreRoundedCorrectly) {
    const json::value database = readInstalled("unitdatabase.oxd");
    const json::array& units = database.at("units").as_array();
    const ReferenceModel model(units, readInstalled("unitdefinitions.oxd").at("units").as_array());
    TVTypeSys::UnitTable table;
    std::mt19937 random(randomSeed(17));
    int pairs = 0;
    while (pairs < 1000) {
        const json::value& from = units[random() % units.size()];
        const json::value& to = units[random() % units.size()];
        if (from.at("AbstractUnit") != to.at("AbstractUnit")) {
            continue;
        }
        const std::string fromName(from.at("Name").as_string());
        const std::string toName(to.at("Name").as_string());
        const UnitFactor factor = factorBetween(fromName, toName, Values::Differences, table);
        if (!factor.factor) {
            continue; // a quantity with units of several canonical forms
        }
        ++pairs;
        const Float expected = model.factor(fromName) / model.factor(toName);
        ASSERT_TRUE(factor.own) << fromName << ' ' << toName;
        // The model has an error, which matters for ties such as 10^23.
        const Float error = expected * Float("1e-90");
        EXPECT_GE(factor.own->decimal, static_cast<double>(Float(expected - error))) << fromName;
        EXPECT_LE(factor.own->decimal, static_cast<double>(Float(expected + error))) << toName;
        EXPECT_EQ(std::stod(factor.own->digits), factor.own->decimal) << factor.own->digits;
    }
}

/// An installation with a further definition, which the process uses.
class FurtherDefinition {
  public:
    FurtherDefinition(const char* name, const char* factor) {
        json::value definitions = readInstalled("unitdefinitions.oxd");
        definitions.at("units").as_array().push_back({{"Name", name}, {"Exact", factor}});
        const std::string path = relativePath("unitdefinitions.oxd");
        const std::filesystem::path root =
            std::filesystem::path(folder_.write("root", "")).parent_path();
        std::filesystem::create_directories((root / path).parent_path());
        folder_.write(path, json::serialize(definitions));
        folder_.write(relativePath("unitdatabase.oxd"),
                      json::serialize(readInstalled("unitdatabase.oxd")));
        moveTo(root.u16string());
    }
    ~FurtherDefinition() { moveTo(u""); }

  private:
    static void moveTo(const std::u16string& root) {
        TVTypeSys::UnitDatabase::getUnitDatabase()->clearAll();
        fnd::filesystem::set_install_path(root);
    }

    TemporaryFolder folder_;
};

TEST(UnitFactors, OfTheLibraryAreComparedWithDefinitions) {
    const struct {
        const char* definition; // of the inch, which is 0.0254 in the library
        int status;
        const char* note;
    } rows[] = {{"0.0254000000000000001", 0, ""},
                {"0.025400000001", 0, "factor is 0.0254, a relative difference of 3.9e-11"},
                {"0.0254001", 1, "the library's factor is wrong: 0.0254"}};
    for (const auto& row : rows) {
        const FurtherDefinition definition("inch", row.definition);
        const Outcome outcome = run({"unit", "--factor", "in", "m"});
        EXPECT_EQ(outcome.status, row.status) << row.definition;
        EXPECT_EQ(outcome.out, fmt::format("{}\n", row.definition));
        EXPECT_THAT(outcome.err, HasSubstr(row.note));
        EXPECT_EQ(outcome.err.empty(), *row.note == '\0');
        EXPECT_THAT(run({"unit", "in"}).out, HasSubstr(row.note));
        EXPECT_EQ(run({"unit", "2", "in", "m"}).err.empty(), row.status == 0);
    }
    const FurtherDefinition definition("inch", "pi*");
    expectRejection(run({"unit", "in"}), "inch of the database is malformed");
}

} // namespace

} // namespace tvtool::units
