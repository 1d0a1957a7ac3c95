// Names and details of numeric types, and quantization of values.
#include "convert/conversion.h"
#include "convert/values.h"
#include "fixedpoint/identifier.h"
#include "fixedpoint/quantization.h"
#include "support.h"
#include "support/random_seed.h"
#include "text/parse_error.h"

#include <tvtypes/datatypetable.h>

#include <fmt/format.h>
#include <gmock/gmock.h>

#include <bit>
#include <cmath>
#include <cstring>
#include <random>

namespace tvtool {

namespace {

using testing::HasSubstr;

Outcome fixpt(const std::string& call) { return run(split("fixpt " + call)); }

TEST(Fixpt, ParsesNamesOfRandomRecords) {
    std::mt19937_64 random(randomSeed(5));
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
        const fxpDataTypeProp read = fixedpoint::parseTypeName(name);
        ASSERT_TRUE(fxdt_isequal_to()(read, record)) << name;
        ASSERT_EQ(read.DataTypeOverrideState, 0);
        for (const auto base : {FxpDT::PreferFixdt, FxpDT::PreferNumericType}) {
            for (const auto scaling : {FxpDT::PreferFractionLength, FxpDT::PreferSlopeBias}) {
                fxpDataTypeProp open = record;
                open.Signedness = static_cast<std::uint32_t>(random() % 3);
                open.DataTypeOverrideState = static_cast<int>(random() % 2);
                const std::string text =
                    fxpDataTypeToConstructorString_NoCache(open, base, scaling);
                ASSERT_TRUE(fxdt_isequal_to()(fixedpoint::parseTypeName(text), open)) << text;
            }
        }
    }
    for (int id = 0; id < TVTypeSys::DataTypeTable::getNumBuiltInDataTypes(); ++id) {
        const char* const name = TVTypeSys::DataTypeTable::getNameOfBuiltInDataType(id);
        const fxpDataTypeProp read = fixedpoint::parseTypeName(name);
        EXPECT_EQ(fxpDataTypeToIdentifierString_NoCache(&read), name);
    }
}

TEST(Fixpt, AcceptsOtherNotationsAndReportsPositionOfFault) {
    for (const auto& [text, name] : {std::pair("sfix16_E0", "int16"),
                                     {"sfix16_S0p5", "sfix16_En1"},
                                     {"ufix08_Bn0", "uint8"},
                                     {"sfix8_F1p5_En2", "sfix8_Sp375"},
                                     {"flts8_S1en310", "flts8_F1p1505236063118787_En1030"}}) {
        const fxpDataTypeProp record = fixedpoint::parseTypeName(text);
        EXPECT_EQ(fxpDataTypeToIdentifierString_NoCache(&record), name);
    }
    const struct {
        const char* text;
        std::size_t position;
        const char* part;
    } rows[] = {{"fix16", 0, "begins with"},
                {"int64", 0, "did you mean sfix64?"},
                {"SFIX16_en4", 0, "did you mean sfix16_En4?"},
                {"fixd(1,16)", 0, "fixdt(...) or"},
                {"fixdt(1,16", 10, "the ) at the end"},
                {"fixdt()", 6, "signedness is missing"},
                {"fixdt(1)", 7, "word length is missing"},
                {"fixdt(2,16)", 6, "0, 1 or []"},
                {"fixdt(1, 0)", 9, "from 1 to 2147483647"},
                {"fixdt(1,16,)", 11, "a number is missing"},
                {"fixdt(1,16,1.5)", 11, "a fraction length"},
                {"fixdt(1,16,0,0)", 11, "greater than 0"},
                {"fixdt(1,16,2,0,0)", 11, "less than 2"},
                {"fixdt(1,16,1,0,0,0)", 17, "at most three numbers"},
                {"fixdt('int8')", 6, "'double', 'single'"},
                {"fixdt('double','DataType','ScaledDouble')", 15, "the properties are"},
                {"fixdt(1,8,'DataType')", 10, "no value"},
                {"sfix_E3", 4, "word length is missing"},
                {"sfix0", 4, "at least 1; the data type table"},
                {"sfix2147483648", 4, "at most 2147483647"},
                {"sfix16_E2147483648", 8, "an exponent is from"},
                {"sfix16_En", 9, "a digit is missing"},
                {"sfix16_E-4", 8, "did you mean sfix16_En4?"},
                {"sfix16_E3x", 9, "of 16 bits all the same"},
                {"sfix16_", 7, "an exponent E, a slope S"},
                {"sfix16_E1_E1", 10, "twice"},
                {"sfix16_B1_E1", 10, "the bias stands last"},
                {"sfix16_E1_F1p5", 10, "before the exponent"},
                {"sfix16_S1_F1p5", 10, "a slope stands without"},
                {"sfix16_F2", 8, "at least 1 and less than 2"},
                {"sfix16_S0", 8, "greater than 0"},
                {"sfix16_S0.5", 9, "did you mean sfix16_S0p5?"},
                {"sfix16_S1p", 10, "a digit is missing"},
                {"sfix16_B1e", 10, "a digit is missing"},
                {"sfix16_B1e400", 8, "beyond what a double holds"}};
    for (const auto& row : rows) {
        try {
            fixedpoint::parseTypeName(row.text);
            ADD_FAILURE() << row.text;
        } catch (const text::ParseError& error) {
            EXPECT_EQ(error.position, row.position) << row.text;
            EXPECT_THAT(error.what(), HasSubstr(row.part)) << row.text;
        }
    }
}

/// Returns the result of the library's conversion.
std::string converted(double value, convert::Type type, convert::Modes modes) {
    std::array<std::byte, 8> from{};
    std::array<std::byte, 8> to{};
    std::memcpy(from.data(), &value, sizeof value);
    convert::Conversion({convert::Type::Double}, {type}, modes).convert(from.data(), to.data(), 1);
    std::string text;
    convert::appendElement(text, {type}, to.data());
    return text;
}

/// Returns random values and random ties of both signs, and all ties and integers at the limits of
/// the integer types.
std::vector<double> valuesToRound() {
    std::mt19937_64 random(randomSeed(7));
    std::vector<double> values;
    for (int i = 0; i < 300; ++i) {
        const double size = std::ldexp(1.0, static_cast<int>(random() % 40) - 2);
        const double value = std::uniform_real_distribution(-size, size)(random);
        values.push_back(i % 2 == 0 ? value : std::floor(value) + 0.5);
    }
    for (const int bits : {0, 1, 7, 8, 15, 16, 31, 32}) {
        for (const double distance : {-2.0, -1.5, -1.0, -0.5, 0.0, 0.5, 1.0, 1.5}) {
            values.push_back(std::ldexp(1.0, bits) + distance);
            values.push_back(-std::ldexp(1.0, bits) - distance);
        }
    }
    return values;
}

// The tool states the rules of rounding in exact fractions; this holds them to the library's.
TEST(Fixpt, QuantizationMatchesConversionOfTheLibrary) {
    for (const double value : valuesToRound()) {
        for (int id = 2; id < 8; ++id) {
            const auto& record = *TVTypeSys::DataTypeTable::getBuiltinDataTypeProperties(id);
            for (const auto& overflow : convert::overflows) {
                const auto rows =
                    fixedpoint::quantize({fmt::format("{:.300f}", value)}, record, overflow.value)
                        .values[0]
                        .rows;
                ASSERT_EQ(rows.size(), 6U);
                for (std::size_t r = 0; r < rows.size(); ++r) {
                    ASSERT_EQ(rows[r].stored,
                              converted(value, static_cast<convert::Type>(id),
                                        {overflow.value, convert::roundings[r].value}))
                        << value << ' ' << rows[r].rounding << ' ' << overflow.name;
                }
            }
        }
    }
}

TEST(Fixpt, ShowsDetails) {
    const struct {
        const char* call;
        const char* values;
    } rows[] = {
        {"sfix16", "int16 1 1 -32768 32767 int16 2 false"},
        {"sfix24_En2 --atomic-word-length 24 8",
         "sfix24_En2 0.25=2^-2 0.25 -2097152 2097151.75 int32 4 true"},
        {"ufix9_Sp375_Bn10", "ufix9_Sp375_Bn10 0.375=1.5*2^-2 0.375 -10 181.625 uint16 2 false"},
        {"sfix64_En62", "sfix64_En62 2.168404344971009e-19=2^-62 2^-62 -2 (2^63-1)*2^-62 null "
                        "null false"},
        {"ufix33_B1e24",
         "ufix33_B1e24 1 1 999999999999999983222784 about1.0000000000000086e+24 null null false"},
        {"single", "single null 2^-23near1 about-3.4028234663852886e+38 "
                   "about3.4028234663852886e+38 single 4 false"},
        {"boolean", "boolean null null 0 1 boolean 1 false"},
        {"sfix99999_F1p5_E4097", "sfix99999_F1p5_E4097 1.5*2^4097 1.5*2^4097 -2^99998*1.5*2^4097 "
                                 "(2^99998-1)*1.5*2^4097 null null false"},
        {"--word-length 16 --signed open --fraction-length 4",
         "ufix16_En4 0.0625=2^-4 0.0625 null null null null false"},
        {"--word-length 8 --factor 1.5 --exponent -2 --bias -0.5 --signed 0",
         "ufix8_Sp375_Bnp5 0.375=1.5*2^-2 0.375 -0.5 95.125 uint8 1 false"},
        {"--word-length 5 --slope 2^-4 --scaled-double",
         "flts5_En4 0.0625=2^-4 null null null double 8 false"}};
    for (const auto& row : rows) {
        const Outcome outcome = fixpt(fmt::format("{} --json", row.call));
        ASSERT_EQ(outcome.status, 0) << row.call << outcome.err;
        const boost::json::value details = outcome.json().at("types").at(0);
        std::string values;
        for (const char* const member : {"identifier", "slope", "resolution", "lowest", "highest",
                                         "storage", "storageSize", "atomic"}) {
            std::string value = boost::json::serialize(details.at(member));
            std::erase_if(value, [](char c) { return c == '"' || c == ' '; });
            values += (values.empty() ? "" : " ") + value;
        }
        EXPECT_EQ(values, row.values) << row.call;
    }
}

TEST(Fixpt, KeepsMessagesShortForLongTexts) {
    const std::string digits(1000000, '7');
    const std::pair<std::string, const char*> rows[] = {
        {"int8 --quantize " + digits, "is longer than"},
        {"ufix" + digits, "at most 2147483647"},
        {"ufix8_B" + digits, "beyond what a double holds"},
        {std::string(1000000, '_'), "begins with"}};
    for (const auto& [call, part] : rows) {
        expectRejection(fixpt(call), part);
    }
    const Outcome outcome =
        fixpt("sfix2147483647_F1p5_En2147483648 sfix8_S" + digits + "en1000000 x");
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.out, HasSubstr("-2^2147483646 * 1.5 * 2^-2147483648 to "));
    EXPECT_THAT(outcome.out, HasSubstr("sfix8_Sp7777777777777778"));
}

} // namespace

} // namespace tvtool
