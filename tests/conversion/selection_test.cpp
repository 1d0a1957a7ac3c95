// Selection and the two entries above it, on values whose results are known by hand.
#include <tvtypes/datatypetable.h>
#include <tvtypes/functions.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <vector>

namespace {

enum Id { Double, Single, Int8, Uint8, Int16, Uint16, Int32, Uint32, Boolean };

constexpr fxpModeRounding_tag roundings[] = {FXP_ROUND_ZERO,  FXP_ROUND_NEAR,
                                             FXP_ROUND_CEIL,  FXP_ROUND_FLOOR,
                                             FXP_ROUND_ROUND, FXP_ROUND_CONVERGENT};

template <class D>
D wrapped(double x, int dstId, fxpModeRounding_tag rounding) {
    D result{};
    tvConvertBuiltInDTypeVectWithCheck(&x, 1, Double, false, &result, 1, dstId, false,
                                       FXP_OVERFLOW_WRAP, rounding, false);
    return result;
}

// clang-format off
TEST(Selection, WrapsAsEachRoundingSays) {
    const struct {
        double x;
        int toInt8[6];
        int toUint8[6];
    } rows[] = {
        // x       zero  near  ceil floor round  conv.   zero near ceil floor round conv.
        {127.5,  { 127, -128, -128,  127, -128, -128}, {127, 128, 128, 127, 128, 128}},
        {128.5,  {-128, -127, -127, -128, -127, -128}, {128, 129, 129, 128, 129, 128}},
        {200.7,  { -56,  -55,  -55,  -56,  -55,  -55}, {200, 201, 201, 200, 201, 201}},
        {300.7,  {  44,   45,   45,   44,   45,   45}, { 44,  45,  45,  44,  45,  45}},
        {-0.5,   {   0,    0,    0,   -1,   -1,    0}, {  0,   0,   0, 255, 255,   0}},
        {-1.5,   {  -1,   -1,   -1,   -2,   -2,   -2}, {255, 255, 255, 254, 254, 254}},
        {-128.5, {-128, -128, -128,  127,  127, -128}, {128, 128, 128, 127, 127, 128}},
        {-129.5, { 127,  127,  127,  126,  126,  126}, {127, 127, 127, 126, 126, 126}},
        {-300.7, { -44,  -45,  -44,  -45,  -45,  -45}, {212, 211, 212, 211, 211, 211}}};
    for (const auto& row : rows) {
        for (int i = 0; i < 6; ++i) {
            EXPECT_EQ(row.toInt8[i], wrapped<std::int8_t>(row.x, Int8, roundings[i])) << row.x;
            EXPECT_EQ(row.toUint8[i], wrapped<std::uint8_t>(row.x, Uint8, roundings[i])) << row.x;
        }
    }
}
// clang-format on

// What a pair has no choice in does not lead to another function.
TEST(Selection, HasOneFunctionForEachDifferenceThatItMakes) {
    const auto select = utGetTvBuiltinDtypeConvFcn;
    for (int dstId = Int8; dstId <= Uint32; ++dstId) {
        for (const fxpModeOverflow_tag overflow : {FXP_OVERFLOW_WRAP, FXP_OVERFLOW_SATURATE}) {
            EXPECT_EQ(select(Single, dstId, overflow, FXP_ROUND_ZERO),
                      select(Single, dstId, overflow, FXP_ROUND_ZERO_ALIAS));
        }
        EXPECT_NE(select(Double, dstId, FXP_OVERFLOW_WRAP, FXP_ROUND_NEAR),
                  select(Double, dstId, FXP_OVERFLOW_WRAP, FXP_ROUND_ROUND));
    }
    for (const fxpModeRounding_tag rounding : roundings) {
        for (const fxpModeOverflow_tag overflow : {FXP_OVERFLOW_WRAP, FXP_OVERFLOW_SATURATE}) {
            for (const auto& [srcId, dstId] :
                 {std::pair(Uint8, Int16), {Double, Single}, {Boolean, Int8}, {Single, Boolean}}) {
                EXPECT_EQ(select(srcId, dstId, FXP_OVERFLOW_WRAP, FXP_ROUND_ZERO),
                          select(srcId, dstId, overflow, rounding));
            }
        }
    }
    EXPECT_NE(select(Uint8, Int8, FXP_OVERFLOW_WRAP, FXP_ROUND_ZERO),
              select(Uint8, Int8, FXP_OVERFLOW_SATURATE, FXP_ROUND_FLOOR));

    // A boolean is a byte, but nothing of it overflows or is lost.
    for (int dstId : {Double, Single, Int16, Uint16, Int32, Uint32}) {
        EXPECT_EQ(select(Uint8, dstId, FXP_OVERFLOW_WRAP, FXP_ROUND_ZERO),
                  select(Boolean, dstId, FXP_OVERFLOW_WRAP, FXP_ROUND_ZERO));
    }
    const std::uint8_t illFormed = 200;
    std::int8_t result = 0;
    EXPECT_TRUE(tvConvertBuiltInDTypeVectWithCheck(&illFormed, 1, Boolean, false, &result, 1, Int8,
                                                   false, FXP_OVERFLOW_SATURATE, FXP_ROUND_ZERO,
                                                   true));
    EXPECT_EQ(-56, result);
}

// Through the table: aliases are resolved; rounded toward zero, saturated, and no loss reported.
TEST(Selection, ServesTheTable) {
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

template <class T>
void expectConvergent() {
    const T inf = std::numeric_limits<T>::infinity();
    const T odd = 1 / std::numeric_limits<T>::epsilon() + 1;
    const T expected[][2] = {{T(0.5), 0},   {T(0.75), 1},  {T(1.5), 2},       {T(2.5), 2},
                             {T(-2.5), -2}, {T(-3.5), -4}, {T(-0.25), -T(0)}, {-T(0), -T(0)},
                             {odd, odd},    {-inf, -inf}};
    for (const auto& [x, rounded] : expected) {
        EXPECT_EQ(rounded, utdtypeconv::ScalarConvergentPreInt(x));
        EXPECT_EQ(std::signbit(x), std::signbit(utdtypeconv::ScalarConvergentPreInt(x)));
    }
    EXPECT_TRUE(
        std::isnan(utdtypeconv::ScalarConvergentPreInt(std::numeric_limits<T>::quiet_NaN())));
}

TEST(Selection, RoundsTiesToEven) {
    expectConvergent<double>();
    expectConvergent<float>();
}

} // namespace
