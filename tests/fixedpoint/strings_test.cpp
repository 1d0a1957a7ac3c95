// Identifier and constructor strings, computed without the cache.
#include "support/random_seed.h"

#include <tvtypes/datatypetable.h>
#include <tvtypes/fixedpoint.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <limits>
#include <locale>
#include <random>
#include <string>

namespace {

using namespace std::string_literals;

constexpr fxpDataTypeProp fixpt(std::uint32_t signedness, int wordLength, int exponent,
                                double factor = 1.0, double bias = 0.0, int overrideState = 0) {
    return {FXP_DT_FIXPT, signedness, wordLength, exponent, factor, bias, overrideState};
}

constexpr fxpDataTypeProp inMode(int mode, fxpDataTypeProp record) {
    record.DataTypeMode = static_cast<fxpModeDataType>(mode);
    return record;
}

std::string identifier(const fxpDataTypeProp& record) {
    return fxpDataTypeToIdentifierString_NoCache(&record);
}

std::string uncachedConstructor(const fxpDataTypeProp& record, int base, int scaling) {
    return fxpDataTypeToConstructorString_NoCache(record, static_cast<FxpDT::baseCtorPrefer>(base),
                                                  static_cast<FxpDT::scalingRepPrefer>(scaling));
}

/// The record of a constructor string of one of the two fixed-point modes.
fxpDataTypeProp parsed(const std::string& text) {
    const auto has = [&](const char* part) { return text.find(part) != std::string::npos; };
    fxpDataTypeProp record = fixpt(has("([]") ? 2 : has("(1") ? 1 : 0, 0, 0);
    record.DataTypeMode = has("'ScaledDouble'") ? FXP_DT_SCALED_DOUBLE : FXP_DT_FIXPT;
    record.DataTypeOverrideState = has("'DataTypeOverride','Off'") ? 1 : 0;
    double scaling[3] = {};
    const int read = std::sscanf(text.c_str() + text.find(','), ",%d,%lf,%lf,%lf",
                                 &record.WordLength, &scaling[0], &scaling[1], &scaling[2]);
    if (read == 2) {
        record.FixedExponent = -static_cast<int>(scaling[0]);
        return record;
    }
    record.SlopeAdjustmentFactor = 2 * std::frexp(scaling[0], &record.FixedExponent);
    record.FixedExponent += read == 4 ? static_cast<int>(scaling[1]) - 1 : -1;
    record.Bias = scaling[read - 2];
    return record;
}

} // namespace

TEST(FixedPointStrings, MatchTheGrammars) {
    struct {
        fxpDataTypeProp record;
        const char* identifier;
        const char* constructor;
    } const cases[] = {
        {fixpt(1, 16, 0), "int16", "fixdt(1,16,0)"},
        {fixpt(0, 32, 0, 1, -0.0, 1), "uint32", "fixdt(0,32,0,'DataTypeOverride','Off')"},
        {fixpt(2, 8, 0), "uint8", "fixdt([],8,0)"},
        {fixpt(1, 16, -4, 1, 0, 2), "sfix16_En4", "fixdt(1,16,4)"},
        {fixpt(1, 8, 0, 1, 3.25), "sfix8_B3p25", "fixdt(1,8,1,3.25)"},
        {fixpt(1, 16, -2, 1.5, -0.5), "sfix16_Sp375_Bnp5", "fixdt(1,16,0.375,-0.5)"},
        {fixpt(1, 16, -1, 2.0), "sfix16", "fixdt(1,16,1,0)"}, // a total slope of 1
        // The total slope is used as far as it is a normal double.
        {fixpt(1, 16, -1023, 1.5), "sfix16_F1p5_En1023", "fixdt(1,16,1.5,-1023,0)"},
        {fixpt(1, 16, -1022, 1.5), "sfix16_S3p337610787760802en308",
         "fixdt(1,16,3.337610787760802e-308,0)"},
        {fixpt(1, 16, 1023, 1.5), "sfix16_S1p348269851146737e308",
         "fixdt(1,16,1.348269851146737e+308,0)"},
        {fixpt(1, 16, 1024, 1.5), "sfix16_F1p5_E1024", "fixdt(1,16,1.5,1024,0)"},
        // Invalid records.
        {fixpt(1, -1, INT32_MIN), "sfix-1_En2147483648", "fixdt(1,4294967295,2147483648)"},
        {fixpt(1, 8, 0, 1, std::numeric_limits<double>::quiet_NaN()), "sfix8_BNaN",
         "fixdt(1,8,1,NaN)"},
        {inMode(9, fixpt(0, 8, 0, 1, 0, 1)), "boolean",
         "fixdt('boolean','DataTypeOverride','Off')"},
        // The other modes.
        {inMode(1, fixpt(1, 32, -8, 1, 0, 1)), "flts32_En8",
         "numerictype(1,32,8,'DataType','ScaledDouble','DataTypeOverride','Off')"},
        {inMode(1, fixpt(0, 16, 0)), "fltu16", "numerictype(0,16,0,'DataType','ScaledDouble')"},
        {inMode(2, fixpt(0, 1, 5, 1.5, 1)), "double", "fixdt('double')"},
        {inMode(3, fixpt(1, 32, 0)), "single", "fixdt('single')"},
        {inMode(4, fixpt(0, 8, 0, 1, 0, 1)), "boolean", "fixdt('boolean')"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(c.identifier, identifier(c.record));
        EXPECT_EQ(c.constructor, uncachedConstructor(c.record, 1, 0));
    }
    const fxpDataTypeProp binaryPoint = fixpt(1, 16, -4);
    EXPECT_EQ("numerictype(1,16,4)", uncachedConstructor(binaryPoint, 0, 0));
    EXPECT_EQ("fixdt(1,16,0.0625,0)", uncachedConstructor(binaryPoint, 1, 1));
    EXPECT_EQ("fixdt(1,16)", uncachedConstructor(binaryPoint, 1, 2));
    EXPECT_EQ("fixdt(1,16,0.0625,0)", uncachedConstructor(binaryPoint, 7, 3)) << "not enumerators";
    EXPECT_EQ("fixdt(0,8,1,0)", uncachedConstructor(fixpt(0, 8, 0, 1, -0.0), 1, 1));
    std::string text = "fixdt(";
    fxpDataTypeToConstructorString_FixptGuts(text, binaryPoint, FxpDT::PreferFractionLength);
    EXPECT_EQ("fixdt(1,16,4", text);
}

TEST(FixedPointStrings, IntegersFollowTheGlobalLocale) {
    struct Grouped : std::numpunct<char> {
        char do_thousands_sep() const override { return '\0'; }
        std::string do_grouping() const override { return "\1"; }
    };
    const std::locale before = std::locale::global(std::locale(std::locale(), new Grouped));
    const std::string builtIn = identifier(fixpt(1, 16, 0));
    const std::string grouped = identifier(fixpt(1, 24, -12, 1, 10.5));
    std::locale::global(before);
    EXPECT_EQ("int16", builtIn);
    EXPECT_EQ("sfix2\0004_En1\0002_B10p5"s, grouped);
}

TEST(FixedPointStrings, NumbersAreRewrittenForIdentifiers) {
    const char* const cases[][2] = {
        {"1.0", "1"},     {"0.5", "p5"},     {"-0.5", "np5"},        {"-1.5", "n1p5"},
        {"2.50", "2p50"}, {"1E+20", "1e20"}, {"1.5e-05", "1p5en05"}, {"p0", ""},
        {"", ""},         {"0", "0"},        {"0.0", "0"},           {"-0.0", "n0"}};
    for (const auto& [text, rewritten] : cases) {
        EXPECT_EQ(rewritten, numStrToIdentifierStr(text)) << text;
    }
    EXPECT_EQ("", numStrToIdentifierStr(std::string(1 << 20, '+')));
}

TEST(FixedPointStrings, ReplacementIsRepeated) {
    std::string text = "aab aabb";
    strrep(text, "ab", "b");
    strrep(text, "", "x");
    EXPECT_EQ("b bb", text);
}

// Random valid records of the two fixed-point modes.
TEST(FixedPointStrings, DescribeTheRecordCompletely) {
    std::mt19937_64 random(randomSeed(7));
    const auto pick = [&](int low, int high) {
        return std::uniform_int_distribution(low, high)(random);
    };
    const auto fraction = [&] { return std::uniform_real_distribution(0.0, 1.0)(random); };
    const TVTypeSys::DataTypeTable table;
    for (int i = 0; i < 10000; ++i) {
        const int bound = pick(0, 9) == 0 ? 2147483000 : 1100;
        const fxpDataTypeProp record = inMode(
            pick(0, 1), fixpt(static_cast<std::uint32_t>(pick(0, 2)), pick(1, 128),
                              pick(-bound, bound), pick(0, 1) == 0 ? 1.0 : 1.0 + fraction(),
                              pick(0, 1) == 0 ? 0.0 : std::ldexp(fraction() - 0.5, pick(-990, 990)),
                              pick(0, 1)));
        ASSERT_TRUE(record.validateFxpDTProp());
        for (const int variant : {0, 1, 2, 3}) {
            const std::string text = uncachedConstructor(record, variant / 2, variant % 2);
            ASSERT_TRUE(fxdt_isequal_to()(record, parsed(text))) << text;
            ASSERT_EQ(record.DataTypeOverrideState, parsed(text).DataTypeOverrideState) << text;
        }
        const std::string name = identifier(record);
        int wordLength = record.WordLength;
        ASSERT_TRUE(table.isAValidDataType(name.c_str())) << name;
        ASSERT_TRUE(table.nameOfBuiltInDataType(name.c_str()) ||
                    table.isInstrinsicFixptName(name.c_str(), &wordLength))
            << name;
        ASSERT_EQ(record.WordLength, wordLength) << name;
    }
}
