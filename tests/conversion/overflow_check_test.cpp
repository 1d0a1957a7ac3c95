#include "unaligned.h"

#include <tvtypes/datatype.h>
#include <tvtypes/fixedpoint.h>
#include <tvtypes/functions.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <type_traits>

using namespace TVTypeSys;

namespace {

template <class...>
struct Types {};

// By id, from int8 on.
using Integers = Types<signed char, unsigned char, short, unsigned short, int, unsigned int>;

// Whether an element is found to overflow, alone as well as in the last imaginary part.
template <class Src>
bool overflows(Src x, int srcId, int dstId, int rounding = FXP_ROUND_ZERO) {
    const auto check = [&](const std::vector<Src>& parts, int count, bool isComplex) {
        return DataType::CheckForOverflowDuringDataTypeConversion(
            behindOneByte(parts).data() + 1, count, srcId, isComplex, dstId,
            static_cast<fxpModeRounding_tag>(rounding));
    };
    const bool found = check({x}, 1, false);
    EXPECT_EQ(found, check({0, 0, 0, x}, 2, true));
    return found;
}

// The roundings by mode, in a type in which nothing is lost.
long double near(long double x) { return std::floor(x + 0.5L); }
long double (*const roundings[])(long double) = {truncl, near,   ceill,     floorl,
                                                 truncl, roundl, nearbyintl};

// Rounds and then tests the range, for the values at each limit of Dst and beside it.
template <class Dst, class Src>
void expectAsRounded(int srcId, int dstId) {
    using Limits = std::numeric_limits<Src>;
    const double lb = std::numeric_limits<Dst>::min();
    const double ub = std::numeric_limits<Dst>::max();
    for (const double limit : {lb - 1, lb - 0.5, lb, lb + 0.5, ub - 0.5, ub, ub + 0.5, ub + 1, 1e30,
                               HUGE_VAL, -HUGE_VAL, std::nan("")}) {
        std::vector<Src> values;
        if constexpr (std::is_floating_point_v<Src>) {
            const auto at = static_cast<Src>(limit);
            values = {at, std::nextafter(at, Limits::lowest()), std::nextafter(at, Limits::max())};
        } else if (limit >= Limits::min() && limit <= Limits::max()) {
            values = {static_cast<Src>(limit)};
        }
        for (const Src x : values) {
            for (int mode = -1; mode <= 7; ++mode) {
                const bool isMode = mode >= 0 && mode <= 6;
                const long double r = isMode ? roundings[mode](x) : x;
                const bool expected = (isMode || Limits::is_integer) && (r < lb || r > ub);
                EXPECT_EQ(expected, overflows(x, srcId, dstId, mode))
                    << testing::PrintToString(x) << " to " << dstId << ", mode " << mode;
            }
        }
    }
}

template <class Src, class... Dst>
void expectAsRounded(int srcId, Types<Dst...>) {
    int dstId = 2;
    (expectAsRounded<Dst, Src>(srcId, dstId++), ...);
}

template <class... Src>
void expectAllAsRounded(Types<Src...>) {
    int srcId = 2;
    (expectAsRounded<Src>(srcId++, Integers()), ...);
}

} // namespace

TEST(OverflowCheck, IsThatOfTheRoundedValue) {
    expectAsRounded<double>(0, Integers());
    expectAsRounded<float>(1, Integers());
    expectAllAsRounded(Integers());
    EXPECT_TRUE((DataTypeConvOverflowUtilities::CheckFloatVectForConvOverflow<short, float>(
        std::vector<float>{0, 0, 0, 32768}.data(), 2, true, FXP_ROUND_FLOOR)));
}

TEST(OverflowCheck, ToSingleFindsWhatBecomesInfinite) {
    const double tie = std::ldexp(2.0 - std::ldexp(1.0, -24), 127);
    for (const double x : {tie, -tie, 1e300}) {
        EXPECT_TRUE(overflows(x, 0, 1));
    }
    for (const double x : {std::nextafter(tie, 0.0), HUGE_VAL, -HUGE_VAL, std::nan("")}) {
        EXPECT_FALSE(overflows(x, 0, 1));
    }
}

TEST(OverflowCheck, FindsNothingElsewhere) {
    for (const int id : {-10, -1, 8, 9}) {
        EXPECT_FALSE(overflows(1e300, id, 2) || overflows(1e300, 0, id)) << id;
    }
    EXPECT_FALSE(overflows(-1, 6, 0) || overflows(-1, 6, 1) || overflows(-1, 6, 8));
    EXPECT_FALSE(DataType::CheckForOverflowDuringDataTypeConversion(nullptr, -2147483647 - 1, 0,
                                                                    true, 2, FXP_ROUND_ZERO));
}
