#include <tvtypes/datatypetable.h>
#include <tvtypes/functions.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <limits>
#include <vector>

using namespace TVTypeSys;

// The elements, preceded by one byte.
template <class Element>
std::vector<unsigned char> behindOneByte(const std::vector<Element>& elements) {
    std::vector<unsigned char> bytes(1 + elements.size() * sizeof(Element));
    std::memcpy(bytes.data() + 1, elements.data(), bytes.size() - 1);
    return bytes;
}

template <class Value, std::size_t typeId>
struct BuiltIn {
    using Element = Value;
    static constexpr std::size_t id = typeId;
};

template <class Type>
class ComparatorTest : public testing::Test {};
using BuiltIns =
    testing::Types<BuiltIn<double, 0>, BuiltIn<float, 1>, BuiltIn<std::int8_t, 2>,
                   BuiltIn<std::uint8_t, 3>, BuiltIn<std::int16_t, 4>, BuiltIn<std::uint16_t, 5>,
                   BuiltIn<std::int32_t, 6>, BuiltIn<std::uint32_t, 7>, BuiltIn<std::uint8_t, 8>>;
TYPED_TEST_SUITE(ComparatorTest, BuiltIns);

TYPED_TEST(ComparatorTest, ComparesValues) {
    using Element = typename TypeParam::Element;
    using Limits = std::numeric_limits<Element>;
    const DataTypeTable table;
    const DataType& type = *table.getDataTypeAt(TypeParam::id + 1);
    // Values that integers do not have become 0.
    std::vector<Element> values{0, 2, Limits::infinity(), Limits::quiet_NaN(),
                                Limits::denorm_min()};
    for (std::size_t i = values.size(); i-- > 0;) {
        values.push_back(static_cast<Element>(-values[i]));
    }
    values.insert(values.end(), {Limits::lowest(), Limits::max()});
    for (const Element a : values) {
        for (const Element b : values) {
            const auto lhs = behindOneByte<Element>({a, b, a});
            const auto rhs = behindOneByte<Element>({b, a, a});
            // One element, two, then none.
            unsigned char out[3] = {};
            const auto expect = [&](bool first, bool second, const auto& test, auto... extra) {
                std::memset(out, 9, sizeof out);
                for (const int count : {1, 2, 0, -1}) {
                    EXPECT_EQ(1, test(nullptr, nullptr, 0, count, lhs.data() + 1, extra..., out));
                    const unsigned char behind = count == 1 ? 9 : second;
                    const unsigned char expected[] = {first, behind, 9};
                    EXPECT_EQ(0, std::memcmp(expected, out, 3));
                }
            };
            expect(a > 0, b > 0, type.getIsPositiveFcn(), nullptr);
            expect(a < 0, b < 0, type.getIsNegativeFcn(), nullptr);
            expect(a > b, b > a, type.getGreaterThanFcn(), rhs.data() + 1, nullptr);
            expect(a >= b, b >= a, type.getGreaterEqualFcn(), rhs.data() + 1, nullptr);
        }
    }
}
