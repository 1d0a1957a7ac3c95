#include "reference.h"

#include <tvtypes/datatype.h>
#include <tvtypes/fixedpoint.h>
#include <tvtypes/functions.h>

#include <gtest/gtest.h>

#include <vector>

using namespace TVTypeSys;

namespace {

// Checks an unaligned complex vector whose last imaginary part is x.
bool overflows(double x, int srcId, int dstId, int rounding = FXP_ROUND_ZERO) {
    std::vector<std::byte> bytes(1 + 4 * reference::sizeOf(srcId));
    reference::store(x, bytes.data() + 1, 3, srcId);
    return DataType::CheckForOverflowDuringDataTypeConversion(
        bytes.data() + 1, 2, srcId, true, dstId, static_cast<fxpModeRounding_tag>(rounding));
}

} // namespace

TEST(OverflowCheck, MatchesReference) {
    for (const reference::Conversion& c : reference::allConversions()) {
        for (const double x : reference::interestingValues(c.srcId)) {
            ASSERT_EQ(reference::overflows(x, c), overflows(x, c.srcId, c.dstId, c.rounding))
                << "from " << c.srcId << " to " << c.dstId << ", rounding " << c.rounding << ": "
                << testing::PrintToString(x);
        }
    }
    EXPECT_TRUE(overflows(128, 0, 2, FXP_ROUND_ZERO_ALIAS));
    EXPECT_FALSE(overflows(1e30, 0, 2, 7) || overflows(1e30, 0, 2, -1)) << "no rounding mode";
    EXPECT_TRUE((DataTypeConvOverflowUtilities::CheckFloatVectForConvOverflow<short, float>(
        std::vector<float>{0, 0, 0, 32768}.data(), 2, true, FXP_ROUND_FLOOR)));
}

TEST(OverflowCheck, IgnoresOtherTypes) {
    const double huge = 1e300;
    for (const int id : {-10, -1, 9}) {
        for (const auto& [srcId, dstId] : {std::pair(id, 2), {0, id}}) {
            EXPECT_FALSE(DataType::CheckForOverflowDuringDataTypeConversion(&huge, 1, srcId, false,
                                                                            dstId, FXP_ROUND_ZERO));
        }
    }
    EXPECT_FALSE(DataType::CheckForOverflowDuringDataTypeConversion(nullptr, -2147483647 - 1, 0,
                                                                    true, 2, FXP_ROUND_ZERO));
}
