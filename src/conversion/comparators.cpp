// The comparators of the built-in types: four operations on nine element types.
#include "conversion/unaligned.h"
#include "floating_point_environment.h"

#include <tvtypes/conversion/comparators.h>

#include <cstdint>
#include <type_traits>

namespace {

using TVTypeSys::elementAt;

struct Positive {
    template <class Element>
    bool operator()(Element x) const {
        return x > Element{0};
    }
};

struct Negative {
    template <class Element>
    bool operator()(Element x) const {
        return x < Element{0};
    }
};

struct Greater {
    template <class Element>
    bool operator()(Element lhs, Element rhs) const {
        return lhs > rhs;
    }
};

struct GreaterOrEqual {
    template <class Element>
    bool operator()(Element lhs, Element rhs) const {
        return lhs >= rhs;
    }
};

/// The default floating-point environment, in which a subnormal number is not zero; nothing for
/// integers.
struct NoEnvironment {};
template <class Element>
using Environment =
    std::conditional_t<std::is_floating_point_v<Element>, DefaultEnvironment, NoEnvironment>;

/// Writes the result of the test for every element. There is one vector for each operand.
template <class Element, class Test, class... Vectors>
int testEach(int count, void* result, const Vectors*... vectors) {
    [[maybe_unused]] const Environment<Element> environment;
    auto* holds = static_cast<unsigned char*>(result);
    const std::size_t end = count < 1 ? 0 : static_cast<std::size_t>(count);
    for (std::size_t i = 0; i < end; ++i) {
        holds[i] = Test()(elementAt<Element>(vectors, i)...) ? 1 : 0;
    }
    return 1;
}

/// Tests for negative values, without reading the values of an unsigned type.
template <class Element>
int testEachNegative(int count, void* result, const void* values) {
    if constexpr (std::is_unsigned_v<Element>) {
        if (count > 0) {
            std::memset(result, 0, static_cast<std::size_t>(count));
        }
        return 1;
    } else {
        return testEach<Element, Negative>(count, result, values);
    }
}

} // namespace

#define TVTYPES_DEFINE_COMPARATORS(suffix, Element)                                                \
    int utIsPositive_##suffix(_tvDataTypeAccess_tag*, const char*, int, int count,                 \
                              const void* values, const void*, void* result) {                     \
        return testEach<Element, Positive>(count, result, values);                                 \
    }                                                                                              \
    int utIsNegative_##suffix(_tvDataTypeAccess_tag*, const char*, int, int count,                 \
                              const void* values, const void*, void* result) {                     \
        return testEachNegative<Element>(count, result, values);                                   \
    }                                                                                              \
    int utGreaterThan_##suffix(_tvDataTypeAccess_tag*, const char*, int, int count,                \
                               const void* lhs, const void* rhs, const void*, void* result) {      \
        return testEach<Element, Greater>(count, result, lhs, rhs);                                \
    }                                                                                              \
    int utGreaterEqual_##suffix(_tvDataTypeAccess_tag*, const char*, int, int count,               \
                                const void* lhs, const void* rhs, const void*, void* result) {     \
        return testEach<Element, GreaterOrEqual>(count, result, lhs, rhs);                         \
    }

TVTYPES_DEFINE_COMPARATORS(real_T, double)
TVTYPES_DEFINE_COMPARATORS(real32_T, float)
TVTYPES_DEFINE_COMPARATORS(int8_T, std::int8_t)
TVTYPES_DEFINE_COMPARATORS(uint8_T, std::uint8_t)
TVTYPES_DEFINE_COMPARATORS(int16_T, std::int16_t)
TVTYPES_DEFINE_COMPARATORS(uint16_T, std::uint16_t)
TVTYPES_DEFINE_COMPARATORS(int32_T, std::int32_t)
TVTYPES_DEFINE_COMPARATORS(uint32_T, std::uint32_t)
// A byte of any value; a bool other than 0 and 1 would be undefined.
TVTYPES_DEFINE_COMPARATORS(boolean_T, std::uint8_t)
