#include "support/random_seed.h"

#include <tvtypes/units/rational.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <numeric>
#include <random>

namespace {

using TVTypeSys::Rational;

constexpr int least = std::numeric_limits<int>::min();
constexpr int greatest = std::numeric_limits<int>::max();
constexpr double infinity = std::numeric_limits<double>::infinity();

/// Returns the text, with a mark if precision() is set.
std::string show(const Rational& number) {
    return number.toString() + (number.precision() == 0 ? "" : " lossy");
}

std::string made(double numerator, double denominator, int exponent) {
    return show(Rational::safeConvertToRational<double>(numerator, denominator, exponent));
}

TEST(Rational, ReducesToLowestTerms) {
    EXPECT_EQ(show({4, -8, 0}), "-1/2*1e0");
    EXPECT_EQ(show({0, 7, 5}), "0/1*1e5");
    EXPECT_EQ(show({least, 6, 0}), "-1073741824/3*1e0");
    EXPECT_EQ(show({least, least, 0}), "1/1*1e0");
    EXPECT_EQ(show({2, least, 0}), "-1/1073741824*1e0");
    EXPECT_EQ(show({10, 1, greatest}), "1/1*1e-2147483648");
    for (const auto& [numerator, denominator] :
         {std::pair{1, 0}, {least, 0}, {least, -1}, {1, least}, {0, 0}}) {
        EXPECT_THROW(Rational(numerator, denominator, 0), boost::bad_rational) << numerator;
    }
}

TEST(Rational, FlagsLostDigits) {
    const struct {
        double numerator, denominator;
        int exponent;
        const char* expected;
    } cases[] = {{1e20, 3, 0, "1/3*1e20 lossy"},
                 {2147483647, 1, 0, "2147483647/1*1e0"},
                 {2147483648, 1, 0, "214748364/1*1e1 lossy"},
                 {3, 1e20, 2, "3/1*1e-18 lossy"},
                 {4294967296, 4294967294, 0, "536870912/536870911*1e0 lossy"},
                 {0, 5, 3, "0/1*1e3"},
                 {2.9, 4.9, 0, "1/2*1e0"},
                 {-3, -4, 0, "-3/4*1e0"}, // negative over negative is negative
                 {infinity, -infinity, 0, "-1/1*1e0 lossy"},
                 {std::nan(""), 1, 0, "0/1*1e0"}};
    for (const auto& c : cases) {
        EXPECT_EQ(made(c.numerator, c.denominator, c.exponent), c.expected);
    }
    constexpr double largest = std::numeric_limits<double>::max();
    EXPECT_EQ(made(infinity, 1.0, 0), made(largest, 1.0, 0));
    EXPECT_EQ(made(1.0, infinity, greatest), made(1.0, largest, greatest));
    EXPECT_THROW(made(1.0, 0.5, 0), boost::bad_rational);
    EXPECT_THROW(made(1.0, std::nan(""), 0), boost::bad_rational);
}

TEST(Rational, PropagatesFlagToProductsNotCopies) {
    const Rational lossy = Rational(99999, 1, 0) ^ 3;
    EXPECT_EQ(lossy.precision(), 1);
    EXPECT_EQ(Rational(lossy).precision(), 0); // NOLINT: the copy is tested
    Rational product(2, 1, 0);
    EXPECT_EQ((product *= lossy).precision(), 1);
    EXPECT_EQ((lossy ^ 1).precision(), 0);
}

TEST(Rational, WrapsOnOverflow) {
    Rational wrapped(65537, 1, 0);
    wrapped *= Rational(65537, 1, 0);
    EXPECT_EQ(show(wrapped), "131073/1*1e0");
    Rational singular(1, 65536, 0);
    EXPECT_THROW(singular *= Rational(1, 65536, 0), boost::bad_rational);
    EXPECT_EQ(show(Rational(1, 1, 3) ^ greatest), "1/1*1e2147483645");
}

TEST(Rational, ComputesPowersAndQuotients) {
    EXPECT_EQ(show(Rational(381, 125, -1) ^ 3), "55306341/1953125*1e-3");
    EXPECT_EQ(show(Rational(381, 125, -1) ^ -2), "15625/145161*1e2");
    EXPECT_EQ(show(Rational::zero ^ 0), "1/1*1e0");
    EXPECT_THROW(Rational::zero ^ -1, boost::bad_rational);
    EXPECT_NE(Rational(5, 1, -1), Rational(1, 2, 0)) << "forms are compared";
    EXPECT_NE(Rational(0, 7, 5), Rational::zero);
    EXPECT_EQ(Rational(1, 1, 0) / Rational(1, 1, 3), 0.001);
}

// The reading of decimal texts is correctly rounded too.
TEST(Rational, TakesNearestPowersOfTen) {
    for (int exponent = -400; exponent <= 400; ++exponent) {
        const double expected = std::strtod(("1e" + std::to_string(exponent)).c_str(), nullptr);
        ASSERT_EQ(Rational(1, 1, exponent).toDouble(), expected) << exponent;
    }
    EXPECT_EQ(Rational(2, 3, 23).toDouble(), 1e23 * (2.0 / 3.0));
    EXPECT_EQ(Rational(1, 1, least).toDouble(), 0.0);
}

/// The number times 10^6, exactly, for exponents from -6 up.
std::int64_t scaled(const Rational& number) {
    std::int64_t value = number.numerator();
    for (int i = -6; i < number.exponent(); ++i) {
        value *= 10;
    }
    EXPECT_EQ(value % number.denominator(), 0);
    return value / number.denominator();
}

TEST(Rational, MultipliesSmallNumbersExactly) {
    std::mt19937 random(randomSeed(20));
    std::uniform_int_distribution<int> parts(-2000, 2000);
    constexpr int denominators[] = {1, 2, 4, 5, 8, 10, 25, 125, 1000};
    for (int i = 0; i < 20000; ++i) {
        const int a = parts(random);
        const int b = parts(random);
        const int divisor = denominators[random() % std::size(denominators)];
        Rational product(a, divisor, 0);
        product *= Rational(b, divisor, 0);
        ASSERT_EQ(scaled(product) * divisor * divisor, std::int64_t{1000000} * a * b);
        ASSERT_EQ(product.precision(), 0);
        ASSERT_EQ(std::gcd(product.numerator(), product.denominator()), 1);
        ASSERT_TRUE(product.numerator() == 0 || product.numerator() % 10 != 0);
        ASSERT_NE(product.denominator() % 10, 0);
    }
}

} // namespace
