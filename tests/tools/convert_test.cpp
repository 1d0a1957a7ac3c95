// Conversion of values on the command line: results, losses and errors.
#include "support.h"

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <iterator>
#include <sstream>

namespace tvtool {

namespace {

using testing::HasSubstr;

/// Splits words at blanks.
std::vector<std::string> split(const std::string& words) {
    std::istringstream stream(words);
    return {std::istream_iterator<std::string>(stream), {}};
}

Outcome convert(const std::string& call, const std::string& input = {}) {
    return run(split("convert " + call), input);
}

TEST(Convert, WrapsAndSaturatesUnderEachRounding) {
    const char* const roundings[] = {"zero", "near", "ceil", "floor", "round", "convergent"};
    const char* const values = "127.5 128.5 200.7 300.7 -0.5 -1.5 -128.5 -129.5 -300.7 nan -inf";
    const struct {
        const char* modes;
        const char* results[6];
    } rows[] = {
        {"--to int8 --overflow wrap",
         {"127 -128 -56 44 0 -1 -128 127 -44 0 0", "-128 -127 -55 45 0 -1 -128 127 -45 0 0",
          "-128 -127 -55 45 0 -1 -128 127 -44 0 0", "127 -128 -56 44 -1 -2 127 126 -45 0 0",
          "-128 -127 -55 45 -1 -2 127 126 -45 0 0", "-128 -128 -55 45 0 -2 -128 126 -45 0 0"}},
        {"--to uint8 --overflow wrap",
         {"127 128 200 44 0 255 128 127 212 0 0", "128 129 201 45 0 255 128 127 211 0 0",
          "128 129 201 45 0 255 128 127 212 0 0", "127 128 200 44 255 254 127 126 211 0 0",
          "128 129 201 45 255 254 127 126 211 0 0", "128 128 201 45 0 254 128 126 211 0 0"}},
        {"--to int8 --overflow saturate",
         {"127 127 127 127 0 -1 -128 -128 -128 0 -128",
          "127 127 127 127 0 -1 -128 -128 -128 0 -128",
          "127 127 127 127 0 -1 -128 -128 -128 0 -128",
          "127 127 127 127 -1 -2 -128 -128 -128 0 -128",
          "127 127 127 127 -1 -2 -128 -128 -128 0 -128",
          "127 127 127 127 0 -2 -128 -128 -128 0 -128"}}};
    for (const auto& row : rows) {
        for (std::size_t i = 0; i < 6; ++i) {
            const auto call = fmt::format("{} --round {} {}", row.modes, roundings[i], values);
            EXPECT_EQ(convert(call).lines(), split(row.results[i])) << call;
        }
    }
}

TEST(Convert, TableShowsDistinctModes) {
    const Outcome all = convert("--table -128.5 300 2");
    EXPECT_THAT(all.lines(),
                testing::IsSupersetOf(
                    {"-128.5  wrap      -128~  -128~  -128~    127!    127!        -128~",
                     "-128.5  saturate  -128~  -128~  -128~   -128!   -128!        -128~",
                     "   300  wrap        44!    44!    44!     44!     44!          44!",
                     "     2  saturate     2      2      2       2       2            2"}));
    EXPECT_THAT(convert("--table --from int16 --to uint8 -1").out,
                HasSubstr("   -1  wrap               255!\n   -1  saturate             0!\n"));
    EXPECT_THAT(convert("--table --to single 0.1 1e300").out,
                HasSubstr("   0.1  any                0.1~\n1e+300  any                inf!\n"));
}

TEST(Convert, ReadsAndWritesValuesOfEachType) {
    const std::pair<const char*, const char*> rows[] = {
        {"--to double 0.1 -0 1e400 0x1.8p1 -.5 -INF -nan 1e-400 +7",
         "0.1 -0 inf 3 -0.5 -inf -nan 0 7"},
        {"--from single --to single 0.1 16777217 1e39", "0.1 16777216 inf"},
        // Read as a double first, it would be rounded to a tie and from there to even.
        {"--from single --to single 1.000000059604644775390626", "1.0000001"},
        {"--from int8 --to int32 -128 127 -0x80 +1", "-128 127 -128 1"},
        {"--from uint32 --to double 4294967295 0xFFFFFFFF", "4294967295 4294967295"},
        {"--from boolean --to double 1 0 true false", "1 0 1 0"},
        {"--to boolean -- -5 0 nan", "1 0 1"}};
    for (const auto& [call, results] : rows) {
        const Outcome outcome = convert(call);
        EXPECT_EQ(outcome.lines(), split(results)) << call << outcome.err;
        EXPECT_EQ(outcome.status, 0);
    }
    EXPECT_EQ(convert("--to int8", "1 2\n\t3\r\n\n").out, "1\n2\n3\n");
}

TEST(Convert, RejectsInvalidValues) {
    const std::pair<const char*, const char*> rows[] = {
        {"--from int8 --to double 5 128",
         "index 1, \"128\", is out of range, which is -128 to 127"},
        {"--from uint8 --to double -1", "index 0, \"-1\", is out of range"},
        {"--from int32 --to double 99999999999999999999", "is out of range"},
        {"--from int8 --to double 1.0", "is not an integer"},
        {"--from int8 --to double 0x", "is not an integer"},
        {"--from int8 --to double --5", "not expected: --5"},
        {"--to int8 1 2 three", "index 2, \"three\", is not a number"},
        {"--to int8 1,5", "is not a number"},
        {"--from boolean --to double 2", "is not 0 or 1"},
        {"--to int9 1", "--to cannot be \"int9\", it is one of double, single, int8"},
        {"--to int8 --round up 1", "one of zero, near, ceil, floor, round, convergent"},
        {"--to int8 --overflow none 1", "one of wrap, saturate"},
        {"--to int8 --format xml --in x 1", "excludes"},
        {"--to int8 --format xml --in x", "raw or npy"},
        {"1", "--to is required"},
        {"--table --strict 1", "excludes"}};
    for (const auto& [call, sentence] : rows) {
        const Outcome outcome = convert(call);
        EXPECT_EQ(outcome.status, 2) << call;
        EXPECT_EQ(outcome.out, "") << call;
        EXPECT_THAT(outcome.err, HasSubstr(sentence)) << call;
    }
    EXPECT_THAT(convert("--to int8", std::string(1 << 20, '1')).err, HasSubstr("is too long"));
}

TEST(Convert, ReportsLosses) {
    const Outcome some = convert("--to int8 1 1.5 300 nan 5 6.5 7.5 -inf --strict");
    EXPECT_EQ(some.err, "double to int8: 8 values, 6 lost something (index 1, 2, 3, 5, 6, ...), of "
                        "which 2 overflowed (index 2, 7); the first index is 0\n");
    EXPECT_EQ(some.status, 1);
    EXPECT_EQ(some.lines().size(), 8U);
    EXPECT_EQ(convert("--to int8 1.5").status, 0);

    const Outcome none = convert("--to int8 --strict 1");
    EXPECT_EQ(none.err, "double to int8: 1 value, nothing lost\n");
    EXPECT_EQ(none.status, 0);
}

} // namespace

} // namespace tvtool
