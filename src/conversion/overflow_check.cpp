// Whether a conversion would overflow, told from the source alone.
#include "conversion/unaligned.h"

#include <tvtypes/datatype.h>
#include <tvtypes/functions.h>

#include <cmath>
#include <cstdint>
#include <limits>

namespace TVTypeSys {

namespace {

enum TypeId { doubleId, singleId, int8Id, uint8Id, int16Id, uint16Id, int32Id, uint32Id };

/// How many plain elements there are, real and imaginary parts counted alike; no more than fit.
std::size_t partsOf(int count, bool isComplex) {
    return count < 1 ? 0 : (isComplex ? 2 : 1) * static_cast<std::size_t>(count);
}

template <class Src, class Test>
bool anyElement(const void* data, std::size_t parts, const Test& overflows) {
    for (std::size_t i = 0; i < parts; ++i) {
        if (overflows(elementAt<Src>(data, i))) {
            return true;
        }
    }
    return false;
}

/// Whether any floating-point element, rounded, falls out of the range of `Dst`. Every limit is a
/// double, and every element is compared as one. NaN meets no limit.
template <class Dst, class Src>
bool anyRoundedOutside(const void* data, std::size_t parts, fxpModeRounding_tag rounding) {
    constexpr double lb = std::numeric_limits<Dst>::min();
    constexpr double ub = std::numeric_limits<Dst>::max();
    switch (rounding) {
    case FXP_ROUND_ZERO:
    case FXP_ROUND_ZERO_ALIAS:
        return anyElement<Src>(data, parts, [](double x) { return x >= ub + 1 || x <= lb - 1; });
    case FXP_ROUND_NEAR:
    case FXP_ROUND_CONVERGENT: // lb is even and ub odd, so the ties go as those of Near
        return anyElement<Src>(data, parts, [](double x) { return x >= ub + 0.5 || x < lb - 0.5; });
    case FXP_ROUND_CEIL:
        return anyElement<Src>(data, parts, [](double x) { return x > ub || x <= lb - 1; });
    case FXP_ROUND_FLOOR:
        return anyElement<Src>(data, parts, [](double x) { return x >= ub + 1 || x < lb; });
    case FXP_ROUND_ROUND:
        return anyElement<Src>(data, parts,
                               [](double x) { return x >= ub + 0.5 || x <= lb - 0.5; });
    }
    return false;
}

/// As anyRoundedOutside, for the integer type with this id; false for every other id.
template <class Src>
bool anyRoundedOutside(const void* data, std::size_t parts, int dstId,
                       fxpModeRounding_tag rounding) {
    switch (dstId) {
    case int8Id:
        return anyRoundedOutside<signed char, Src>(data, parts, rounding);
    case uint8Id:
        return anyRoundedOutside<unsigned char, Src>(data, parts, rounding);
    case int16Id:
        return anyRoundedOutside<short, Src>(data, parts, rounding);
    case uint16Id:
        return anyRoundedOutside<unsigned short, Src>(data, parts, rounding);
    case int32Id:
        return anyRoundedOutside<int, Src>(data, parts, rounding);
    case uint32Id:
        return anyRoundedOutside<unsigned int, Src>(data, parts, rounding);
    default:
        return false;
    }
}

/// Whether a finite double is nearer to what would follow the greatest single than to that single.
/// The tie goes to the even neighbour, which is infinity.
bool becomesInfiniteAsSingle(double x) {
    constexpr double firstToOverflow = 0x1.ffffffp+127;
    return std::fabs(x) >= firstToOverflow && !std::isinf(x);
}

struct Range {
    std::int64_t min;
    std::int64_t max;
};

template <class Integer>
constexpr Range rangeOf{std::numeric_limits<Integer>::min(), std::numeric_limits<Integer>::max()};

// By id, from int8 on.
constexpr Range integerRanges[] = {rangeOf<std::int8_t>,  rangeOf<std::uint8_t>,
                                   rangeOf<std::int16_t>, rangeOf<std::uint16_t>,
                                   rangeOf<std::int32_t>, rangeOf<std::uint32_t>};

/// Whether any integer element falls out of the range of the integer type with this id.
template <class Src>
bool anyOutside(const void* data, std::size_t parts, int dstId) {
    if (dstId < int8Id || dstId > uint32Id) {
        return false;
    }
    const Range dst = integerRanges[dstId - int8Id];
    if (dst.min <= rangeOf<Src>.min && rangeOf<Src>.max <= dst.max) {
        return false;
    }
    return anyElement<Src>(data, parts,
                           [dst](std::int64_t x) { return x < dst.min || x > dst.max; });
}

} // namespace

bool DataType::CheckForOverflowDuringDataTypeConversion(const void* data, int count, int srcId,
                                                        bool isComplex, int dstId,
                                                        fxpModeRounding_tag rounding) {
    const std::size_t parts = partsOf(count, isComplex);
    switch (srcId) {
    case doubleId:
        return dstId == singleId ? anyElement<double>(data, parts, becomesInfiniteAsSingle)
                                 : anyRoundedOutside<double>(data, parts, dstId, rounding);
    case singleId:
        return anyRoundedOutside<float>(data, parts, dstId, rounding);
    case int8Id:
        return anyOutside<std::int8_t>(data, parts, dstId);
    case uint8Id:
        return anyOutside<std::uint8_t>(data, parts, dstId);
    case int16Id:
        return anyOutside<std::int16_t>(data, parts, dstId);
    case uint16Id:
        return anyOutside<std::uint16_t>(data, parts, dstId);
    case int32Id:
        return anyOutside<std::int32_t>(data, parts, dstId);
    case uint32Id:
        return anyOutside<std::uint32_t>(data, parts, dstId);
    default:
        return false;
    }
}

namespace DataTypeConvOverflowUtilities {

template <class Dst, class Src>
bool CheckFloatVectForConvOverflow(const Src* data, int count, bool isComplex,
                                   fxpModeRounding_tag rounding) {
    return anyRoundedOutside<Dst, Src>(data, partsOf(count, isComplex), rounding);
}

#define TVTYPES_INSTANTIATE_CHECK(Dst)                                                             \
    template bool CheckFloatVectForConvOverflow<Dst, float>(const float*, int, bool,               \
                                                            fxpModeRounding_tag);                  \
    template bool CheckFloatVectForConvOverflow<Dst, double>(const double*, int, bool,             \
                                                             fxpModeRounding_tag);

TVTYPES_INSTANTIATE_CHECK(signed char)
TVTYPES_INSTANTIATE_CHECK(unsigned char)
TVTYPES_INSTANTIATE_CHECK(short)
TVTYPES_INSTANTIATE_CHECK(unsigned short)
TVTYPES_INSTANTIATE_CHECK(int)
TVTYPES_INSTANTIATE_CHECK(unsigned int)

} // namespace DataTypeConvOverflowUtilities

} // namespace TVTypeSys
