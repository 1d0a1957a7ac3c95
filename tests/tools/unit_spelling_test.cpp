#include "support.h"
#include "text/utf16.h"
#include "units/expansion.h"
#include "units/reading.h"
#include "units/spelling.h"
#include "units/words.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <map>
#include <random>
#include <set>
#include <string>

namespace tvtool::units {

namespace {

Expansion expandText(const std::string& text) {
    const Reading reading = readUnit(text);
    Expansion expansion = expandExpression(reading.expression).value();
    expansion.factor *= reading.factor;
    return expansion;
}

void expectSame(const std::string& text, const std::string& expression) {
    const Expansion expansion = expandText(text);
    const Expansion expected = expandExpression(expression).value();
    EXPECT_EQ(expansion.powers, expected.powers) << text;
    EXPECT_EQ(expansion.factor, expected.factor) << text;
    EXPECT_EQ(expansion.offset, expected.offset) << text;
}

/// Returns the position at which parsing fails; npos if it does not.
std::size_t faultPosition(const std::string& text) {
    try {
        parseSpelling(text);
        return std::string::npos;
    } catch (const text::ParseError& error) {
        return error.position;
    }
}

TEST(UnitSpelling, MatchesExpression) {
    for (const std::string row :
         {// Products and powers.
          "N.m -> N*m", "m.s-1 -> m/s", "rev/min -> rev/min", "m/s\u00B2 -> m/s^2",
          "kgm\u00B2 -> kg*m^2", "kg1m2s-2 -> J", "Nm -> N*m",
          // No unit.
          "1 -> unitless", "- -> unitless", " -> unitless", "  -> unitless",
          // Signs and names.
          "degC -> degC", "\u00B0C -> degC", "Ohm -> ohm", "k\u03A9 -> kohm", "% -> percent",
          "%/K -> percent/K", "\u00B5m -> um", "\u03BCm/s -> um/s", "kg\u00B7m\u00B2/s -> kg*m^2/s",
          "m/s/s -> m/s^2", "W/(m2.K) -> W/(m^2*K)", "W/m\u00B2K -> W/(m^2*K)", "W/m2.K -> W/m^2*K",
          "J/kg-K -> J/(kg*K)", "kg m s\u207B\u00B2 -> N",
          // Numbers and parentheses.
          "1/min -> 1/min", "/min -> 1/min", "m**3 -> m^3", "(m/s)-2 -> s^2/m^2", "1000 m -> km",
          "10^-3m -> mm", "2.5e-1*4*m -> m", "((m)*s) -> m*s", "deg -> deg", "mmHg -> mmHg",
          "dm3/100 km -> mm^3/dm", "L/100km -> mm^3/dm"}) {
        const std::size_t arrow = row.find(" -> ");
        expectSame(row.substr(0, arrow), row.substr(arrow + 4));
    }
}

TEST(UnitSpelling, ReportsPositionOfFault) {
    const std::pair<const char*, std::size_t> rows[] = {
        {"m*", 2},      {"*m", 0},       {"m^x", 2},           {"m^", 2},
        {"m/", 2},      {"m^2.5", 2},    {"m^99999999999", 2}, {"(m", 2},
        {"m)", 1},      {"()", 1},       {"m^((-2)", 7},       {"m..s", 2},
        {"m s -1", 4},  {"m-", 2},       {"1e400*m", 0},       {"m$", 1},
        {"m\u207B", 1}, {"kg*\xFFm", 3}, {"m\x1b[31m", 1},     {"s*(m^2147483647)^2", 3}};
    for (const auto& [text, position] : rows) {
        EXPECT_EQ(faultPosition(text), position) << text;
    }
}

using Powers = std::map<std::string, std::int64_t>;

Powers withoutZeros(Powers powers) {
    std::erase_if(powers, [](const auto& power) { return power.second == 0; });
    return powers;
}

TEST(UnitSpelling, AcceptsExpressionsOfTheLibrary) {
    const char* const parts[] = {"m",   "s",    "km", "*", "*", "/",  "/",   "^2",
                                 "^-1", "^(3)", "(",  ")", " ", "1/", "*kg", "(m*s)"};
    std::mt19937 random(20);
    int expressions = 0;
    for (int i = 0; i < 50000; ++i) {
        std::string text;
        for (std::size_t length = 1 + random() % 8; length > 0; --length) {
            text += parts[random() % std::size(parts)];
        }
        Monomial monomial;
        if (!parseUnitExpr(text::toUtf16(text), monomial) ||
            std::ranges::find(monomial.names, u"1") != monomial.names.end()) {
            continue;
        }
        ++expressions;
        Powers expected;
        for (std::size_t n = 0; n < monomial.names.size(); ++n) {
            expected[text::toUtf8(monomial.names[n])] += monomial.powers[n];
        }
        const Spelling spelling = parseSpelling(text);
        Powers powers;
        for (const SpeltName& name : spelling.names) {
            powers[std::string(name.name)] += name.power * name.outer;
        }
        EXPECT_EQ(withoutZeros(powers), withoutZeros(expected)) << text;
    }
    EXPECT_GT(expressions, 2000);
}

TEST(UnitSpelling, ParsesLongTextsInLinearTime) {
    const std::size_t size = 1000000;
    const std::string groups = repeatedText("(m/", size / 5) + 's' + std::string(size / 5, ')');
    EXPECT_EQ(faultPosition(repeatedText("m.s-1", size / 5)), std::string::npos);
    EXPECT_EQ(faultPosition(groups), std::string::npos);
    EXPECT_EQ(faultPosition(std::string(size, '(')), size);
    EXPECT_EQ(faultPosition("m" + std::string(size, '^')), 2U);
    expectSame(std::string(10000, '(') + "m" + std::string(10000, ')'), "m");
}

TEST(UnitWords, SuggestsByEditDistance) {
    const std::set<std::string> words{"newton", "Newton", "N",     "pascal", "Pa",
                                      "PA_x",   "kPa",    "metre", "meter",  "kilometre"};
    const auto nearestTo = [&](const std::string& word) {
        const std::vector<std::string> all = suggestionsFor(word, words);
        return all.empty() ? "" : all.front();
    };
    for (const auto& [word, nearest] : {std::pair("newtno", "newton"),
                                        {"Newtno", "Newton"},
                                        {"NEWTON", "Newton"},
                                        {"pa", "Pa"},
                                        {"passcal", "pascal"},
                                        {"killometer", "kilometre"},
                                        {"x", ""}}) {
        EXPECT_EQ(nearestTo(word), nearest);
    }
    EXPECT_EQ(nearestTo(std::string(1000000, 'x')), "");
    EXPECT_EQ(editDistance(U"ab", U"ba", 3), 1U);
    EXPECT_EQ(editDistance(U"", U"abc", 3), 3U);
    EXPECT_EQ(editDistance(U"kitten", U"sitting", 9), 3U);
    EXPECT_EQ(editDistance(U"kitten", U"sitting", 1), 2U);
}

TEST(ExactNumbers, FormatsFractionsExactly) {
    const std::pair<exact::Number, const char*> rows[] = {
        {exact::Number(0), "0"},
        {exact::Number(1000), "1000"},
        {exact::Number(-3600), "-3600"},
        {exact::Number(3048, 10000), "0.3048"},
        {exact::Number(-1, 8), "-0.125"},
        {exact::Number(5, 9), "5/9"},
        {exact::Number(45967, 180), "45967/180"},
        {exact::powerOfTen(9), "10^9"},
        {exact::powerOfTen(-12), "10^-12"},
        {exact::Number(-1) * exact::powerOfTen(9), "-10^9"},
        {exact::Number(6022) * exact::powerOfTen(20), "6022*10^20"},
        {exact::Number(1, 3) * exact::powerOfTen(20), "1/3*10^20"},
        {exact::Number(1, 3) * exact::powerOfTen(-20), "1/3*10^-20"}};
    for (const auto& [number, text] : rows) {
        EXPECT_EQ(exact::fractionText(number), text);
    }
    EXPECT_EQ(exact::power(exact::Number(2, 3), -3), exact::Number(27, 8));
    EXPECT_EQ(exact::power(1, 2147483647), exact::Number(1));
    EXPECT_EQ(exact::power(1000, 2147483647), std::nullopt);
}

} // namespace

} // namespace tvtool::units
