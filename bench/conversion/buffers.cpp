#include "conversion/buffers.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <new>
#include <random>

namespace convbench {

namespace {

constexpr std::size_t capacity = counts.back() * 2 * sizeof(double);

/// Range of random values: multiples of `step` from `low` to `high`; all values if `step` is 0.
struct Range {
    double low;
    double high;
    double step;
};

Range rangeOf(const Cell& cell, Data data) {
    const Type& from = cell.from();
    const Type& to = cell.to();
    const Range common = {std::max(from.lowest, to.lowest), std::min(from.greatest, to.greatest),
                          1};
    if (data == Data::Kept) {
        return common;
    }
    if (data == Data::Far) {
        return cell.fromFloatToInteger() ? Range{-0x1p40, 0x1p40, 0}
                                         : Range{from.lowest, from.greatest - 0xFF, 0x100};
    }
    if (cell.dst == booleanId) {
        return {std::max(from.lowest, -1.0), 2, 1};
    }
    if (!from.isFloat) {
        return {from.lowest, from.greatest, 1};
    }
    if (to.isFloat) {
        return {-1000, 1000, 0};
    }
    const double beyond = (to.greatest - to.lowest) / 4;
    return {to.lowest - beyond, to.greatest + beyond, 0};
}

template <class T>
void fill(void* memory, std::size_t parts, const Range& range, bool imaginaryPartsAreZero) {
    T* const values = static_cast<T*>(memory);
    std::mt19937_64 random(1);
    const double width = (range.high - range.low) + (range.step == 0 ? 0 : range.step);
    for (std::size_t i = 0; i < parts; ++i) {
        const double fraction = static_cast<double>(random() >> 11) * 0x1p-53;
        double value = range.low + fraction * width;
        if (range.step != 0) {
            value = std::min(std::floor(value / range.step) * range.step, range.high);
        }
        values[i] = static_cast<T>(imaginaryPartsAreZero && i % 2 == 1 ? 0 : value);
    }
}

using Fill = void (*)(void*, std::size_t, const Range&, bool);
constexpr Fill fills[] = {fill<double>,       fill<float>,         fill<std::int8_t>,
                          fill<std::uint8_t>, fill<std::int16_t>,  fill<std::uint16_t>,
                          fill<std::int32_t>, fill<std::uint32_t>, fill<std::uint8_t>};

} // namespace

Buffers::Buffers() : source_(allocate()), destination_(allocate()) {}

Buffers::Memory Buffers::allocate() {
    Memory memory(std::aligned_alloc(64, capacity));
    if (!memory) {
        throw std::bad_alloc();
    }
    std::memset(memory.get(), 1, capacity);
    return memory;
}

void Buffers::prepare(const Case& wanted) {
    // A dropped imaginary part is kept only if it is zero.
    const bool dropsImaginaryParts =
        wanted.srcIsComplex() && (!wanted.dstIsComplex() || wanted.cell.dst == booleanId);
    const Contents contents = {wanted.cell.src, wanted.cell.dst, wanted.data, wanted.count,
                               dropsImaginaryParts && wanted.data == Data::Kept};
    if (contents_ == contents) {
        return;
    }
    fills[contents.src](source_.get(), 2 * wanted.count, rangeOf(wanted.cell, wanted.data),
                        contents.imaginaryPartsAreZero);
    contents_ = contents;
}

} // namespace convbench
