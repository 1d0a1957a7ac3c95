#include "units/compound_factors.h"

#include "services/text.h"
#include "units/power_of_ten.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>
#include <limits>
#include <string_view>
#include <utility>

namespace TVTypeSys {

namespace {

constexpr double tolerance = 1e-11;

/// Values beyond it may be inexact or infinite in intermediate results.
constexpr double greatestValue = 1e300;

/// Returns a value divided by the power of ten that makes it at least 1 and less than 10.
double mantissaOf(double value) {
    return value / powerOfTen(static_cast<int>(std::floor(std::log10(value))));
}

/// Reads a positive integer at the beginning of a text and removes it. Returns 0 if there is none.
int takePart(std::string_view& text) {
    int part = 0;
    const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), part);
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return failure == std::errc() ? std::max(part, 0) : 0;
}

bool isBlank(char character) {
    return character == ' ' || character == '\t' || character == '\r' || character == '\n';
}

} // namespace

void CompoundFactors::add(std::u16string fractions) {
    if (unparsed_.empty()) {
        unparsed_ = std::move(fractions);
    } else {
        unparsed_.reserve(unparsed_.size() + 1 + fractions.size());
        unparsed_.append(u" ").append(fractions);
    }
}

void CompoundFactors::clear() noexcept {
    unparsed_.clear();
    entries_.clear();
}

void CompoundFactors::parse() const {
    std::vector<Entry> entries = entries_; // empty, unless a second file was loaded
    const std::string fractions = narrow(unparsed_);
    const char* const end = fractions.data() + fractions.size();
    for (const char* position = fractions.data(); position != end;) {
        const char* const stop = std::find_if(position, end, isBlank);
        std::string_view fraction(position, static_cast<std::size_t>(stop - position));
        position = std::find_if_not(stop, end, isBlank);
        const int numerator = takePart(fraction);
        if (numerator == 0 || fraction.empty() || fraction.front() != '/') {
            continue;
        }
        fraction.remove_prefix(1);
        const int denominator = takePart(fraction);
        if (denominator != 0 && fraction.empty()) {
            const double value = static_cast<double>(numerator) / denominator;
            entries.push_back({mantissaOf(value), numerator, denominator});
        }
    }
    std::stable_sort(entries.begin(), entries.end(), [](const Entry& left, const Entry& right) {
        return left.mantissa < right.mantissa;
    });
    entries_.swap(entries);
    std::u16string().swap(unparsed_);
}

std::optional<Rational> CompoundFactors::find(double value, double exponent) const {
    if (!(value > 1 / greatestValue && value < greatestValue)) {
        return std::nullopt;
    }
    const std::lock_guard lock(parsing_);
    if (!unparsed_.empty()) {
        parse();
    }
    if (entries_.empty()) {
        return std::nullopt;
    }
    // The neighbours of the mantissa. The least and the greatest one are neighbours too: their
    // mantissas are near 1 and 10.
    const auto next = std::lower_bound(
        entries_.begin(), entries_.end(), mantissaOf(value),
        [](const Entry& entry, double mantissa) { return entry.mantissa < mantissa; });
    const Entry& above = next == entries_.end() ? entries_.front() : *next;
    const Entry& below = next == entries_.begin() ? entries_.back() : *std::prev(next);
    const Entry* nearest = nullptr;
    double least = tolerance;
    double power = 0;
    for (const Entry* entry : {&above, &below}) {
        const double ratio = value / (static_cast<double>(entry->numerator) / entry->denominator);
        const auto shift = static_cast<int>(std::lround(std::log10(ratio)));
        const double difference = std::abs(ratio / powerOfTen(shift) - 1);
        if (difference <= least) {
            nearest = entry;
            least = difference;
            power = exponent + shift;
        }
    }
    if (nearest == nullptr || std::abs(power) > std::numeric_limits<int>::max()) {
        return std::nullopt;
    }
    return Rational(nearest->numerator, nearest->denominator, static_cast<int>(power));
}

} // namespace TVTypeSys
