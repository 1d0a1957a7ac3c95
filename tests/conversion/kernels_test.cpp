// Every conversion function, for each instruction set of this machine, against the reference model.
#include "reference.h"
#include "support/floating_point.h"

#include "conversion/instruction_set.h"
#include "conversion/selection.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <iterator>
#include <ostream>
#include <string>
#include <vector>

using reference::Conversion;
using TVTypeSys::conversion::Kernel;

namespace reference {

void PrintTo(const Conversion& c, std::ostream* os) {
    *os << "from " << c.srcId << " to " << c.dstId << ", overflow " << c.overflow << ", rounding "
        << c.rounding;
}

} // namespace reference

namespace {

struct Level {
    const char* name;
    const Kernel* kernel;
};

void PrintTo(const Level& level, std::ostream* os) { *os << level.name; }

std::vector<Level> supportedLevels() {
    using namespace TVTypeSys::conversion;
#if defined(__x86_64__)
    const Level all[] = {
        {"V1", &kernelX86V1}, {"V2", &kernelX86V2}, {"V3", &kernelX86V3}, {"V4", &kernelX86V4}};
#else
    const Level all[] = {{"Plain", &kernelPlain}};
#endif
    std::vector<Level> levels;
    for (const Level& level : all) {
        levels.push_back(level);
        if (level.kernel == &bestKernel()) {
            break;
        }
    }
    return levels;
}

// A vector at any address, between guard bytes.
class Vector {
  public:
    Vector(std::size_t count, int id, std::size_t offset = 0)
        : id_(id),
          first_(fence + offset),
          size_(count * reference::sizeOf(id)),
          bytes_(first_ + size_ + fence, fenceByte) {}
    Vector(const std::vector<double>& values, int id) : Vector(values.size(), id) {
        for (std::size_t i = 0; i < values.size(); ++i) {
            set(i, values[i]);
        }
    }

    std::byte* data() { return bytes_.data() + first_; }
    std::size_t size() const { return size_; }
    double operator[](std::size_t position) { return reference::load(data(), position, id_); }
    void set(std::size_t position, double value) { reference::store(value, data(), position, id_); }

    // Whether an element is the value, including the sign of a floating-point zero.
    bool holds(double value, std::size_t position) {
        const double element = (*this)[position];
        return std::isnan(value)
                   ? std::isnan(element)
                   : element == value &&
                         (!reference::isFloat(id_) || std::signbit(element) == std::signbit(value));
    }

    bool operator==(const Vector& other) const { return bytes_ == other.bytes_; }

    bool isFenceIntact() {
        const auto isFence = [](std::byte b) { return b == fenceByte; };
        return std::all_of(bytes_.data(), data(), isFence) &&
               std::all_of(data() + size_, bytes_.data() + bytes_.size(), isFence);
    }

  private:
    static constexpr std::size_t fence = 64;
    static constexpr std::byte fenceByte{0xA5};
    int id_;
    std::size_t first_, size_;
    std::vector<std::byte> bytes_;
};

struct Shape {
    std::size_t srcCount, dstCount;
    bool srcIsComplex = false, dstIsComplex = false;
};

class InstructionSetTest : public testing::TestWithParam<Level> {
  protected:
    bool run(const Conversion& c, Vector& src, Vector& dst, Shape shape, bool checkLoss) const {
        const auto overflow = fxpModeOverflow_tag(c.overflow);
        const auto rounding = fxpModeRounding_tag(c.rounding);
        return selectFunction(*GetParam().kernel, c.srcId, c.dstId, overflow, rounding)(
            src.data(), dst.data(), shape.srcCount, shape.dstCount, shape.srcIsComplex,
            shape.dstIsComplex, checkLoss, c.srcId, c.dstId, overflow, rounding);
    }

    // Converts in every environment, with and without the check.
    void expectConverted(const Conversion& c, const std::vector<double>& values) const {
        const std::size_t count = values.size();
        Vector src(values, c.srcId);
        Vector result(count, c.dstId);
        const bool kept = run(c, src, result, {count, count}, true);
        ASSERT_EQ(kept, std::all_of(values.begin(), values.end(),
                                    [&](double x) { return reference::keeps(x, c); }));
        for (std::size_t i = 0; i < count; ++i) {
            const double expected = reference::convert(values[i], c);
            ASSERT_TRUE(result.holds(expected, i)) << std::hexfloat << values[i] << " became "
                                                   << result[i] << " instead of " << expected;
        }
        for (const auto& environment : floating_point::environments) {
            for (const bool checkLoss : {false, true}) {
                Vector dst(count, c.dstId);
                bool keptHere = false;
                floating_point::run(environment, [&] {
                    keptHere = run(c, src, dst, {count, count}, checkLoss);
                });
                ASSERT_EQ(kept || !checkLoss, keptHere) << environment.name;
                ASSERT_TRUE(result == dst) << environment.name;
            }
        }
    }
};

TEST_P(InstructionSetTest, MatchesReferenceInAnyEnvironment) {
    for (const Conversion& c : reference::allConversions()) {
        SCOPED_TRACE(testing::PrintToString(c));
        const std::vector<double>& values = reference::interestingValues(c.srcId);
        ASSERT_NO_FATAL_FAILURE(expectConverted(c, values));
        // A vector of values with an int32 takes the faster loops.
        std::vector<double> small;
        std::copy_if(values.begin(), values.end(), std::back_inserter(small),
                     [](double x) { return std::abs(x) < 0x1p31 - 1; });
        ASSERT_NO_FATAL_FAILURE(expectConverted(c, small));
    }
}

// One value among others that are kept, at changing positions.
TEST_P(InstructionSetTest, DetectsEveryLoss) {
    constexpr std::size_t count = 600;
    for (const Conversion& c : reference::allConversions()) {
        const std::vector<double>& values = reference::interestingValues(c.srcId);
        Vector src(std::vector<double>(count, 1), c.srcId);
        Vector dst(count, c.dstId);
        for (std::size_t v = 0; v < values.size(); v += 1 + values.size() / 500) {
            const std::size_t position = v * 7 % count;
            src.set(position, values[v]);
            ASSERT_EQ(reference::keeps(values[v], c), run(c, src, dst, {count, count}, true))
                << testing::PrintToString(c) << ": " << std::hexfloat << values[v];
            ASSERT_TRUE(dst.holds(reference::convert(values[v], c), position));
            src.set(position, 1);
        }
    }
}

// Real and complex, scalar and vector, with unaligned addresses and lengths around block sizes; and
// in place, if the result is not longer than the source.
TEST_P(InstructionSetTest, HandlesScalarsAndComplexVectors) {
    for (const Conversion& c : reference::allConversions()) {
        const std::vector<double>& values = reference::interestingValues(c.srcId);
        // To boolean, a source count of 0 is not a scalar, and the destination has one part.
        const bool toBoolean = c.dstId == 8 && c.srcId != 8;
        std::size_t next = 0;
        for (std::size_t count : {0U, 1U, 2U, 3U, 5U, 17U, 33U, 67U, 129U, 511U, 513U, 1601U}) {
            for (std::size_t variant = 0; variant < 36; ++variant) {
                const std::size_t srcCounts[] = {0, 1, std::max<std::size_t>(count, 2)};
                const Shape shape = {srcCounts[variant / 4 % 3], count, variant % 2 != 0,
                                     variant / 2 % 2 != 0};
                const bool isScalar = toBoolean ? shape.srcCount == 1 : shape.srcCount <= 1;
                const std::size_t srcParts = shape.srcIsComplex ? 2 : 1;
                const std::size_t dstParts = shape.dstIsComplex && !toBoolean ? 2 : 1;
                Vector src(srcCounts[2] * srcParts, c.srcId, (count + variant) % 5);
                // Values that are kept: none, all, or those of the first blocks.
                const std::size_t keptValues =
                    std::array<std::size_t, 3>{0, ~0UL, 1100}[variant / 12];
                for (std::size_t i = 0; i < srcCounts[2] * srcParts; ++i) {
                    src.set(i, i >= keptValues ? values[next++ * 7 % values.size()]
                               : keptValues == 1100 && i % 2 == 1 ? 0
                                                                  : 1);
                }
                bool kept = true;
                std::vector<double> expected;
                for (std::size_t i = 0; i < count; ++i) {
                    const std::size_t k = isScalar ? 0 : i * srcParts;
                    const double imaginary = shape.srcIsComplex ? src[k + 1] : 0;
                    expected.push_back(reference::convert(src[k], c));
                    kept = kept && reference::keeps(src[k], c);
                    if (dstParts == 2) {
                        expected.push_back(reference::convert(imaginary, c));
                        kept = kept && reference::keeps(imaginary, c);
                    } else {
                        kept = kept && (!reference::canLose(c) || imaginary == 0);
                    }
                    if (toBoolean && imaginary != 0) {
                        expected.back() = 1;
                    }
                }
                for (const bool checkLoss : {false, true}) {
                    Vector both = src;
                    Vector dst(count * dstParts, c.dstId, (count + variant) % 3);
                    ASSERT_EQ(kept || !checkLoss, run(c, src, dst, shape, checkLoss))
                        << testing::PrintToString(c);
                    for (std::size_t i = 0; i < expected.size(); ++i) {
                        ASSERT_TRUE(dst.holds(expected[i], i)) << testing::PrintToString(c);
                    }
                    if (dst.size() <= src.size() && (!isScalar || count <= 2)) {
                        ASSERT_EQ(kept || !checkLoss, run(c, both, both, shape, checkLoss));
                        ASSERT_EQ(0, std::memcmp(dst.data(), both.data(), dst.size()))
                            << testing::PrintToString(c) << ", in place, shape " << variant;
                    }
                    ASSERT_TRUE(both.isFenceIntact() && dst.isFenceIntact());
                }
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(InstructionSets, InstructionSetTest, testing::ValuesIn(supportedLevels()),
                         [](const auto& info) { return std::string(info.param.name); });

} // namespace
