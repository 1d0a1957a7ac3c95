// Names of numeric types, read back.
#include "fixpt/error.h"
#include "fixpt/identifier.h"

#include <tvtypes/datatypetable.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <random>

namespace tvtool {

namespace {

using testing::HasSubstr;

TEST(Fixpt, NamesReadBackToTheirRecords) {
    std::mt19937_64 random(5);
    const auto pick = [&](auto... values) {
        return std::array{values...}[random() % sizeof...(values)];
    };
    const auto someDouble = [&] {
        const double value = std::bit_cast<double>(random());
        return std::isfinite(value) ? value : 0.0;
    };
    for (int i = 0; i < 20000; ++i) {
        const auto any = static_cast<std::int32_t>(random());
        const auto exponent = static_cast<std::int32_t>(random() % 4096) - 2048;
        const fxpDataTypeProp record{
            pick(FXP_DT_FIXPT, FXP_DT_SCALED_DOUBLE),
            static_cast<std::uint32_t>(random() % 2),
            pick(8, 16, 32, 1, 2147483647, (any & 0xFFFF) + 1),
            pick(0, -1022, -1023, 1023, 1024, any, exponent, exponent, exponent),
            pick(1.0, std::bit_cast<double>((random() >> 12) | 0x3FF0000000000000U)),
            pick(0.0, 5e-324, -1.7976931348623157e308, 0.25 * exponent, someDouble()),
            0};
        const std::string name = fxpDataTypeToIdentifierString_NoCache(&record);
        const fxpDataTypeProp read = fixpt::recordNamed(name);
        ASSERT_TRUE(fxdt_isequal_to()(read, record)) << name;
        ASSERT_EQ(read.DataTypeOverrideState, 0);
    }
    for (int id = 0; id < TVTypeSys::DataTypeTable::getNumBuiltInDataTypes(); ++id) {
        const char* const name = TVTypeSys::DataTypeTable::getNameOfBuiltInDataType(id);
        const fxpDataTypeProp read = fixpt::recordNamed(name);
        EXPECT_EQ(fxpDataTypeToIdentifierString_NoCache(&read), name);
    }
}

TEST(Fixpt, OtherWritingsAreReadAndWhatIsNoNameIsPointedAt) {
    for (const auto& [text, name] : {std::pair("sfix16_E0", "int16"),
                                     {"sfix16_S0p5", "sfix16_En1"},
                                     {"ufix08_Bn0", "uint8"},
                                     {"sfix8_F1p5_En2", "sfix8_Sp375"},
                                     {"flts8_S1en310", "flts8_F1p1505236063118787_En1030"}}) {
        const fxpDataTypeProp record = fixpt::recordNamed(text);
        EXPECT_EQ(fxpDataTypeToIdentifierString_NoCache(&record), name);
    }
    const struct {
        const char* text;
        std::size_t position;
        const char* part;
    } rows[] = {{"fix16", 0, "begins with"},
                {"int64", 0, "write sfix64"},
                {"SFIX16_en4", 0, "write sfix16_En4"},
                {"sfix_E3", 4, "word length is missing"},
                {"sfix0", 4, "at least 1; the data type table"},
                {"sfix2147483648", 4, "at most 2147483647"},
                {"sfix16_E2147483648", 8, "an exponent is from"},
                {"sfix16_En", 9, "a digit is missing"},
                {"sfix16_E-4", 8, "write sfix16_En4"},
                {"sfix16_E3x", 9, "of 16 bits all the same"},
                {"sfix16_", 7, "an exponent E, a slope S"},
                {"sfix16_E1_E1", 10, "twice"},
                {"sfix16_B1_E1", 10, "the bias stands last"},
                {"sfix16_E1_F1p5", 10, "before the exponent"},
                {"sfix16_S1_F1p5", 10, "a slope stands without"},
                {"sfix16_F2", 8, "at least 1 and less than 2"},
                {"sfix16_S0", 8, "greater than 0"},
                {"sfix16_S0.5", 9, "write sfix16_En1"},
                {"sfix16_S1p", 10, "a digit is missing"},
                {"sfix16_B1e", 10, "a digit is missing"},
                {"sfix16_B1e400", 8, "beyond what a double holds"}};
    for (const auto& row : rows) {
        try {
            fixpt::recordNamed(row.text);
            ADD_FAILURE() << row.text;
        } catch (const fixpt::NameError& error) {
            EXPECT_EQ(error.position, row.position) << row.text;
            EXPECT_THAT(error.what(), HasSubstr(row.part)) << row.text;
        }
    }
}

} // namespace

} // namespace tvtool
