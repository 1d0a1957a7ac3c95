// Converts any bytes between built-in types, real or complex, at any address, in all modes, and
// compares the result with the reference model of the tests. Buffers end where the last element
// does.
#include "conversion/reference.h"
#include "support/require.h"

#include <tvtypes/datatype.h>
#include <tvtypes/functions.h>

#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <vector>

namespace {

using fuzzing::require;

constexpr int booleanId = 8;

/// Parts of an element: values of one type, at any address.
class Vector {
  public:
    Vector(std::size_t parts, int id, std::size_t offset)
        : id_(id), offset_(offset), bytes_(offset + parts * reference::sizeOf(id), unwritten) {}

    std::byte* data() { return bytes_.data() + offset_; }
    std::size_t size() const { return bytes_.size() - offset_; }
    double operator[](std::size_t part) { return reference::load(data(), part, id_); }

    /// Returns whether a part is the value, including the sign of a floating-point zero.
    bool holds(double value, std::size_t part) {
        const double held = (*this)[part];
        return std::isnan(value) ? std::isnan(held)
                                 : held == value && (!reference::isFloat(id_) ||
                                                     std::signbit(held) == std::signbit(value));
    }

    /// Returns whether the bytes in front of the values are as they were.
    bool isIntactBefore() const {
        return std::all_of(bytes_.begin(), bytes_.begin() + static_cast<std::ptrdiff_t>(offset_),
                           [](std::byte one) { return one == unwritten; });
    }
    bool isUnwritten() const {
        return std::ranges::all_of(bytes_, [](std::byte one) { return one == unwritten; });
    }

  private:
    static constexpr std::byte unwritten{0xA5};

    int id_;
    std::size_t offset_;
    std::vector<std::byte> bytes_;
};

struct Call {
    reference::Conversion conversion;
    int overflow; ///< as requested; the conversion has 0 where that has no effect
    bool srcIsComplex;
    bool dstIsComplex;
    bool checkLoss;
    unsigned long srcCount;
    unsigned long dstCount;

    /// A complex element becomes one boolean, except from boolean.
    bool joinsParts() const {
        return conversion.dstId == booleanId && conversion.srcId != booleanId;
    }
    std::size_t srcParts() const { return srcIsComplex ? 2 : 1; }
    std::size_t dstParts() const { return dstIsComplex && !joinsParts() ? 2 : 1; }

    bool convert(const std::byte* src, std::byte* dst) const {
        return tvConvertBuiltInDTypeVectWithCheck(
            src, srcCount, conversion.srcId, srcIsComplex, dst, dstCount, conversion.dstId,
            dstIsComplex, fxpModeOverflow_tag(overflow), fxpModeRounding_tag(conversion.rounding),
            checkLoss);
    }
};

void checkValues(const Call& call, Vector& src, Vector& dst, bool isKept) {
    bool expectKept = true;
    for (std::size_t i = 0; i < call.dstCount; ++i) {
        const std::size_t from = (call.srcCount > 1 ? i : 0) * call.srcParts();
        const double real = src[from];
        const double imaginary = call.srcIsComplex ? src[from + 1] : 0;
        const bool keepsImaginary = call.dstParts() == 2
                                        ? reference::keeps(imaginary, call.conversion)
                                        : imaginary == 0 || !reference::canLose(call.conversion);
        expectKept = expectKept && reference::keeps(real, call.conversion) && keepsImaginary;
        if (call.joinsParts()) {
            require(dst.holds(real != 0 || imaginary != 0 ? 1 : 0, i));
            continue;
        }
        require(dst.holds(reference::convert(real, call.conversion), i * call.dstParts()));
        if (call.dstIsComplex) {
            const double expected =
                call.srcIsComplex ? reference::convert(imaginary, call.conversion) : 0;
            require(dst.holds(expected, i * 2 + 1));
        }
    }
    require(isKept == (!call.checkLoss || expectKept));
}

void checkOverflow(const Call& call, Vector& src) {
    const reference::Conversion& c = call.conversion;
    if (!reference::isFloat(c.srcId) || reference::isFloat(c.dstId) || c.dstId == booleanId) {
        return;
    }
    const std::size_t parts = src.size() / reference::sizeOf(c.srcId);
    bool expected = false;
    for (std::size_t part = 0; part < parts; ++part) {
        expected = expected || reference::overflows(src[part], c);
    }
    require(expected == TVTypeSys::DataType::CheckForOverflowDuringDataTypeConversion(
                            src.data(), static_cast<int>(parts / call.srcParts()), c.srcId,
                            call.srcIsComplex, c.dstId, fxpModeRounding_tag(c.rounding)));
}

/// Ids and modes without a conversion write nothing.
int checkInvalid(Call call, Vector& src, Vector& dst) {
    const reference::Conversion valid = call.conversion;
    for (const int id : {-1, reference::typeCount}) {
        call.conversion.srcId = id;
        require(!call.convert(src.data(), dst.data()));
        call.conversion = valid;
        call.conversion.dstId = id;
        require(!call.convert(src.data(), dst.data()));
        call.conversion = valid;
    }
    if (reference::isFloat(valid.srcId) && !reference::isFloat(valid.dstId) &&
        valid.dstId != booleanId) {
        call.conversion.rounding = 7;
        require(!call.convert(src.data(), dst.data()));
    }
    require(dst.isUnwritten());
    return 0;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    Call call{};
    reference::Conversion& c = call.conversion;
    c.srcId = input.ConsumeIntegralInRange(0, reference::typeCount - 1);
    c.dstId = input.ConsumeIntegralInRange(0, reference::typeCount - 1);
    call.overflow = input.ConsumeIntegralInRange(0, 1);
    c.overflow = c.srcId == booleanId ? 0 : call.overflow;
    c.rounding = input.ConsumeIntegralInRange(0, 6);
    call.srcIsComplex = input.ConsumeBool();
    call.dstIsComplex = input.ConsumeBool();
    call.checkLoss = input.ConsumeBool();
    const bool replicates = input.ConsumeBool();
    const bool isCounted = input.ConsumeBool();
    const bool isInvalid = input.ConsumeIntegralInRange(0, 31) == 31;
    const auto copies = input.ConsumeIntegralInRange<unsigned long>(0, 3000);
    const auto srcOffset = input.ConsumeIntegralInRange<std::size_t>(0, 15);
    const auto dstOffset = input.ConsumeIntegralInRange<std::size_t>(0, 15);
    const auto bytes = input.ConsumeRemainingBytes<std::uint8_t>();

    const std::size_t elements = bytes.size() / (reference::sizeOf(c.srcId) * call.srcParts());
    if (elements == 0) {
        return 0;
    }
    call.srcCount = replicates ? 1 : elements;
    call.dstCount = replicates ? copies : elements;
    Vector src(call.srcCount * call.srcParts(), c.srcId, srcOffset);
    std::memcpy(src.data(), bytes.data(), src.size());
    Vector dst(call.dstCount * call.dstParts(), c.dstId, dstOffset);
    if (isInvalid) {
        return checkInvalid(call, src, dst);
    }
    if (replicates && !isCounted && !call.joinsParts()) {
        call.srcCount = 0; // as 1
    }
    const bool isKept = call.convert(src.data(), dst.data());
    require(dst.isIntactBefore());
    require(std::memcmp(src.data(), bytes.data(), src.size()) == 0);
    checkValues(call, src, dst, isKept);
    checkOverflow(call, src);

    // In place, with elements that are no larger, the result is the same.
    if (call.srcCount == call.dstCount && dst.size() <= src.size()) {
        Vector buffer = src;
        require(call.convert(buffer.data(), buffer.data()) == isKept);
        require(dst.size() == 0 || std::memcmp(buffer.data(), dst.data(), dst.size()) == 0);
    }
    return 0;
}
