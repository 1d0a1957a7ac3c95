// Detection of overflow from the source of a conversion alone.
#include "builtin_ids.h"
#include "conversion/rounding.h"
#include "conversion/unaligned.h"
#include "floating_point_environment.h"

#include <tvtypes/conversion/overflow_check.h>
#include <tvtypes/datatype.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <limits>

namespace TVTypeSys {

namespace {

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

bool isIntegerId(int id) { return id >= Int8Id && id <= UInt32Id; }

/// Returns the number of plain elements, real and imaginary parts counted alike.
std::size_t partCount(int count, bool isComplex) {
    return count < 1 ? 0 : (isComplex ? 2 : 1) * static_cast<std::size_t>(count);
}

/// Not inlined, so that the arithmetic stays within the caller's DefaultEnvironment.
template <class Src, class Test>
[[gnu::noinline]] bool anyElement(const void* data, std::size_t parts, const Test& overflows) {
    for (std::size_t i = 0; i < parts; ++i) {
        if (overflows(elementAt<Src>(data, i))) {
            return true;
        }
    }
    return false;
}

/// The values next to the range of an integer type that a rounding mode takes out of it.
struct RoundingLimits {
    double below; ///< the greatest value that is rounded to less than the minimum
    double above; ///< the least value that is rounded to more than the maximum
};

/// Rounding is monotonic, and its result changes at an integer, half way between two, or just
/// beyond either. So a limit is one of four candidates, the nearest that is rounded out of range.
/// All are exact as double for ranges of up to 32 bits.
template <class Mode>
RoundingLimits limitsOf(Range range) {
    const auto min = static_cast<double>(range.min);
    const auto max = static_cast<double>(range.max);
    const auto pred = [](double x) { return std::nextafter(x, -HUGE_VAL); };
    const auto succ = [](double x) { return std::nextafter(x, HUGE_VAL); };
    const double below[] = {pred(min), min - 0.5, pred(min - 0.5), min - 1};
    const double above[] = {succ(max), max + 0.5, succ(max + 0.5), max + 1};
    return {*std::ranges::find_if(below, [&](double x) { return Mode::whole(x) < min; }),
            *std::ranges::find_if(above, [&](double x) { return Mode::whole(x) > max; })};
}

template <class... Modes>
struct LimitTable {
    RoundingLimits rows[sizeof...(Modes)][std::size(integerRanges)];

    LimitTable() {
        for (std::size_t type = 0; type < std::size(integerRanges); ++type) {
            std::size_t mode = 0;
            ((rows[mode++][type] = limitsOf<Modes>(integerRanges[type])), ...);
        }
    }
};

/// Returns whether any floating-point element, rounded, is outside the range of the integer type
/// with this id; false if `rounding` is not an enumerator. NaN is not outside.
template <class Src>
bool anyRoundedOutside(const void* data, std::size_t parts, int dstId,
                       fxpModeRounding_tag rounding) {
    static const RoundingModes<LimitTable> limits;
    if (rounding < 0 || rounding >= static_cast<int>(std::size(limits.rows))) {
        return false;
    }
    const RoundingLimits& limit = limits.rows[rounding][dstId - Int8Id];
    return anyElement<Src>(data, parts,
                           [limit](double x) { return x >= limit.above || x <= limit.below; });
}

/// Returns whether a finite double becomes an infinite single: at least half way from the greatest
/// single to its successor. The tie goes to the even neighbour, which is infinity.
bool becomesInfiniteAsSingle(double x) {
    constexpr double firstToOverflow = 0x1.ffffffp+127;
    return std::fabs(x) >= firstToOverflow && !std::isinf(x);
}

/// Returns whether any integer element is outside the range of the integer type with this id.
template <class Src>
bool anyOutside(const void* data, std::size_t parts, int dstId) {
    const Range dst = integerRanges[dstId - Int8Id];
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
    const DefaultEnvironment environment;
    const std::size_t parts = partCount(count, isComplex);
    if (srcId == DoubleId && dstId == SingleId) {
        return anyElement<double>(data, parts, becomesInfiniteAsSingle);
    }
    if (!isIntegerId(dstId)) {
        return false;
    }
    switch (srcId) {
    case DoubleId:
        return anyRoundedOutside<double>(data, parts, dstId, rounding);
    case SingleId:
        return anyRoundedOutside<float>(data, parts, dstId, rounding);
    case Int8Id:
        return anyOutside<std::int8_t>(data, parts, dstId);
    case UInt8Id:
        return anyOutside<std::uint8_t>(data, parts, dstId);
    case Int16Id:
        return anyOutside<std::int16_t>(data, parts, dstId);
    case UInt16Id:
        return anyOutside<std::uint16_t>(data, parts, dstId);
    case Int32Id:
        return anyOutside<std::int32_t>(data, parts, dstId);
    case UInt32Id:
        return anyOutside<std::uint32_t>(data, parts, dstId);
    default:
        return false;
    }
}

namespace DataTypeConvOverflowUtilities {

template <class Dst, class Src>
bool CheckFloatVectForConvOverflow(const Src* data, int count, bool isComplex,
                                   fxpModeRounding_tag rounding) {
    const DefaultEnvironment environment;
    constexpr int signedId = sizeof(Dst) == 1 ? Int8Id : sizeof(Dst) == 2 ? Int16Id : Int32Id;
    constexpr int dstId = std::numeric_limits<Dst>::is_signed ? signedId : signedId + 1;
    return anyRoundedOutside<Src>(data, partCount(count, isComplex), dstId, rounding);
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
