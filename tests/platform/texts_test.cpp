#include <tv_services/number_text.h>
#include <tv_utility/identifier.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <random>
#include <string>

TEST(NumberText, SelectsNotationByMagnitude) {
    struct {
        double x;
        const char* text;
    } const cases[] = {
        {0.0, "0"},
        {-0.0, "0"},
        {3.0, "3"},
        {-0.5, "-0.5"},
        {0.0625, "0.0625"},
        {1e-5, "0.00001"},
        {std::nextafter(1e-5, 0.0), "9.999999999999999e-06"},
        {1.5e-7, "1.5e-07"},
        {1e14, "100000000000000"},
        {std::nextafter(1e15, 0.0), "999999999999999.9"},
        {1e15, "1e+15"},
        {-1e20, "-1e+20"},
        {1e100, "1e+100"},
        {5e-324, "5e-324"},
        {std::numeric_limits<double>::infinity(), "Inf"},
        {-std::numeric_limits<double>::infinity(), "-Inf"},
        {-std::numeric_limits<double>::quiet_NaN(), "NaN"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(c.text, tvsv_dtoa(c.x, false));
        EXPECT_EQ(c.text, tvsv_dtoa_fitools(c.x));
    }
    EXPECT_EQ("+3", tvsv_dtoa(3.0, true));
}

TEST(NumberText, RoundTrips) {
    std::mt19937_64 random(7);
    for (int i = 0; i < 100000; ++i) {
        const std::uint64_t bits = random();
        double x = 0;
        std::memcpy(&x, &bits, sizeof x);
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
