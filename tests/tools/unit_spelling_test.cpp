#include "support.h"
#include "support/random_seed.h"
#include "text/suggestion.h"
#include "text/utf16.h"
#include "units/expansion.h"
#include "units/reading.h"
#include "units/spelling.h"

#include <fmt/format.h>
#include <gmock/gmock.h>

#include <algorithm>
#include <map>
#include <random>
#include <set>
#include <string>
#include <utility>

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
    // The factors of the database are rounded to 32 bits.
    EXPECT_TRUE(exact::areClose(expansion.factor, expected.factor, 1e-11)) << text;
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

/// Returns the parts of a row "text -> meaning".
std::pair<std::string, std::string> splitRow(const std::string& row) {
    const std::size_t arrow = row.find(" -> ");
    return {row.substr(0, arrow), row.substr(arrow + 4)};
}

/// Returns the error of a text; empty if it is read.
std::string readingError(const std::string& text) {
    try {
        readUnit(text);
        return {};
    } catch (const text::ParseError& error) {
        return error.what();
    }
}

TEST(UnitReading, MatchesExpression) {
    for (const std::string row :
         {// Products and powers.
          "N.m -> N*m", "m.s-1 -> m/s", "m s-1 -> m/s", "m/s\u00B2 -> m/s^2", "m/s/s -> m/s^2",
          "kg m^2 s^-2 -> J", "kg m s\u207B\u00B2 -> N", "N\u00B7m -> N*m", "N m -> N*m",
          "kg.m2 -> kg*m^2", "W m-2 K-1 -> W/(m^2*K)",
          "J mol\u207B\u00B9 K\u207B\u00B9 -> J/(mol*K)", "min-1 -> 1/min", "s\u207B\u00B9 -> 1/s",
          "kW-h -> kWh", "A\u00B7h -> Ah", "m**3 -> m^3", "(m/s)-2 -> s^2/m^2", "((m)*s) -> m*s",
          "N/(m.s-1) -> N*s/m", "[m/s] -> m/s", "[kg]/[m^3] -> kg/m^3",
          "(m/s\u00B2)\u00B2/Hz -> m^2/s^3",
          // No unit.
          "1 -> unitless", "- -> unitless", " -> unitless", "  -> unitless", "[-] -> unitless",
          "none -> unitless", "n/a -> unitless", "\u2013 -> unitless", "dimensionless -> unitless",
          "p.u. -> unitless", "[1] -> unitless", "ratio -> unitless",
          // Symbols side by side.
          "kgm\u00B2 -> kg*m^2", "kg1m2s-2 -> J", "Nm -> N*m", "Nmm -> N*mm", "Nmm2 -> N*mm^2",
          "kgmm2 -> kg*mm^2", "kgcm2 -> kg*cm^2", "kNmm -> kN*mm", "mPas -> mPa*s", "Nm2 -> N*m^2",
          "Nm\u00B2 -> N*m^2", "kNm2 -> kN*m^2", "Nm-1 -> N/m", "Nm2/kg2 -> N*m^2/kg^2",
          "Am\u00B2 -> A*m^2", "Wm-2K-1 -> W/(m^2*K)", "Jkg-1K-1 -> J/(kg*K)", "kgm/s2 -> N",
          "\u03A9cm -> ohm*cm", "\u00B5\u03A9cm -> uohm*cm", "hPa -> mbar", "mm -> km*um/m",
          // A divisor.
          "W/m2K -> W/(m^2*K)", "W/m\u00B2K -> W/(m^2*K)", "J/kgK -> J/(kg*K)", "m2K/W -> m^2*K/W",
          "W/mK -> W/(m*K)", "W/(mK) -> W/(m*K)", "W/m K -> W/(m*K)", "W/m-K -> W/(m*K)",
          "W/m\u00B7K -> W/(m*K)", "W/m2.K -> W/(m^2*K)", "W/(m2.K) -> W/(m^2*K)",
          "J/kg-K -> J/(kg*K)", "J/kg K -> J/(kg*K)", "kWh/m\u00B2a -> kWh/(m^2*a)",
          "W/m\u00B0C -> W/(m*delta_degC)", "L/(min.m\u00B2) -> L/(min*m^2)",
          "lb/hp-h -> lb/(hp*h)",
          // Temperatures.
          "degC -> degC", "\u00B0C -> degC", "deg C -> degC", "degrees C -> degC", "deg. C -> degC",
          "\u00B0 C -> degC", "\u00BAC -> degC", "\u02DAC -> degC", "\u2103 -> degC",
          "degree Celsius -> degC", "deg F -> degF", "degrees Fahrenheit -> degF",
          "\u00BAF -> degF", "deg R -> degR", "deg K -> K", "\u00B0K -> K", "degreeC -> degC",
          "K/W -> K/W", "\u00B0C/W -> K/W", "C\u00B0 -> degC",
          // Pounds.
          "lb-ft -> lbf*ft", "ft-lb -> lbf*ft", "in-lb -> lbf*in", "lb-in -> lbf*in",
          "oz-in -> ozf*in", "lbs-ft -> lbf*ft", "ft lb -> lbf*ft", "ft.lb -> lbf*ft",
          "lb\u00B7ft -> lbf*ft", "inlb -> lbf*in", "ft lbs -> lbf*ft", "ft-lb/s -> lbf*ft/s",
          "lb-in/deg -> lbf*in/deg", "lb-in-s\u00B2 -> lbf*in*s^2", "lb-ft2 -> lb*ft^2",
          "lb\u00B7ft\u00B2 -> lb*ft^2", "lbf\u00B7ft -> lbf*ft", "lb-mol -> lbmol", "lb m -> lbm",
          "ft-L -> ftL", "lb*ft -> lb*ft",
          // Words.
          "mm Hg -> mmHg", "in Hg -> inHg", "in. H2O -> inH2O", "mmH\u2082O -> mmH2O",
          "in. W.C. -> inH2O", "inches of mercury -> inHg", "in of water -> inH2O",
          "metric ton -> t", "short ton -> ton", "sq ft -> ft^2", "sq. ft. -> ft^2",
          "cu ft -> ft^3", "cu. in. -> in^3", "square metre -> m^2", "cubic feet -> ft^3",
          "square nautical miles -> nmi^2", "cubic feet per minute -> ft^3/min",
          "metres per second -> m/s", "metre per second squared -> m/s^2", "m per s -> m/s",
          "per second -> 1/s", "feet/second -> ft/s", "watts per square metre kelvin -> W/(m^2*K)",
          "fl. oz. -> floz", "US gal -> gal", "US fl oz -> floz", "imp gal -> gal_imp",
          "gal(UK) -> gal_imp", "ton (metric) -> t", "hp(metric) -> PS", "cal(IT) -> cal_IT",
          "watt hour -> Wh", "foot pounds -> lbf*ft", "nautical miles -> nmi", "r.p.m. -> rpm",
          "parts per million -> ppm", "per cent -> percent", "in. -> in", "m\u00B3. -> m^3",
          // Signs and names.
          "Ohm -> ohm", "k\u03A9\u00B7cm -> kohm*cm", "% -> percent", "\u2030 -> permil",
          "%/K -> percent/K", "\u00B5m -> um", "\u03BCm/s -> um/s", "g/cm\u00B3 -> g/cm^3",
          "\u00B0 -> deg", "ppm/\u00B0C -> ppm/K", "m\u22122 -> 1/m^2", "deg -> deg",
          "Nm3/h -> Nm3/h", "Nm\u00B3/h -> Nm3/h", "Nm^3/h -> Nm3/h", "lbf / in^2 -> lbf/in^2",
          // Numbers and parentheses.
          "1/min -> 1/min", "/min -> 1/min", "1000 m -> km", "10^-3m -> mm", "2.5e-1*4*m -> m",
          "10^3/uL -> 1/nL", "1e-6/K -> ppm/K", "mmHg -> mmHg", "dm3/100 km -> mm^3/dm",
          "L/100km -> mm^3/dm"}) {
        const auto [text, expression] = splitRow(row);
        ASSERT_EQ(readingError(text), "") << row;
        expectSame(text, expression);
        const Reading reading = readUnit(text);
        EXPECT_EQ(reading.isAsWritten, reading.notes.empty()) << text;
    }
}

TEST(UnitReading, RefusesWithReason) {
    for (const std::string row :
         {// Case.
          "KW -> did you mean kW?", "Kg -> did you mean kg", "KPa -> did you mean kPa?",
          "kwh -> did you mean kWh?", "HZ -> did you mean Hz?", "KNm -> did you mean kNm?",
          "Cm -> did you mean cm?", "Newton -> did you mean newton?", "Km2/W -> did you mean km2?",
          "sm3/h -> did you mean Sm3", "Ks -> did you mean ks", "KJm -> K is the kelvin",
          // Pressures, levels and other values that are no multiples of a unit.
          "bar(g) -> gauge pressure; write barg", "psi(a) -> absolute pressure; write psia",
          "bar (abs) -> write bara", "kg/cm2 g -> gauge pressure",
          "kg/cm\u00B2(g) -> neither a unit", "lb/in\u00B2 -> psi", "kPa abs -> write kPaa",
          "MPa g -> write MPag", "dB(A) -> is a level", "dBm -> relative to 1 mW",
          "dBV -> relative to 1 V", "dBu -> is a level", "dBA -> is a level", "dBi -> is a level",
          "dBc -> is a level", "dBW -> is a level", "dBSPL -> is a level", "dB SPL -> is a level",
          "dBm/Hz -> is a level", "m3(STP) -> gas volume", "VAC -> what is measured",
          "Vrms -> write V", "AC -> AC and DC", "N(m) -> written N*m", "%FS -> a percentage of",
          "% FS -> a percentage of", "mol-% -> a percentage of", "dB re 20 uPa -> is a level",
          // Powers.
          "m^0.5 -> whole powers", "V/sqrt(Hz) -> whole powers", "V/\u221AHz -> whole powers",
          "nV/rtHz -> whole powers", "Hz^1/2 -> whole powers", "m3/2 -> whole powers",
          "MPa*m^(1/2) -> whole powers", "log(Pa) -> whole powers", "m 2 -> expected a sign",
          "m/s 2 -> expected a sign", "ft.2 -> expected a sign",
          // Several readings.
          "U/min -> revolution", "' -> arcmin", "\" -> arcsec", "a.u. -> arbitrary",
          "ms-1 -> millisecond", "kgms-2 -> millisecond", "ms\u207B\u00B2 -> millisecond",
          "N/m\u00B7s -> two readings", "kg/m\u00B2\u00B7s -> two readings",
          "W/m\u00B2*K -> two readings", "J/kg K-1 -> two readings",
          "W/m-2 -> write one of the two", "lb-ft/s -> several readings",
          "Btu/lb-F -> F is the farad", "kJ/kgC -> C is the coulomb",
          "Btu/hr-ft2-R -> R is the roentgen", "10*3/uL -> written 10^3", "(m] -> expected",
          // No units.
          "xyzzy -> not known", "kg*newtn -> not known", "NAN -> not known", "$/kWh -> expected"}) {
        const auto [text, reason] = splitRow(row);
        EXPECT_THAT(readingError(text), testing::HasSubstr(reason)) << text;
    }
}

TEST(UnitReading, NotesWhatIsEasilyMistaken) {
    for (const std::string row :
         {"kgm2s -> \"kgm2s\" is read as kg*m^2*s", "W/mK -> millikelvin", "lb-ft -> is the force",
          "W/m2K -> belongs to the divisor", "Nm^2 -> applies to all of Nm", "Nm^3 -> gas volume",
          "W/m^2*K -> not in the divisor", "Btu/(lb*F) -> farad", "PA -> petaampere",
          "lb/in2 -> psi", "1000 rpm -> is read as 1000 * rpm"}) {
        const auto [text, note] = splitRow(row);
        EXPECT_THAT(readUnit(text).notes, testing::Contains(testing::HasSubstr(note))) << text;
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
    std::mt19937 random(randomSeed(20));
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
    EXPECT_EQ(readUnit(repeatedText("m ft-lb ", size / 8)).expression,
              fmt::format("m^{0}*ft_lbf^{0}", size / 8));
}

TEST(UnitWords, SuggestsByEditDistance) {
    const std::set<std::string> words{"newton", "Newton", "N",     "pascal", "Pa",
                                      "PA_x",   "kPa",    "metre", "meter",  "kilometre"};
    const auto nearestTo = [&](const std::string& word) {
        const std::vector<std::string> all = text::suggestionsFor(word, words);
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
    EXPECT_EQ(text::editDistance(U"ab", U"ba", 3), 1U);
    EXPECT_EQ(text::editDistance(U"", U"abc", 3), 3U);
    EXPECT_EQ(text::editDistance(U"kitten", U"sitting", 9), 3U);
    EXPECT_EQ(text::editDistance(U"kitten", U"sitting", 1), 2U);
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
