// Every conversion function, for each instruction set of this machine, against the reference model.
#include "reference.h"
#include "support/floating_point.h"

#include "conversion/instruction_set.h"
#include "conversion/selection.h"

#include <gtest/gtest.h>

#include <algorithm>
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
    Vector(std::size_t count, int id, std::size_t offset)
        : id_(id),
          offset_(fence + offset),
          size_(count * reference::sizeOf(id)),
          bytes_(offset_ + size_ + fence, fenceByte) {}

    std::byte* data() { return bytes_.data() + offset_; }
    double operator[](std::size_t position) { return reference::load(data(), position, id_); }
    void set(std::size_t position, double value) { reference::store(value, data(), position, id_); }

    // Whether an element is the value, including the sign of a floating-point zero.
    bool holds(double value, std::size_t position) {
        const double element = (*this)[position];
        if (std::isnan(value)) {
            return std::isnan(element);
        }
        return element == value &&
               (!reference::isFloat(id_) || std::signbit(element) == std::signbit(value));
    }

    bool operator==(const Vector& other) const { return bytes_ == other.bytes_; }

    bool isFenceIntact() const {
        const auto isFence = [](std::byte b) { return b == fenceByte; };
        const auto first = bytes_.begin() + static_cast<std::ptrdiff_t>(offset_);
        return std::all_of(bytes_.begin(), first, isFence) &&
               std::all_of(first + static_cast<std::ptrdiff_t>(size_), bytes_.end(), isFence);
    }

  private:
    static constexpr std::size_t fence = 64;
    static constexpr std::byte fenceByte{0xA5};
    int id_;
    std::size_t offset_;
    std::size_t size_;
    std::vector<std::byte> bytes_;
};

struct Shape {
    std::size_t srcCount;
    std::size_t dstCount;
    bool srcIsComplex = false;
    bool dstIsComplex = false;
};

class InstructionSetTest : public testing::TestWithParam<Level> {
  protected:
    bool run(const Conversion& c, Vector& src, Vector& dst, Shape shape, bool checkLoss) const {
        return selectFunction(*GetParam().kernel, c.srcId, c.dstId, fxpModeOverflow_tag(c.overflow),
                              fxpModeRounding_tag(c.rounding))(
            src.data(), dst.data(), shape.srcCount, shape.dstCount, shape.srcIsComplex,
            shape.dstIsComplex, checkLoss, c.srcId, c.dstId, fxpModeOverflow_tag(c.overflow),
            fxpModeRounding_tag(c.rounding));
    }

    void expectConverted(const Conversion& c, const std::vector<double>& values) const {
        const std::size_t count = values.size();
        Vector src(count, c.srcId, 0);
        Vector dst(count, c.dstId, 0);
        for (std::size_t i = 0; i < count; ++i) {
            src.set(i, values[i]);
        }
        run(c, src, dst, {count, count}, false);
        for (std::size_t i = 0; i < count; ++i) {
            const double expected = reference::convert(values[i], c);
            ASSERT_TRUE(dst.holds(expected, i))
                << testing::PrintToString(c) << ": " << std::hexfloat << values[i] << " became "
                << dst[i] << " instead of " << expected;
        }
    }
};

TEST_P(InstructionSetTest, MatchesReference) {
    for (const Conversion& c : reference::allConversions()) {
        const std::vector<double>& values = reference::interestingValues(c.srcId);
        expectConverted(c, values);
        // A vector of values with an int32 takes the faster loops.
        std::vector<double> small;
        std::copy_if(values.begin(), values.end(), std::back_inserter(small),
                     [](double x) { return std::abs(x) < 0x1p31 - 1; });
        expectConverted(c, small);
    }
}

// One value among others that are kept, at changing positions.
TEST_P(InstructionSetTest, DetectsEveryLoss) {
    constexpr std::size_t count = 600;
    for (const Conversion& c : reference::allConversions()) {
        const std::vector<double>& values = reference::interestingValues(c.srcId);
        Vector src(count, c.srcId, 0);
        Vector dst(count, c.dstId, 0);
        for (std::size_t i = 0; i < count; ++i) {
            src.set(i, 1);
        }
        for (std::size_t v = 0; v < values.size(); v += 1 + values.size() / 500) {
            const std::size_t position = v * 7 % count;
            src.set(position, values[v]);
            ASSERT_EQ(reference::keeps(values[v], c), run(c, src, dst, {count, count}, true))
                << testing::PrintToString(c) << ": " << std::hexfloat << values[v];
            ASSERT_TRUE(dst.holds(reference::convert(values[v], c), position));
            ASSERT_TRUE(run(c, src, dst, {count, count}, false));
            src.set(position, 1);
        }
    }
}

// Real and complex, scalar and vector, with unaligned addresses and lengths around block sizes.
TEST_P(InstructionSetTest, HandlesScalarsAndComplexVectors) {
    for (const Conversion& c : reference::allConversions()) {
        const std::vector<double>& values = reference::interestingValues(c.srcId);
        // To boolean, a source count of 0 is not a scalar, and the destination has one part.
        const bool toBoolean = c.dstId == 8 && c.srcId != 8;
        std::size_t next = 0;
        for (std::size_t count : {0U, 1U, 2U, 3U, 5U, 17U, 33U, 67U, 129U, 511U, 513U, 4097U}) {
            for (std::size_t variant = 0; variant < 12; ++variant) {
                const std::size_t srcCounts[] = {0, 1, std::max<std::size_t>(count, 2)};
                const Shape shape = {srcCounts[variant / 4], count, variant % 2 != 0,
                                     variant / 2 % 2 != 0};
                const bool isScalar = toBoolean ? shape.srcCount == 1 : shape.srcCount <= 1;
                const std::size_t srcParts = shape.srcIsComplex ? 2 : 1;
                const std::size_t dstParts = shape.dstIsComplex && !toBoolean ? 2 : 1;
                const std::size_t held = srcCounts[2] * srcParts;
                Vector src(held, c.srcId, (count + variant) % 5);
                Vector dst(count * dstParts, c.dstId, (count + variant) % 3);
                const bool isKept = (count / 2 + variant) % 2 == 0;
                for (std::size_t i = 0; i < held; ++i) {
                    src.set(i, isKept ? 1.0 : values[next++ * 7 % values.size()]);
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
                ASSERT_EQ(kept, run(c, src, dst, shape, true)) << testing::PrintToString(c);
                for (std::size_t i = 0; i < expected.size(); ++i) {
                    ASSERT_TRUE(dst.holds(expected[i], i)) << testing::PrintToString(c);
                }
                ASSERT_TRUE(src.isFenceIntact() && dst.isFenceIntact());
            }
        }
    }
}

// The bytes of the source whose place the destination takes, in every shape, with and without the
// check; the first blocks hold values that are kept.
TEST_P(InstructionSetTest, ConvertsInPlace) {
    for (const Conversion& c : reference::allConversions()) {
        const std::vector<double>& values = reference::interestingValues(c.srcId);
        for (std::size_t variant = 0; variant < 24; ++variant) {
            constexpr std::size_t counts[] = {2, 700, 2000};
            const std::size_t count = counts[variant / 8];
            const Shape shape = {variant == 1 ? 1 : count, count, variant % 2 != 0,
                                 variant / 2 % 2 != 0};
            const bool toBoolean = c.dstId == 8 && c.srcId != 8;
            const std::size_t parts = count * (shape.srcIsComplex ? 2 : 1);
            const std::size_t dstParts = count * (shape.dstIsComplex && !toBoolean ? 2 : 1);
            if (dstParts * reference::sizeOf(c.dstId) > parts * reference::sizeOf(c.srcId)) {
                continue;
            }
            Vector src(parts, c.srcId, variant % 3);
            for (std::size_t i = 0; i < parts; ++i) {
                src.set(i, i % 2 == 0 && i < 1100 ? 1
                           : i < 1100             ? 0
                                                  : values[i * 7 % values.size()]);
            }
            Vector apart(dstParts, c.dstId, 0);
            const bool checkLoss = variant / 4 % 2 != 0;
            const bool kept = run(c, src, apart, shape, checkLoss);
            ASSERT_EQ(kept, run(c, src, src, shape, checkLoss)) << testing::PrintToString(c);
            ASSERT_EQ(0,
                      std::memcmp(apart.data(), src.data(), dstParts * reference::sizeOf(c.dstId)))
                << testing::PrintToString(c) << ", shape " << variant;
            ASSERT_TRUE(src.isFenceIntact());
        }
    }
}

TEST_P(InstructionSetTest, IgnoresTheFloatingPointEnvironment) {
    for (const Conversion& c : reference::allConversions()) {
        const std::vector<double>& values = reference::interestingValues(c.srcId);
        const std::size_t count = values.size();
        Vector src(count, c.srcId, 0);
        for (std::size_t i = 0; i < count; ++i) {
            src.set(i, values[i]);
        }
        for (const bool checkLoss : {false, true}) {
            Vector expected(count, c.dstId, 0);
            const bool kept = run(c, src, expected, {count, count}, checkLoss);
            for (const auto& environment : floating_point::environments) {
                Vector dst(count, c.dstId, 0);
                bool keptHere = !kept;
                floating_point::run(environment, [&] {
                    keptHere = run(c, src, dst, {count, count}, checkLoss);
                });
                ASSERT_EQ(kept, keptHere) << testing::PrintToString(c) << environment.name;
                ASSERT_TRUE(expected == dst) << testing::PrintToString(c) << environment.name;
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(InstructionSets, InstructionSetTest, testing::ValuesIn(supportedLevels()),
                         [](const auto& info) { return std::string(info.param.name); });

} // namespace
