#include "support/random_seed.h"

#include <tv_services/number_text.h>
#include <tv_utility/identifier.h>

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdlib>
#include <random>
#include <string>

TEST(NumberText, SelectsNotationByMagnitude) {
    for (const char* const text : {"0", "3", "-0.5", "0.0625", "0.00001", "9.999999999999999e-06",
                                   "1.5e-07", "100000000000000", "999999999999999.9", "1e+15",
                                   "-1e+20", "1e+100", "5e-324", "Inf", "-Inf", "NaN"}) {
        const double x = std::strtod(text, nullptr);
        EXPECT_EQ(text, tvsv_dtoa(x, false));
        EXPECT_EQ(text, tvsv_dtoa_fitools(x));
    }
    EXPECT_EQ("0", tvsv_dtoa(-0.0, false));
    EXPECT_EQ("NaN", tvsv_dtoa(std::copysign(std::nan(""), -1), false));
    EXPECT_EQ("+3", tvsv_dtoa(3.0, true));
}

TEST(NumberText, RoundTrips) {
    std::mt19937_64 random(randomSeed(7));
    for (int i = 0; i < 100000; ++i) {
        const auto x = std::bit_cast<double>(random());
        if (std::isfinite(x)) {
            const std::string text = tvsv_dtoa(x, false);
            EXPECT_EQ(x, std::strtod(text.c_str(), nullptr)) << text;
        }
    }
}

TEST(Identifier, FollowsCRules) {
    for (const char* name : {"a", "_", "A9_b", "double", "auto", "fcn_call", "timer_uint32_pair"}) {
        EXPECT_TRUE(tvIsValidANSICIdentifier(name, true)) << name;
    }
    for (const char* text : {"", "9a", "a b", "a-b", "a.b", " a", "a\n", "\xc3\xa9", "a\xc3\xa9"}) {
        EXPECT_FALSE(tvIsValidANSICIdentifier(text, true)) << text;
    }
    EXPECT_FALSE(tvIsValidANSICIdentifier(nullptr, true));
    EXPECT_FALSE(tvIsValidANSICIdentifier("double", false));
    EXPECT_TRUE(tvIsValidANSICIdentifier("doubles", false));
}
