#include "systems/type_conversion.h"

#include <tvtypes/datatype.h>
#include <tvtypes/functions.h>

#include <array>
#include <bit>
#include <cassert>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

namespace tvtool::systems {

namespace {

using exchange::BaseType;

constexpr int noId = -1;

/// The ids of the built-in types of the library, in the order of BaseType.
constexpr int builtInId(BaseType base) {
    switch (base) {
    case BaseType::Float64:
    case BaseType::Float32:
    case BaseType::Int8:
    case BaseType::UInt8:
    case BaseType::Int16:
    case BaseType::UInt16:
    case BaseType::Int32:
    case BaseType::UInt32:
        return static_cast<int>(base);
    case BaseType::Boolean:
        return 8;
    default:
        return noId;
    }
}

bool isUnsigned(BaseType base) {
    return base == BaseType::UInt8 || base == BaseType::UInt16 || base == BaseType::UInt32 ||
           base == BaseType::UInt64 || base == BaseType::Boolean;
}

using Value = std::array<std::byte, sizeof(double)>;

template <class Number>
Value valueOf(Number number) {
    Value value{};
    const auto bytes = std::bit_cast<std::array<std::byte, sizeof number>>(number);
    std::copy(bytes.begin(), bytes.end(), value.begin());
    return value;
}

/// The values at which a type ends: its bounds, and for floating-point types one with a fraction
/// and one with all digits.
struct Limits {
    std::vector<Value> bounds;
    std::vector<Value> fractions;
    std::vector<Value> digits;
};

template <class Number>
Limits limitsOf() {
    using Limit = std::numeric_limits<Number>;
    Limits limits{{valueOf(Limit::lowest()), valueOf(Limit::max())}, {}, {}};
    if constexpr (Limit::is_integer) {
        limits.digits = limits.bounds;
    } else {
        limits.fractions = {valueOf(Number(0.5)), valueOf(Number(-0.5))};
        limits.digits = {valueOf(Number(1) + Limit::epsilon())};
    }
    return limits;
}

Limits limitsOf(BaseType base) {
    switch (base) {
    case BaseType::Float64:
        return limitsOf<double>();
    case BaseType::Float32:
        return limitsOf<float>();
    case BaseType::Int8:
        return limitsOf<std::int8_t>();
    case BaseType::UInt8:
        return limitsOf<std::uint8_t>();
    case BaseType::Int16:
        return limitsOf<std::int16_t>();
    case BaseType::UInt16:
        return limitsOf<std::uint16_t>();
    case BaseType::Int32:
        return limitsOf<std::int32_t>();
    case BaseType::UInt32:
        return limitsOf<std::uint32_t>();
    default:
        return limitsOf<bool>();
    }
}

/// Converts one value by the library, saturated and rounded toward zero.
struct Probe {
    int source;
    int target;

    /// Returns whether the value is not the same when it is converted back.
    bool isLost(const Value& value) const {
        Value result{};
        return !tvConvertBuiltInDTypeVectWithCheck(value.data(), 1, source, false, result.data(), 1,
                                                   target, false, FXP_OVERFLOW_SATURATE,
                                                   FXP_ROUND_ZERO, true);
    }
    bool overflows(const Value& value) const {
        return TVTypeSys::DataType::CheckForOverflowDuringDataTypeConversion(
            value.data(), 1, source, false, target, FXP_ROUND_ZERO);
    }
};

TypeLoss lossByLibrary(BaseType source, BaseType target) {
    const Probe probe{builtInId(source), builtInId(target)};
    const Limits limits = limitsOf(source);
    const auto any = [](const std::vector<Value>& values, auto predicate) {
        return std::ranges::any_of(values, predicate);
    };
    const auto isLost = [&](const Value& value) { return probe.isLost(value); };
    TypeLoss loss;
    // The bounds of double become infinite in single, and every number but 0 becomes 1 in boolean,
    // which the library does not count as overflows.
    loss.range = any(limits.bounds, [&](const Value& value) { return probe.overflows(value); }) ||
                 (any(limits.bounds, isLost) &&
                  (target == BaseType::Boolean || (isReal(source) && isReal(target))));
    loss.fraction = !isReal(target) && target != BaseType::Boolean && any(limits.fractions, isLost);
    loss.digits = isReal(target) && any(limits.digits, isLost);
    return loss;
}

bool is64Bit(BaseType base) { return base == BaseType::Int64 || base == BaseType::UInt64; }

/// Same where one of the types is an integer of 64 bits, which only double and single exceed in
/// range, and none in digits.
TypeLoss lossOfWide(BaseType source, BaseType target) {
    if (source == target) {
        return {};
    }
    if (is64Bit(source)) {
        return isReal(target) ? TypeLoss{false, false, true} : TypeLoss{true, false, false};
    }
    if (isReal(source)) {
        return {true, true, false};
    }
    return {target == BaseType::UInt64 && !isUnsigned(source), false, false};
}

} // namespace

bool isNumeric(BaseType base) { return builtInId(base) != noId || is64Bit(base); }

bool isReal(BaseType base) { return base == BaseType::Float64 || base == BaseType::Float32; }

bool isInteger(BaseType base) {
    return isNumeric(base) && !isReal(base) && base != BaseType::Boolean;
}

TypeLoss lossBetween(BaseType source, BaseType target) {
    assert(isNumeric(source) && isNumeric(target));
    return is64Bit(source) || is64Bit(target) ? lossOfWide(source, target)
                                              : lossByLibrary(source, target);
}

} // namespace tvtool::systems
