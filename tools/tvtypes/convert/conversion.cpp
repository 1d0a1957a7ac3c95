#include "convert/conversion.h"

#include "convert/values.h"
#include "output/table.h"

#include <tvtypes/datatype.h>
#include <tvtypes/functions.h>

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <span>
#include <utility>

namespace tvtool::convert {

namespace {

/// Elements are checked in blocks of this size, and one by one only in a block with a loss.
constexpr std::size_t block = 1024;

std::string indexList(const Occurrences& occurrences) {
    return fmt::format("index {}{}", fmt::join(occurrences.first, ", "),
                       occurrences.count > occurrences.first.size() ? ", ..." : "");
}

constexpr std::size_t chunk = std::size_t{64} << 10;

/// A progress bar, which is erased at the end of its life.
class ProgressBar {
  public:
    ProgressBar(std::ostream* terminal, std::uint64_t total)
        : terminal_(total > 0 ? terminal : nullptr), total_(total) {}
    ~ProgressBar() {
        if (isShown_) {
            *terminal_ << "\r\x1b[K" << std::flush;
        }
    }
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;

    void update(std::uint64_t done) {
        if (terminal_ == nullptr || Clock::now() < next_) {
            return;
        }
        next_ = Clock::now() + interval;
        isShown_ = true;
        const double part = static_cast<double>(done) / static_cast<double>(total_);
        *terminal_ << fmt::format("\r[{:<{}}] {:3.0f} %",
                                  std::string(std::size_t(part * width), '#'), width, part * 100)
                   << std::flush;
    }

  private:
    using Clock = std::chrono::steady_clock;
    static constexpr std::chrono::milliseconds interval{200};
    static constexpr int width = 40;

    std::ostream* terminal_;
    std::uint64_t total_;
    Clock::time_point next_ = Clock::now() + interval;
    bool isShown_ = false;
};

/// The modes that make a difference for a pair of types, else the first one.
struct DistinctModes {
    std::span<const Named<fxpModeRounding_tag>> roundings;
    std::span<const Named<fxpModeOverflow_tag>> overflows;
};

DistinctModes distinctModes(Type source, Type destination) {
    const auto conversionFunction = [&](fxpModeOverflow_tag overflow,
                                        fxpModeRounding_tag rounding) {
        return utGetTvBuiltinDtypeConvFcn(static_cast<int>(source), static_cast<int>(destination),
                                          overflow, rounding);
    };
    const auto first = conversionFunction(FXP_OVERFLOW_WRAP, FXP_ROUND_ZERO);
    const bool rounds = conversionFunction(FXP_OVERFLOW_WRAP, FXP_ROUND_CEIL) != first;
    const bool saturates = conversionFunction(FXP_OVERFLOW_SATURATE, FXP_ROUND_ZERO) != first;
    return {std::span(roundings).first(rounds ? roundings.size() : 1),
            std::span(overflows).first(saturates ? overflows.size() : 1)};
}

/// Returns the converted value with a mark for a loss.
std::string resultCell(Element source, const std::byte* value, Type destination, Modes modes) {
    Conversion conversion(source, destinationOf(source, destination), modes);
    std::array<std::byte, 16> result{};
    conversion.convert(value, result.data(), 1);
    std::string text;
    appendElement(text, conversion.destination(), result.data());
    const Losses& losses = conversion.losses();
    return text + (losses.overflowed.count > 0 ? '!' : losses.lost.count > 0 ? '~' : ' ');
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
        sentence += "nothing lost";
    } else {
        sentence += fmt::format("{} lost something ({})", lost.count, indexList(lost));
        if (overflowed.count > 0) {
            sentence += fmt::format(", of which {} overflowed ({})", overflowed.count,
                                    indexList(overflowed));
        }
        sentence += "; the first index is 0";
    }
    if (greatestError) {
        sentence += fmt::format("; greatest error {} (index {})", greatestError->value,
                                greatestError->index);
    }
    if (nan > 0 || infinities > 0) {
        sentence += fmt::format("; {} NaN, {} infinite", nan, infinities);
    }
    return sentence;
}

Element destinationOf(Element source, Type destination) {
    if (source.isComplex && !isFloating(destination)) {
        throw Error(
            fmt::format("complex elements become double or single, not {}", typeName(destination)));
    }
    return {destination, source.isComplex};
}

void Conversion::convert(const std::byte* from, std::byte* to, std::size_t count) {
    const std::size_t fromSize = sizeOf(source_);
    const std::size_t toSize = sizeOf(destination_);
    for (std::size_t begin = 0; begin < count; begin += block) {
        const std::size_t end = std::min(begin + block, count);
        countNonFinite(from + begin * fromSize, end - begin);
        if (convertExactly(from + begin * fromSize, to + begin * toSize, end - begin)) {
            continue;
        }
        for (std::size_t i = begin; i < end; ++i) {
            if (!convertExactly(from + i * fromSize, to + i * toSize, 1)) {
                losses_.lost.add(losses_.elements + i);
                addError(from + i * fromSize, to + i * toSize, losses_.elements + i);
                if (overflows(from + i * fromSize)) {
                    losses_.overflowed.add(losses_.elements + i);
                }
            }
        }
    }
    losses_.elements += count;
}

bool Conversion::convertExactly(const std::byte* from, std::byte* to, std::size_t count) const {
    const bool isExact = tvConvertBuiltInDTypeVectWithCheck(
        from, count, static_cast<int>(source_.type), source_.isComplex, to, count,
        static_cast<int>(destination_.type), destination_.isComplex, modes_.overflow,
        modes_.rounding, true);
    return isExact && !dropsImaginaryPart(from, count);
}

/// Returns whether an imaginary part that is not zero has no place in the destination. The library
/// checks none of a pair whose destination has every value of the source.
bool Conversion::dropsImaginaryPart(const std::byte* from, std::size_t count) const {
    if (!source_.isComplex || destination_.isComplex || destination_.type == Type::Boolean) {
        return false;
    }
    const std::size_t size = sizeOf(source_.type);
    for (std::size_t i = 0; i < count; ++i) {
        if (valueOf(source_.type, from + (2 * i + 1) * size) != 0) {
            return true;
        }
    }
    return false;
}

bool Conversion::overflows(const std::byte* element) const {
    return TVTypeSys::DataType::CheckForOverflowDuringDataTypeConversion(
        element, 1, static_cast<int>(source_.type), source_.isComplex && destination_.isComplex,
        static_cast<int>(destination_.type), modes_.rounding);
}

void Conversion::addError(const std::byte* from, const std::byte* to, std::uint64_t index) {
    const auto part = [](Element element, const std::byte* value, bool isImaginary) {
        return !isImaginary        ? valueOf(element.type, value)
               : element.isComplex ? valueOf(element.type, value + sizeOf(element.type))
                                   : 0;
    };
    const auto difference = [&](bool isImaginary) {
        return part(destination_, to, isImaginary) - part(source_, from, isImaginary);
    };
    const double error = source_.isComplex ? std::hypot(difference(false), difference(true))
                                           : std::abs(difference(false));
    if (std::isfinite(error) && (!losses_.greatestError || error > losses_.greatestError->value)) {
        losses_.greatestError = {error, index};
    }
}

void Conversion::countNonFinite(const std::byte* from, std::size_t count) {
    if (!isFloating(source_.type)) {
        return;
    }
    const std::size_t parts = source_.isComplex ? 2 : 1;
    const std::size_t size = sizeOf(source_.type);
    for (std::size_t i = 0; i < count; ++i, from += parts * size) {
        const double first = valueOf(source_.type, from);
        const double last = valueOf(source_.type, from + (parts - 1) * size);
        const bool isNan = std::isnan(first) || std::isnan(last);
        losses_.nan += isNan ? 1 : 0;
        losses_.infinities += !isNan && (std::isinf(first) || std::isinf(last)) ? 1 : 0;
    }
}

void convertAll(Source& source, Conversion& conversion, Sink& sink, std::ostream* terminal) {
    ProgressBar progress(terminal, source.count().value_or(0));
    std::vector<std::byte> from(chunk * sizeOf(conversion.source()));
    std::vector<std::byte> to(chunk * sizeOf(conversion.destination()));
    while (const std::size_t count = source.read(from.data(), chunk)) {
        conversion.convert(from.data(), to.data(), count);
        sink.write(to.data(), count);
        progress.update(conversion.losses().elements);
    }
    sink.finish();
}

void printModes(Source& source, Type destination, bool colour, std::ostream& os) {
    const Element element = source.element();
    const DistinctModes modes = distinctModes(element.type, destination);
    const bool rounds = modes.roundings.size() > 1;
    const bool saturates = modes.overflows.size() > 1;

    output::Table table;
    table.addColumn(elementName(element), output::Align::Right);
    table.addColumn("overflow", output::Align::Left);
    for (const auto& rounding : modes.roundings) {
        table.addColumn(fmt::format("{} ", rounds ? rounding.name : "any rounding"),
                        output::Align::Right);
    }
    std::array<std::byte, 16> value{};
    while (source.read(value.data(), 1) == 1) {
        std::string text;
        appendElement(text, element, value.data());
        for (const auto& overflow : modes.overflows) {
            std::vector<std::string> cells{text, saturates ? overflow.name : "any"};
            for (const auto& rounding : modes.roundings) {
                cells.push_back(resultCell(element, value.data(), destination,
                                           {overflow.value, rounding.value}));
            }
            table.addRow(std::move(cells));
        }
    }
    os << fmt::format("From {} to {}, under each mode of overflow and of rounding\n\n",
                      elementName(element), typeName(destination));
    table.print(os, output::bold(colour));
    os << "\n! overflowed   ~ lost something without overflowing\n";
}

} // namespace tvtool::convert
