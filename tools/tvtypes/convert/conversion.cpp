#include "convert/conversion.h"

#include <tvtypes/datatype.h>
#include <tvtypes/functions.h>

#include <fmt/format.h>

#include <algorithm>

namespace tvtool::convert {

namespace {

/// Elements are checked in blocks of this size, and one by one only in a block with a loss.
constexpr std::size_t block = 1024;

std::string indexList(const Occurrences& occurrences) {
    return fmt::format("index {}{}", fmt::join(occurrences.first, ", "),
                       occurrences.count > occurrences.first.size() ? ", ..." : "");
}

} // namespace

void Occurrences::add(std::uint64_t index) {
    constexpr std::size_t shown = 5;
    ++count;
    if (first.size() < shown) {
        first.push_back(index);
    }
}

std::string Losses::summary() const {
    std::string sentence = fmt::format("{} {}, ", elements, elements == 1 ? "value" : "values");
    if (lost.count == 0) {
        return sentence + "nothing lost";
    }
    sentence += fmt::format("{} lost something ({})", lost.count, indexList(lost));
    if (overflowed.count > 0) {
        sentence +=
            fmt::format(", of which {} overflowed ({})", overflowed.count, indexList(overflowed));
    }
    return sentence + "; the first index is 0";
}

Conversion::Conversion(Element source, Type destination, Modes modes)
    : source_(source), destination_{destination, source.isComplex}, modes_(modes) {
    if (source.isComplex && !isFloating(destination)) {
        throw Error(
            fmt::format("complex elements become double or single, not {}", typeName(destination)));
    }
}

void Conversion::convert(const std::byte* from, std::byte* to, std::size_t count) {
    const std::size_t fromSize = sizeOf(source_);
    const std::size_t toSize = sizeOf(destination_);
    for (std::size_t begin = 0; begin < count; begin += block) {
        const std::size_t end = std::min(begin + block, count);
        if (convertExactly(from + begin * fromSize, to + begin * toSize, end - begin)) {
            continue;
        }
        for (std::size_t i = begin; i < end; ++i) {
            if (!convertExactly(from + i * fromSize, to + i * toSize, 1)) {
                losses_.lost.add(losses_.elements + i);
                if (overflows(from + i * fromSize)) {
                    losses_.overflowed.add(losses_.elements + i);
                }
            }
        }
    }
    losses_.elements += count;
}

bool Conversion::convertExactly(const std::byte* from, std::byte* to, std::size_t count) const {
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
