#include "support.h"

#include <gmock/gmock.h>

namespace tvtool {

namespace {

using testing::HasSubstr;

TEST(UnitCommand, ShowsDetails) {
    const Outcome outcome = run({"unit", "degF", "N.m"});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    for (const char* const part :
         {"(degF)", "thermodynamic_temperature", "K^1", "5/9", "K = 5/9 * x + 45967/180",
          "Imperial", "read as", "N*m", "kg^1m^2s^-2"}) {
        EXPECT_THAT(outcome.out, HasSubstr(part));
    }
    const boost::json::object details =
        run({"unit", "--json", "mile"}).json().at("units").at(0).as_object();
    EXPECT_EQ(details.at("symbol"), "mi");
    EXPECT_EQ(details.at("quantity"), "length");
    EXPECT_EQ(details.at("factor"), "1609.344");
    EXPECT_EQ(details.at("factorDecimal"), 1609.344);
    EXPECT_GT(details.at("convertibleCount").as_int64(), 12);
    EXPECT_EQ(details.at("convertible").as_array().size(), 12U);
}

TEST(UnitCommand, ComputesFactors) {
    const struct {
        const char* from;
        const char* to;
        const char* exact;
        const char* text = exact;
    } rows[] = {{"km/h", "m/s", "5/18", "5/18 (about 0.2777777777777778)"},
                {"m/s", "km/h", "3.6"},
                {"yd", "in", "36"},
                {"kW.h", "J", "3600000"},
                {"m^2", "cm\u00B2", "10000"},
                {"h^-1", "1/s", "1/3600", "1/3600 (about 0.0002777777777777778)"},
                {"K", "K", "1"},
                {"gallon", "gallon", "1"},
                {"lbf", "N", "4.4482216152605"},
                {"deg", "rad", "pi/180", "pi/180 (about 0.017453292519943295)"},
                {"rev", "deg", "360"},
                {"kDa", "Da", "1000"},
                {"GJ", "J", "10^9", "1000000000"}};
    for (const auto& row : rows) {
        const Outcome outcome = run({"unit", "--factor", "--json", row.from, row.to});
        ASSERT_EQ(outcome.status, 0) << row.from << ' ' << row.to << outcome.out << outcome.err;
        const boost::json::object factor = outcome.json();
        EXPECT_EQ(factor.at("exact"), row.exact) << row.from << ' ' << row.to;
        EXPECT_EQ(factor.at("differs").as_bool(),
                  outcome.err.find("the library's factor is") != std::string::npos);
        EXPECT_TRUE(factor.at("uncertainty").is_null());
        EXPECT_EQ(run({"unit", "--factor", row.from, row.to}).out, row.text + std::string("\n"));
    }
}

TEST(UnitCommand, ListsCommonUnitsFirst) {
    const std::pair<const char*, const char*> rows[] = {
        {"kWh", "3600000 J, 3600 kJ, 3.6 MJ, "},
        {"g", "0.001 kg, 1000 mg, "},
        {"N*m", "1 J, 1 Nm, "},
        {"degC", "x + 273.15 K, 1.8 * x + 32 degF, "},
        {"permil", "0.001 one, 0.1 percent, "}};
    for (const auto& [unit, list] : rows) {
        EXPECT_THAT(run({"unit", unit}).out, HasSubstr("  converts to   " + std::string(list)));
    }
    const boost::json::object gram = run({"unit", "--json", "g"}).json();
    const boost::json::value& first = gram.at("units").at(0).at("conversions").at(0);
    EXPECT_EQ(first.at("symbol"), "kg");
    EXPECT_EQ(first.at("factor"), 0.001);
}

TEST(UnitCommand, ConvertsInputOfAnyLength) {
    const Outcome outcome =
        run({"unit", "--json", "-", "m", "ft"}, repeatedText(" 3.048\n", 20000));
    const boost::json::array values = outcome.json().at("values").as_array();
    ASSERT_EQ(values.size(), 20000U);
    EXPECT_EQ(values.back().at("result"), 10.0);
    EXPECT_EQ(values.back().at("exact"), "10");
    // The values before an invalid one are in a complete object.
    const Outcome invalid = run({"unit", "--json", "-", "m", "ft"}, "1\n\n 2 3,5 4");
    EXPECT_EQ(invalid.status, 2);
    EXPECT_EQ(invalid.err, "tvtypes: standard input:3: \"3,5\" is not a decimal number\n");
    EXPECT_EQ(invalid.json().at("values").as_array().size(), 2U);
    EXPECT_EQ(invalid.json().at("error").at("line"), 3);
    for (const std::size_t length : {4001U, 1000000U}) {
        const Outcome tooLong = run({"unit", "-", "m", "ft"}, std::string(length, '7'));
        EXPECT_EQ(tooLong.status, 2);
        EXPECT_LT(tooLong.err.size(), 300U);
    }
}

TEST(UnitCommand, ReportsPositionOfInvalidUnit) {
    const std::pair<const char*, const char*> rows[] = {
        {"kg*newtn", "tvtypes: \"kg*newtn\": column 4: the unit is not known; did you mean newton"},
        {"\u00B5m*xyzzy/s", "column 4: the unit is not known\n  \u00B5m*xyzzy/s\n     ^\n"},
        {"u^41", "its factor is beyond the rational numbers of the library"},
        {"kg*m)", "column 5: expected a sign such as *, / or ^, or the end\n  kg*m)\n      ^\n"},
        {"0*m", "zero times a unit is not a unit"},
        {"km/(0*m)", "column 5: expected a divisor other than 0"},
        {"m^\x1b[31m", "  m^\\u001b[31m\n    ^\n"}};
    for (const auto& [text, error] : rows) {
        // Valid units are shown although another one is invalid.
        const Outcome outcome = run({"unit", text, "km"});
        EXPECT_EQ(outcome.status, 2);
        EXPECT_THAT(outcome.err, HasSubstr(error));
        EXPECT_THAT(outcome.out, HasSubstr("length"));
    }
}

TEST(UnitCommand, FindsUnits) {
    const auto texts = [](const boost::json::value& rows, const char* member) {
        std::vector<std::string> all;
        for (const boost::json::value& row : rows.as_array()) {
            all.emplace_back(row.at(member).as_string());
        }
        return all;
    };
    const boost::json::object words = run({"unit", "--json", "--complete", "newt"}).json();
    EXPECT_THAT(texts(words.at("words"), "word"), testing::Contains("newton"));
    EXPECT_THAT(texts(words.at("words"), "word"), testing::Each(testing::StartsWith("newt")));
    const boost::json::object found = run({"unit", "--json", "--search", "PASCAL"}).json();
    EXPECT_THAT(texts(found.at("units"), "symbol"), testing::IsSupersetOf({"Pa", "kPa"}));
    const boost::json::object listed =
        run({"unit", "--json", "--list", "--system", "SI", "--quantity", "force"}).json();
    EXPECT_THAT(texts(listed.at("units"), "symbol"), testing::IsSupersetOf({"N", "kN"}));
    EXPECT_THAT(texts(listed.at("units"), "quantity"), testing::Each("force"));
}

TEST(UnitCommand, KeepsMessagesShortForLongTexts) {
    for (const std::string& text :
         {std::string(10000, '('), std::string(1000000, 'x'), "m" + std::string(1000000, '^'),
          "m" + repeatedText("*m/s", 200000) + "*xyzzy"}) {
        const Outcome outcome = run({"unit", text});
        EXPECT_EQ(outcome.status, 2);
        EXPECT_LT(outcome.err.size(), 1000U);
    }
    for (const char* const option : {"--factor", "1"}) {
        const Outcome outcome = run({"unit", option, "m" + repeatedText("*m", 100000), "s"});
        EXPECT_EQ(outcome.status, 1);
        EXPECT_LT(outcome.out.size() + outcome.err.size(), 1100U);
    }
    const Outcome outcome = run(
        {"unit", "(" + std::string(9999, '(') + "m" + std::string(10000, ')'), "km^2147483647"});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_LT(outcome.out.size(), 5000U);
}

} // namespace

} // namespace tvtool
