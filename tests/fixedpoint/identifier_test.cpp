#include <tvtypes/datatypetable.h>
#include <tvtypes/fixedpoint.h>

#include <gtest/gtest.h>

#include <limits>
#include <locale>
#include <random>
#include <string>

namespace {

using namespace std::string_literals;

std::string nameOf(const fxpDataTypeProp& record) {
    return fxpDataTypeToIdentifierString_NoCache(&record);
}

} // namespace

TEST(Identifier, IsBuiltFromTheRecord) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    struct {
        fxpDataTypeProp record;
        const char* name;
    } const cases[] = {
        {{FXP_DT_FIXPT, 1, 16, 0, 1.0, 0.0, 0}, "int16"},
        {{FXP_DT_FIXPT, 0, 32, 0, 1.0, -0.0, 1}, "uint32"},
        {{FXP_DT_FIXPT, 2, 8, 0, 1.0, 0.0, 0}, "uint8"},
        {{FXP_DT_FIXPT, 1, 64, 0, 1.0, 0.0, 0}, "sfix64"},
        {{FXP_DT_FIXPT, 1, 16, -4, 1.0, 0.0, 0}, "sfix16_En4"},
        {{FXP_DT_FIXPT, 0, 8, 3, 1.0, 0.0, 0}, "ufix8_E3"},
        {{FXP_DT_FIXPT, 1, 8, 0, 1.0, 3.25, 0}, "sfix8_B3p25"},
        {{FXP_DT_FIXPT, 1, 16, -2, 1.5, 0.0, 0}, "sfix16_Sp375"},
        {{FXP_DT_FIXPT, 1, 16, -2, 1.5, -0.5, 0}, "sfix16_Sp375_Bnp5"},
        {{FXP_DT_FIXPT, 1, 16, -1, 2.0, 0.0, 0}, "sfix16"}, // a total slope of 1
        {{FXP_DT_FIXPT, 1, 16, 2000, 1.5, 0.0, 0}, "sfix16_F1p5_E2000"},
        {{FXP_DT_FIXPT, 1, 16, -2000, 1.0, 0.0, 0}, "sfix16_En2000"},
        {{FXP_DT_FIXPT, 1, 16, -1023, 1.5, 0.0, 0}, "sfix16_F1p5_En1023"},
        {{FXP_DT_FIXPT, 1, 16, -1022, 1.5, 0.0, 0}, "sfix16_S3p337610787760802en308"},
        {{FXP_DT_FIXPT, 1, 16, 1023, 1.5, 0.0, 0}, "sfix16_S1p348269851146737e308"},
        {{FXP_DT_FIXPT, 1, 16, INT32_MIN, 1.0, 0.0, 0}, "sfix16_En2147483648"},
        {{FXP_DT_FIXPT, 1, -5, 0, 1.0, 0.0, 0}, "sfix-5"},
        {{FXP_DT_FIXPT, 1, 8, 0, 1.0, nan, 0}, "sfix8_BNaN"},
        {{FXP_DT_SCALED_DOUBLE, 1, 32, -8, 1.0, 0.0, 0}, "flts32_En8"},
        {{FXP_DT_SCALED_DOUBLE, 0, 16, 0, 1.0, 0.0, 0}, "fltu16"},
        {{FXP_DT_DOUBLE, 0, 1, 5, 1.5, 1.0, 0}, "double"},
        {{FXP_DT_SINGLE, 1, 32, 0, 1.0, 0.0, 0}, "single"},
        {{FXP_DT_BOOLEAN, 0, 8, 0, 1.0, 0.0, 0}, "boolean"},
        {{static_cast<fxpModeDataType>(9), 0, 8, 0, 1.0, 0.0, 0}, "boolean"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(c.name, nameOf(c.record));
    }
}

TEST(Identifier, GroupsDigitsAsTheGlobalLocaleDoes) {
    struct Grouped : std::numpunct<char> {
        char do_thousands_sep() const override { return '\0'; }
        std::string do_grouping() const override { return "\1"; }
    };
    const std::locale before = std::locale::global(std::locale(std::locale(), new Grouped));
    const std::string builtIn = nameOf({FXP_DT_FIXPT, 1, 16, 0, 1.0, 0.0, 0});
    const std::string grouped = nameOf({FXP_DT_FIXPT, 1, 24, -12, 1.0, 10.5, 0});
    std::locale::global(before);
    EXPECT_EQ("int16", builtIn);
    EXPECT_EQ("sfix2\0004_En1\0002_B10p5"s, grouped);
}

TEST(Identifier, RewritesNumbers) {
    struct {
        const char* text;
        const char* rewritten;
    } const cases[] = {
        {"1.0", "1"},     {"0.5", "p5"},     {"-0.5", "np5"},        {"-1.5", "n1p5"},
        {"2.50", "2p50"}, {"1E+20", "1e20"}, {"1.5e-05", "1p5en05"}, {"p0", ""},
        {"", ""},         {"0", "0"},        {"0.0", "0"},           {"-0.0", "n0"}};
    for (const auto& c : cases) {
        EXPECT_EQ(c.rewritten, numStrToIdentifierStr(c.text)) << c.text;
    }
    EXPECT_EQ("", numStrToIdentifierStr(std::string(1 << 20, '+')));
}

TEST(Identifier, ReplacesAlsoWhatReplacingMakes) {
    std::string text = "aab aabb";
    strrep(text, "ab", "b");
    EXPECT_EQ("b bb", text);
    strrep(text, "", "x");
    EXPECT_EQ("b bb", text);
}

// Every name of a valid record is known to the table, as a built-in type or by its form.
TEST(Identifier, IsRecognisedByTheTable) {
    std::mt19937 random(11);
    TVTypeSys::DataTypeTable table;
    for (int i = 0; i < 20000; ++i) {
        const auto pick = [&](int low, int high) {
            return std::uniform_int_distribution<int>(low, high)(random);
        };
        const fxpDataTypeProp record{pick(0, 1) == 0 ? FXP_DT_FIXPT : FXP_DT_SCALED_DOUBLE,
                                     static_cast<std::uint32_t>(pick(0, 2)),
                                     pick(1, 128),
                                     pick(-1100, 1100),
                                     pick(0, 1) == 0 ? 1.0 : 1.0 + pick(0, 1023) / 1024.0,
                                     pick(0, 1) == 0 ? 0.0 : pick(-4096, 4096) / 64.0,
                                     0};
        ASSERT_TRUE(record.validateFxpDTProp());
        const std::string name = nameOf(record);
        ASSERT_TRUE(table.isAValidDataType(name.c_str())) << name;
        int wordLength = 0;
        if (!table.nameOfBuiltInDataType(name.c_str())) {
            ASSERT_TRUE(table.isInstrinsicFixptName(name.c_str(), &wordLength)) << name;
            ASSERT_EQ(record.WordLength, wordLength) << name;
        }
    }
}
