#include "units/product.h"

#include "units/reading.h"

#include <fmt/format.h>

#include <limits>

namespace tvtool::units {

namespace {

std::string exponent(std::int64_t power) { return power == 1 ? "" : fmt::format("^{}", power); }

} // namespace

bool Product::multiply(const UnitPower& name, std::int64_t power) {
    constexpr std::int64_t greatest = std::numeric_limits<std::int32_t>::max();
    const auto [entry, isNew] = indices_.try_emplace(name.name, names_.size());
    if (isNew) {
        names_.push_back({name.name, 0});
    }
    std::int64_t& sum = names_[entry->second].power;
    // The factors have 32 bits each.
    const std::int64_t more = name.power * power;
    sum += more;
    return more <= greatest && more >= -greatest && sum <= greatest && sum >= -greatest;
}

std::string Product::expression() const {
    std::string text;
    for (const UnitPower& name : names_) {
        if (name.power > 0) {
            text += text.empty() ? "" : "*";
            text += name.name + exponent(name.power);
        }
    }
    std::string divisor;
    std::size_t divisors = 0;
    for (const UnitPower& name : names_) {
        if (name.power < 0) {
            divisor += divisor.empty() ? "" : "*";
            divisor += name.name + exponent(-name.power);
            ++divisors;
        }
    }
    if (divisors == 0) {
        return text.empty() ? unitless : text;
    }
    return fmt::format("{}/{}", text.empty() ? "1" : text,
                       divisors == 1 ? divisor : fmt::format("({})", divisor));
}

} // namespace tvtool::units
