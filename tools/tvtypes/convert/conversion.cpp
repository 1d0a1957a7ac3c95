#include "convert/conversion.h"

#include "convert/error.h"

#include <tvtypes/datatype.h>
#include <tvtypes/functions.h>

#include <fmt/format.h>

#include <algorithm>
#include <array>

namespace tvtool::convert {

namespace {

/// So that losses are looked for one by one only near to some.
constexpr std::size_t block = 1024;

std::string listOf(const Places& places) {
    return fmt::format("index {}{}", fmt::join(places.first, ", "),
                       places.count > places.first.size() ? ", ..." : "");
}

} // namespace

void Places::add(std::uint64_t index) {
    constexpr std::size_t shown = 5;
    ++count;
    if (first.size() < shown) {
        first.push_back(index);
    }
}

std::string sentenceOf(const Losses& losses) {
    std::string sentence =
        fmt::format("{} {}, ", losses.elements, losses.elements == 1 ? "value" : "values");
    if (losses.lost.count == 0) {
        return sentence + "nothing lost";
    }
    sentence += fmt::format("{} lost something ({})", losses.lost.count, listOf(losses.lost));
    if (losses.overflowed.count > 0) {
        sentence += fmt::format(", of which {} overflowed ({})", losses.overflowed.count,
                                listOf(losses.overflowed));
    }
    return sentence + "; the first index is 0";
}

Conversion::Conversion(Element source, Type destination, Modes modes)
    : source_(source), destination_{destination, source.isComplex}, modes_(modes) {
    if (source.isComplex && !isFloating(destination)) {
        throw Error(
            fmt::format("complex elements become double or single, not {}", nameOf(destination)));
    }
}

void Conversion::convert(const std::byte* from, std::byte* to, std::size_t count) {
    const std::size_t fromSize = sizeOf(source_);
    const std::size_t toSize = sizeOf(destination_);
    for (std::size_t begin = 0; begin < count; begin += block) {
        const std::size_t end = std::min(begin + block, count);
        if (keeps(from + begin * fromSize, to + begin * toSize, end - begin)) {
            continue;
        }
        for (std::size_t i = begin; i < end; ++i) {
            if (!keeps(from + i * fromSize, to + i * toSize, 1)) {
                losses_.lost.add(losses_.elements + i);
                if (overflows(from + i * fromSize)) {
                    losses_.overflowed.add(losses_.elements + i);
                }
            }
        }
    }
    losses_.elements += count;
}

bool Conversion::keeps(const std::byte* from, std::byte* to, std::size_t count) const {
    return tvConvertBuiltInDTypeVectWithCheck(
        from, count, static_cast<int>(source_.type), source_.isComplex, to, count,
        static_cast<int>(destination_.type), destination_.isComplex, modes_.overflow,
        modes_.rounding, true);
}

bool Conversion::overflows(const std::byte* element) const {
    return TVTypeSys::DataType::CheckForOverflowDuringDataTypeConversion(
        element, 1, static_cast<int>(source_.type), source_.isComplex,
        static_cast<int>(destination_.type), modes_.rounding);
}

} // namespace tvtool::convert
