// Validation of unit definitions, and selection of factors.
#include "fault.h"
#include "source_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace tvdata {

namespace {

std::string expansionError(const std::string& unit, const std::string& combinations = "") {
    const auto path = std::filesystem::temp_directory_path() /
                      testing::UnitTest::GetInstance()->current_test_info()->name();
    std::ofstream(path) << R"({"systems": [{"name": "SI"}],
"prefixes": [{"name": "kilo", "symbol": "k", "factor": "10^3", "sets": "all"}],
"quantities": [{"name": "length", "is": "length"}, {"name": "ratio", "is": "length^0"}],
"units": [{"name": "metre", "symbol": "m", "quantity": "length", "systems": "SI", "is": "m"},
{"name": "foot", "symbol": "ft", "quantity": "length", "systems": "SI", "is": "0.3048 m"},
)" << unit << "]" << combinations
                        << "}";
    std::string fault = "accepted";
    try {
        Catalogue catalogue;
        CompoundFactors compounds(catalogue);
        readSourceFile(path.string(), catalogue, compounds);
    } catch (const Fault& error) {
        fault = error.what();
        EXPECT_TRUE(fault.starts_with(path.string() + ": ")) << fault;
    }
    std::filesystem::remove(path);
    return fault;
}

/// A unit with these fields, a name and a system.
std::string unit(const std::string& fields) {
    return R"({"name": "inch", "systems": "SI", )" + fields + "}";
}

} // namespace

TEST(UnitSource, ReportsInvalidRecords) {
    const std::string good = R"("symbol": "in", "quantity": "length", )";
    for (const auto& [fields, reason] : std::initializer_list<std::pair<std::string, std::string>>{
             {good + R"("is": "1/12 m", "alias": "inches")", "unknown field \"alias\""},
             {good + R"("aliases": "inches")", "\"is\" is missing"},
             {good + R"("is": "1/12 ft", "aliases": "inches,m")", "\"m\" already denotes metre"},
             {good + R"("is": "1/12 ft", "words": "a", "aliases": "a")",
              "already denotes this unit"},
             {good + R"("is": "1/12 ft", "aliases": "inches,,")", "empty part"},
             {good + R"("is": "1/12 ft", "aliases": "unitless")", "is reserved"},
             {good + R"("is": "1/12 span")", "the unit \"span\" is not defined"},
             {good + R"("is": "ft^2")", "the dimension is"},
             {good + R"("is": "ft*m/ft", "cancels": true)", "no base unit cancels"},
             {R"("symbol": "in", "quantity": "ratio", "is": "ft/m")", "\"cancels\" is not set"},
             {good + R"("is": "ft", "expression": "m^2")", "have different dimensions"},
             {good + R"("is": "ft", "expression": "ft")", "\"expression\" must consist of"},
             {good + R"("is": "1/12 ft*")", "syntax error in \"ft*\" at character 4"},
             {good + R"_("is": "1/12 ((ft))")_", "at character 2"},
             {good + R"("is": "1,2 ft")", "at character 2"},
             {good + R"("is": "0 ft")", "\"0\" is not positive"},
             {good + R"_("is": "1.2(3 ft")_", "at character 6"},
             {good + R"_("is": "1.2(3)*4(5) ft")_", "two measured values"},
             {good + R"("is": "1/12 ft", "exponent": 3)", "no exact form with the exponent 3"},
             {good + R"("is": "1/12 ft", "offset": "1/12345678901")", "\"offset\" has no exact"},
             {R"("symbol": "i-n", "quantity": "length", "is": "1/12 ft")",
              "must consist of letters"},
             {R"("symbol": "in", "quantity": "width", "is": "1/12 ft")",
              "unknown quantity \"width\""},
         }) {
        const std::string fault = expansionError(unit(fields));
        EXPECT_THAT(fault, testing::HasSubstr(reason)) << fields;
        EXPECT_THAT(fault, testing::HasSubstr("units, record 3 (inch): ")) << fields;
    }
    EXPECT_EQ(
        expansionError(unit(good + R"("is": "1/12 ft", "words": "inches", "prefixes": "all")")),
        "accepted");
}

TEST(UnitSource, ReportsInvalidCombinations) {
    const std::string inch = unit(R"("symbol": "in", "quantity": "length", "is": "1/12 ft")");
    for (
        const auto& [records, reason] : std::initializer_list<std::pair<const char*, const char*>>{
            {R"("classes": [{"name": "a", "units": "span"}])", "\"span\" is not defined"},
            {R"("classes": [{"name": "a", "common_units_of": "width"}])", "unknown quantity"},
            {R"("classes": [{"name": "a"}, {"name": "a"}])", "record 2 (a): the class is already"},
            {R"("combinations": [{"over": "a"}])", "combinations, record 1: the unit \"a\" is"},
            {R"("combinations": [{"above": "ft"}])", "unknown field \"above\""},
            {R"("classes": [{"name": "a", "units": "in,ft^2"}], "combinations": [{"under": "a,in"}])",
             "accepted"}}) {
        EXPECT_THAT(expansionError(inch, std::string(", ") + records), testing::HasSubstr(reason));
    }
}

TEST(UnitSource, SelectsNearestForm) {
    const auto form = [](const char* number, std::int32_t largest) {
        const Form nearest = nearestForm(parseNumber(number).value(), largest);
        return std::vector<int>{nearest.numerator, nearest.denominator, nearest.exponent};
    };
    // 355/113, the best approximation of pi within these parts, as 71/226*10.
    EXPECT_EQ(form("3.14159265358979", 400), (std::vector{71, 226, 1}));
    EXPECT_EQ(form("3.14159265358979*10^20", 400), (std::vector{71, 226, 21}));
    const auto exact = [](const char* number, std::optional<int> exponent) {
        const auto found = exactForm(parseNumber(number).value(), exponent);
        return found ? std::vector<int>{found->numerator, found->denominator, found->exponent}
                     : std::vector<int>{};
    };
    EXPECT_EQ(exact("0.3048", {}), (std::vector{381, 125, -1}));
    EXPECT_EQ(exact("0.3048", -2), (std::vector{762, 25, -2}));
    EXPECT_EQ(exact("2147483647", {}), (std::vector{2147483647, 1, 0}));
    EXPECT_EQ(exact("1/2147483659", {}), std::vector<int>());
}

TEST(UnitSource, FormatsExactNumbers) {
    for (const auto& [text, exact] : std::initializer_list<std::pair<const char*, const char*>>{
             {"pi/180", "pi*1/180"},
             {"0.25/pi^2", "pi^-2*1/4"},
             {"1.66053906892(52)*10^-27", "166053906892e-38"},
             {"1000000/7", "1e6/7"},
             {"1/64000000", "15625e-12"},
             {"41.868*10^9", "41868e6"}}) {
        EXPECT_EQ(formatExact(parseNumber(text)), exact);
    }
    EXPECT_EQ(parseNumber("3/0.50(2)^2").uncertainty, Exact(2, 25));
}

} // namespace tvdata
