#include "support.h"

#include <gmock/gmock.h>

#include <cmath>

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
    } rows[] = {{"km/h", "m/s", "5/18"},  {"m/s", "km/h", "3.6"},       {"ft", "in", "12"},
                {"kW.h", "J", "3600000"}, {"m^2", "cm\u00B2", "10000"}, {"h^-1", "1/s", "1/3600"},
                {"K", "K", "1"},          {"gallon", "gallon", "1"}};
    for (const auto& row : rows) {
        const Outcome outcome = run({"unit", "--factor", "--json", row.from, row.to});
        ASSERT_EQ(outcome.status, 0) << row.from << ' ' << row.to << outcome.out << outcome.err;
        const boost::json::object factor = outcome.json();
        EXPECT_EQ(factor.at("exact"), row.exact) << row.from << ' ' << row.to;
        EXPECT_EQ(factor.at("differs").as_bool(), !outcome.err.empty());
        const double exact = factor.at("exactDecimal").to_number<double>();
        EXPECT_NEAR(factor.at("factor").to_number<double>() / exact, 1, 1e-8);
    }
}

TEST(UnitCommand, ReportsPositionOfInvalidUnit) {
    const std::pair<const char*, const char*> rows[] = {
        {"kg*newtn", "tvtypes: \"kg*newtn\": column 4: the unit is not known; did you mean newton"},
        {"\u00B5m*xyzzy/s", "column 4: the unit is not known\n  \u00B5m*xyzzy/s\n     ^\n"},
        {"u^41", "its factor is beyond the rational numbers of the library"},
        {"kg*m)", "column 5: expected a sign such as *, / or ^, or the end\n  kg*m)\n      ^\n"},
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
    const Outcome outcome = run(
        {"unit", "(" + std::string(9999, '(') + "m" + std::string(10000, ')'), "km^2147483647"});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_LT(outcome.out.size(), 5000U);
}

} // namespace

} // namespace tvtool
