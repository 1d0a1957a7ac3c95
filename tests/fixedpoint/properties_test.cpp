#include <tvtypes/fixedpoint.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
const double notANumber = std::numeric_limits<double>::quiet_NaN();
const double belowTwo = std::nextafter(2.0, 0.0);

fxpModeDataType modeOf(int value) { return static_cast<fxpModeDataType>(value); }

} // namespace

TEST(FixedPointRecord, ValidationDependsOnTheMode) {
    const std::pair<fxpDataTypeProp, bool> cases[] = {
        {{FXP_DT_FIXPT, 7, 65536, 99999, belowTwo, -3.5, 9}, true},
        {{FXP_DT_FIXPT, 1, 0, 0, 1.0, 0.0, 0}, false},
        {{FXP_DT_FIXPT, 1, -1, 0, 1.0, 0.0, 0}, false},
        {{FXP_DT_FIXPT, 1, 16, 0, 2.0, 0.0, 0}, false},
        {{FXP_DT_FIXPT, 1, 16, 0, 0.5, 0.0, 0}, false},
        {{FXP_DT_FIXPT, 1, 16, 0, notANumber, 0.0, 0}, false},
        {{FXP_DT_FIXPT, 1, 16, 0, 1.0, infinity, 0}, false},
        {{FXP_DT_SCALED_DOUBLE, 0, 1, 0, 1.5, 1.0, 0}, true},
        {{FXP_DT_DOUBLE, 1, 64, 0, 1.0, -0.0, 1}, true},
        {{FXP_DT_DOUBLE, 1, 64, 1, 1.0, 0.0, 0}, false},
        {{FXP_DT_DOUBLE, 1, 32, 0, 1.0, 0.0, 0}, false},
        {{FXP_DT_DOUBLE, 0, 64, 0, 1.0, 0.0, 0}, false},
        {{FXP_DT_SINGLE, 1, 32, 0, 1.0, 0.0, 0}, true},
        {{FXP_DT_BOOLEAN, 0, 8, 0, 1.0, 0.0, 0}, true},
        {{FXP_DT_BOOLEAN, 1, 8, 0, 1.0, 0.0, 0}, false},
        {{modeOf(-1), 1, 16, 0, 1.0, 0.0, 0}, false},
        {{modeOf(5), 1, 16, 0, 1.0, 0.0, 0}, false}};
    for (const auto& [r, isValid] : cases) {
        EXPECT_EQ(isValid, r.validateFxpDTProp()) << fxpDataTypeToIdentifierString_NoCache(&r);
        // The unsigned overload differs for negative word lengths only.
        EXPECT_EQ(isValid || r.WordLength < 0,
                  fxpDataTypeProp::preValidateCombo(
                      r.DataTypeMode, r.Signedness, static_cast<unsigned>(r.WordLength),
                      r.SlopeAdjustmentFactor, r.FixedExponent, r.Bias));
    }
    for (const double slope : {5e-324, 0.0, -1.0, infinity, notANumber}) {
        EXPECT_EQ(slope == 5e-324, fxpDataTypeProp::preValidateTotalSlope(slope)) << slope;
    }
}

TEST(FixedPointRecord, OrderDependsOnTheMode) {
    const fxpDataTypeSortCompare before;
    const fxpDataTypeProp ascending[] = {
        {FXP_DT_FIXPT, 0, 16, -5, 1.9, 9.0, 9}, {FXP_DT_FIXPT, 0, 16, -4, 1.0, 9.0, 9},
        {FXP_DT_FIXPT, 0, 16, -4, 1.5, 1.0, 9}, {FXP_DT_FIXPT, 0, 99, -4, 1.5, 2.0, 9},
        {FXP_DT_FIXPT, 0, -1, -4, 1.5, 2.0, 9}, {FXP_DT_FIXPT, 1, -1, -4, 1.5, 2.0, -2},
        {FXP_DT_FIXPT, 1, -1, -4, 1.5, 2.0, 1}, {FXP_DT_DOUBLE, 1, 64, 0, 1.0, 0.0, 0},
        {FXP_DT_DOUBLE, 1, 32, 0, 1.0, 0.0, 1}, {FXP_DT_BOOLEAN, 0, 8, 0, 1.0, 0.0, -1},
    };
    for (const auto& a : ascending) {
        for (const auto& b : ascending) {
            EXPECT_EQ(&a < &b, before(a, b)) << &a - ascending << ", " << &b - ascending;
        }
    }
    const fxpDataTypeProp unordered[][2] = {
        {{FXP_DT_DOUBLE, 1, 64, 0, 1.0, 0.0, 0}, {FXP_DT_DOUBLE, 1, 32, 0, 1.0, 0.0, 0}},
        {{FXP_DT_FIXPT, 1, 16, 0, notANumber, 0.0, 0}, {FXP_DT_FIXPT, 1, 8, 0, 1.0, 0.0, 1}}};
    for (const auto& [a, b] : unordered) {
        EXPECT_FALSE(before(a, b) || before(b, a));
    }
}

TEST(FixedPointRecord, ModesHaveNames) {
    const char* const names[] = {"FXP_DT_FIXPT",  "FXP_DT_SCALED_DOUBLE", "FXP_DT_DOUBLE",
                                 "FXP_DT_SINGLE", "FXP_DT_BOOLEAN",       "UNKNOWN"};
    for (int mode = 0; mode < 6; ++mode) {
        const fxpDataTypeProp record{modeOf(mode), 0, 8, 0, 1.0, 0.0, 0};
        EXPECT_STREQ(names[mode], fxpDtpGetClassName(&record));
    }
}

TEST(FixedPointRecord, DisplayWritesAllFieldsInOrder) {
    const fxpDataTypeProp record{modeOf(7), 0, 16, -4, 1.5, -2.0, 1};
    testing::internal::CaptureStdout();
    EXPECT_TRUE(fxpDtpPreAssert(true, &record));
    EXPECT_FALSE(fxpDtpPreAssert(false, &record));
    displayFxpDTPFlat(&record);
    EXPECT_EQ("Data Type Assertion\n"
              "\nDataTypeMode        7   UNKNOWN\n"
              "Signedness            0\n"
              "WordLength            16\n"
              "SlopeAdjustmentFactor        1.5000000000000000\n"
              "FixedExponent         -4\n"
              "Bias                        -2.0000000000000000\n"
              "\n"
              "\nMode=7(UNKNOWN)  Signed=0  WL=16  SAF=       1.5000000000000000  FE=-4"
              "  B=      -2.0000000000000000\n",
              testing::internal::GetCapturedStdout());
}
