// Selection of functions and the entry points that call them, with results computed by hand.
#include "support/errors.h"
#include "support/floating_point.h"

#include <tvtypes/datatypetable.h>
#include <tvtypes/functions.h>

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <vector>

namespace {

enum Id { Double, Single, Int8, Uint8, Int16, Uint16, Int32, Uint32, Boolean };

constexpr fxpModeRounding_tag roundings[] = {FXP_ROUND_ZERO,  FXP_ROUND_NEAR,
                                             FXP_ROUND_CEIL,  FXP_ROUND_FLOOR,
                                             FXP_ROUND_ROUND, FXP_ROUND_CONVERGENT};

// clang-format off
TEST(Selection, RoundingModesMatchKnownResults) {
    const struct {
        double x;
        int wrapped[6]; // as int8
    } rows[] = {
        // x       zero  near  ceil floor round  convergent
        {127.5,  { 127, -128, -128,  127, -128, -128}},
        {128.5,  {-128, -127, -127, -128, -127, -128}},
        {-0.5,   {   0,    0,    0,   -1,   -1,    0}},
        {-1.5,   {  -1,   -1,   -1,   -2,   -2,   -2}},
        {-128.5, {-128, -128, -128,  127,  127, -128}},
        {-300.7, { -44,  -45,  -44,  -45,  -45,  -45}}};
    for (const auto& row : rows) {
        for (int i = 0; i < 6; ++i) {
            std::int8_t result[] = {0, 0};
            for (const int id : {Int8, Uint8}) {
                tvConvertBuiltInDTypeVectWithCheck(&row.x, 1, Double, false, &result[id - Int8], 1, id,
                                                   false, FXP_OVERFLOW_WRAP, roundings[i], false);
            }
            EXPECT_EQ(row.wrapped[i], result[0]) << row.x;
            EXPECT_EQ(row.wrapped[i], result[1]) << row.x << " as uint8";
        }
    }
}
// clang-format on

TEST(Selection, IgnoresModesWithoutEffect) {
    EXPECT_EQ(utGetTvBuiltinDtypeConvFcn(Double, Int8, FXP_OVERFLOW_WRAP, FXP_ROUND_ZERO),
              utGetTvBuiltinDtypeConvFcn(Double, Int8, FXP_OVERFLOW_WRAP, FXP_ROUND_ZERO_ALIAS));
    // A boolean is a byte of any value, which neither overflows nor is lost.
    const std::uint8_t notABoolean = 200;
    std::int8_t result = 0;
    EXPECT_TRUE(tvConvertBuiltInDTypeVectWithCheck(&notABoolean, 1, Boolean, false, &result, 1,
                                                   Int8, false, FXP_OVERFLOW_SATURATE,
                                                   FXP_ROUND_ZERO, true));
    EXPECT_EQ(-56, result);
}

// Aliases are resolved; the modes are rounding toward zero and saturation.
TEST(Selection, RecordsConvertAliases) {
    TVTypeSys::DataTypeTable table;
    const int alias = table.registerAliasDataType("Byte", DataTypeSource(2), Uint8, nullptr);
    const std::vector<double> values = {300, -1.9, 2.9, std::nan(""), -HUGE_VAL};
    std::vector<std::uint8_t> bytes(values.size());
    _tvDataTypeAccess_tag access = {&table};
    const int count = static_cast<int>(values.size());
    EXPECT_EQ(1, ConvertBetweenBuiltinFcn(&access, nullptr, alias, Double, count, values.data(),
                                          nullptr, bytes.data()));
    EXPECT_EQ((std::vector<std::uint8_t>{255, 0, 2, 0, 0}), bytes);
    EXPECT_EQ(1, ConvertBetweenBuiltinFcn(&access, nullptr, alias, Double, -1, values.data(),
                                          nullptr, nullptr));
    EXPECT_EQ(&ConvertBetweenBuiltinFcn, table.getDataTypeAt(0)->getConvertBetweenFcn());
}

// Types that are not built-in have no conversion, whichever record provides the function.
TEST(Selection, RejectsOtherTypes) {
    TVTypeSys::DataTypeTable table;
    const auto source = DataTypeSource(2);
    const int plain = table.registerDataType("Plain", source, nullptr);
    const int fixedPoint = table.registerDataType("sfix16_En3", source, nullptr);
    const int enumeration = table.registerDataType("Colour", source, nullptr);
    table.setDataTypeStorageId(enumeration, Int32);
    const int alias = table.registerAliasDataType("Other", source, plain, nullptr);
    const double values[] = {1, 2, 3, 4};
    const std::vector<unsigned char> untouched(sizeof values, 0xA5);
    std::vector<unsigned char> bytes = untouched;
    void* const out = bytes.data();
    const char* const error = "DataTypeConvertBetweenFcnUnknownError(double)";
    for (const int id : {-1, 9, plain, fixedPoint, enumeration, alias}) {
        EXPECT_ERROR(error, table.convertToUsingSrcId(id, Double, 4, values, nullptr, out));
        EXPECT_ERROR(error, table.convertToUsingDstId(Double, id, 4, values, nullptr, out));
    }
    const auto zero = FXP_ROUND_ZERO;
    const auto wrap = FXP_OVERFLOW_WRAP;
    _tvDataTypeAccess_tag access = {&table};
    for (const int id : {-2147483647 - 1, -10, -1, 9, 1000, 2147483647}) {
        for (const auto& [src, dst] : {std::pair(id, 0), {0, id}}) {
            EXPECT_EQ(
                0, ConvertBetweenBuiltinFcn(&access, nullptr, dst, src, 4, values, nullptr, out));
            EXPECT_FALSE(tvConvertBuiltInDTypeVectWithCheck(values, 4, src, false, out, 4, dst,
                                                            false, wrap, zero, false));
        }
    }
    const auto select = utGetTvBuiltinDtypeConvFcn;
    for (const int mode : {-1, 7}) {
        const auto overflow = fxpModeOverflow_tag(mode);
        const auto rounding = fxpModeRounding_tag(mode);
        for (const auto function :
             {select(Double, Int8, wrap, rounding), select(Double, Int8, overflow, zero)}) {
            EXPECT_FALSE(
                function(values, out, 4, 4, false, false, false, Double, Int8, overflow, rounding));
        }
        EXPECT_EQ(select(Int8, Int16, wrap, zero), select(Int8, Int16, overflow, rounding));
    }
    EXPECT_EQ(untouched, bytes);
}

// The other functions of floating-point values; the conversions have a test of their own.
TEST(Selection, IgnoresTheFloatingPointEnvironment) {
    const TVTypeSys::DataTypeTable table;
    const double values[] = {-5e-324, 2.5, std::nan("")};
    for (const auto& environment : floating_point::environments) {
        std::array<bool, 4> found{};
        unsigned char negative[3] = {};
        double rounded = 0;
        floating_point::run(environment, [&] {
            for (std::size_t i = 0; i < 3; ++i) {
                found[i] = TVTypeSys::DataType::CheckForOverflowDuringDataTypeConversion(
                    &values[i], 1, Double, false, Uint8, FXP_ROUND_FLOOR);
            }
            table.isNegative(Double, 3, values, nullptr, negative);
            found[3] = table.checkIfNonZeroArray(values, 1, Double, false);
            rounded = utdtypeconv::ScalarConvergentPreInt(values[1]);
        });
        EXPECT_EQ((std::array{true, false, false, true}), found) << environment.name;
        EXPECT_EQ(0, std::memcmp(negative, "\1\0\0", 3)) << environment.name;
        EXPECT_EQ(2, rounded) << environment.name;
    }
}

template <class T>
void expectTiesToEven() {
    const T inf = std::numeric_limits<T>::infinity();
    const T odd = 1 / std::numeric_limits<T>::epsilon() + 1;
    const T expected[][2] = {{T(0.5), 0},   {T(0.75), 1},  {T(1.5), 2},       {T(2.5), 2},
                             {T(-2.5), -2}, {T(-3.5), -4}, {T(-0.25), -T(0)}, {-T(0), -T(0)},
                             {odd, odd},    {-inf, -inf}};
    for (const auto& [x, rounded] : expected) {
        EXPECT_EQ(rounded, utdtypeconv::ScalarConvergentPreInt(x));
        EXPECT_EQ(std::signbit(x), std::signbit(utdtypeconv::ScalarConvergentPreInt(x)));
    }
    EXPECT_TRUE(std::isnan(utdtypeconv::ScalarConvergentPreInt(T(std::nan("")))));
}

TEST(Selection, ScalarRoundingTakesTiesToEven) {
    expectTiesToEven<double>();
    expectTiesToEven<float>();
}

} // namespace
