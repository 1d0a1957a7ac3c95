#include "fixedpoint/stored_integers.h"

#include <tvtypes/functions.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <type_traits>
#include <utility>

namespace tvtool::fixedpoint {

namespace {

using convert::Modes;
using convert::Type;
using exact::Number;

/// Values are scaled in blocks of this size, which stay in the first-level cache.
constexpr std::size_t block = 1024;

/// Slopes and biases of these binary exponents, and their products with integers of 53 bits, need
/// no care for the range of double.
constexpr int mostExponent = 900;

/// Returns the slope if it and the bias can be computed with in double.
std::optional<double> moderateSlope(const fxpDataTypeProp& record) {
    const bool isModerate =
        std::abs(record.FixedExponent) <= mostExponent &&
        (record.Bias == 0.0 || std::abs(std::ilogb(record.Bias)) <= mostExponent);
    return isModerate
               ? std::optional(std::ldexp(record.SlopeAdjustmentFactor, record.FixedExponent))
               : std::nullopt;
}

/// Computes (value - bias) / slope as a double that every mode rounds to the same integer as the
/// exact quotient, or that overflows like it.
class Scaling {
  public:
    Scaling(double slope, double bias, bool saturates)
        : slope_(slope),
          inverse_(1 / slope),
          bias_(bias),
          saturates_(saturates),
          isExact_(bias == 0.0 && std::ldexp(1.0, std::ilogb(slope)) == slope) {}

    /// Returns whether `scaled` is such a double; if not, exact arithmetic has to decide.
    bool scale(double value, double& scaled) const {
        if (isExact_) {
            scaled = value * inverse_;
            // What underflows keeps its sign.
            if (scaled == 0.0 && value != 0.0) {
                scaled = std::copysign(std::numeric_limits<double>::denorm_min(), value);
            }
            return true;
        }
        const double difference = value - bias_;
        scaled = difference * inverse_;
        constexpr double largest = 0x1p50;
        if (!(std::abs(scaled) < largest)) {
            return saturates_ || !std::isfinite(value);
        }
        // Three roundings of 2^-53 each. The modes change their result at multiples of a half.
        constexpr double error = 0x1p-51;
        const double boundary = std::rint(2 * scaled) / 2;
        if (std::abs(scaled - boundary) > error * std::abs(scaled)) {
            return true;
        }
        return scaleAt(boundary, value, difference, scaled);
    }

  private:
    /// Compares the exact quotient with a multiple of a half that is near.
    bool scaleAt(double boundary, double value, double difference, double& scaled) const {
        // Exactly, value - bias is difference + rest, and boundary * slope is product + low.
        const double subtracted = value - difference;
        const double rest = (value - (difference + subtracted)) + (subtracted - bias_);
        const double product = boundary * slope_;
        const double low = std::fma(boundary, slope_, -product);
        const double high = difference - product; // exact, since the two are close
        const double correction = rest - low;
        if (high != 0.0 && std::abs(high) <= 2 * std::abs(correction)) {
            return false;
        }
        const double sign = high != 0.0 ? high : correction;
        constexpr double infinity = std::numeric_limits<double>::infinity();
        scaled = sign == 0.0 ? boundary : std::nextafter(boundary, std::copysign(infinity, sign));
        return true;
    }

    double slope_;
    double inverse_;
    double bias_;
    bool saturates_;
    bool isExact_; ///< whether scaling is exact but for underflow and overflow
};

/// Reduces an integer of 32 bits to a type of fewer bits.
template <class Wide>
Wide narrowed(Wide value, int bits, fxpModeOverflow_tag overflow) {
    const int unused = 32 - bits;
    if (overflow == FXP_OVERFLOW_WRAP) {
        return static_cast<Wide>(static_cast<std::uint32_t>(value) << unused) >> unused;
    }
    return std::clamp(value, std::numeric_limits<Wide>::min() >> unused,
                      std::numeric_limits<Wide>::max() >> unused);
}

template <class Stored>
Stored quantizedExactly(double value, const Grid& grid, Modes modes) {
    if (std::isfinite(value)) {
        return static_cast<Stored>(
            storedInteger(Number(value), grid, modes.rounding, modes.overflow));
    }
    if (std::isnan(value) || modes.overflow == FXP_OVERFLOW_WRAP) {
        return 0;
    }
    return static_cast<Stored>(value > 0 ? grid.greatest : grid.least);
}

/// Quantizes to at most 32 bits: the library rounds the scaled values.
template <class Stored>
void quantizeByScaling(const double* values, Stored* stored, std::size_t count,
                       const fxpDataTypeProp& record, const Grid& grid, Modes modes, double slope) {
    using Wide = std::conditional_t<std::is_signed_v<Stored>, std::int32_t, std::uint32_t>;
    constexpr Type wide = std::is_signed_v<Stored> ? Type::Int32 : Type::UInt32;
    const Scaling scaling(slope, record.Bias, modes.overflow == FXP_OVERFLOW_SATURATE);
    std::array<double, block> scaled;
    std::array<Wide, block> integers;
    std::array<std::size_t, block> undecided;
    for (std::size_t begin = 0; begin < count; begin += block) {
        const std::size_t length = std::min(block, count - begin);
        std::size_t undecidedCount = 0;
        for (std::size_t i = 0; i < length; ++i) {
            if (!scaling.scale(values[begin + i], scaled[i])) {
                undecided[undecidedCount++] = begin + i;
            }
        }
        tvConvertBuiltInDTypeVectWithCheck(scaled.data(), length, static_cast<int>(Type::Double),
                                           false, integers.data(), length, static_cast<int>(wide),
                                           false, modes.overflow, modes.rounding, false);
        for (std::size_t i = 0; i < length; ++i) {
            stored[begin + i] =
                static_cast<Stored>(narrowed(integers[i], record.WordLength, modes.overflow));
        }
        for (std::size_t i = 0; i < undecidedCount; ++i) {
            stored[undecided[i]] = quantizedExactly<Stored>(values[undecided[i]], grid, modes);
        }
    }
}

template <class Stored>
void quantizeTo(const double* values, Stored* stored, std::size_t count,
                const fxpDataTypeProp& record, const Grid& grid, Modes modes) {
    if constexpr (sizeof(Stored) <= 4) {
        if (const std::optional<double> slope = moderateSlope(record)) {
            quantizeByScaling(values, stored, count, record, grid, modes, *slope);
            return;
        }
    }
    for (std::size_t i = 0; i < count; ++i) {
        stored[i] = quantizedExactly<Stored>(values[i], grid, modes);
    }
}

template <class Stored>
std::size_t realValuesOf(const Stored* stored, double* values, std::size_t count,
                         const fxpDataTypeProp& record, const Grid& grid) {
    constexpr std::int64_t exactInDouble = std::int64_t{1} << 53;
    const std::optional<double> slope = moderateSlope(record);
    const auto least = static_cast<Stored>(grid.least);
    const auto greatest = static_cast<Stored>(grid.greatest);
    for (std::size_t i = 0; i < count; ++i) {
        const Stored integer = stored[i];
        if (integer < least || integer > greatest) {
            return i;
        }
        const bool isExact = std::in_range<std::int64_t>(integer) &&
                             std::abs(static_cast<std::int64_t>(integer)) <= exactInDouble;
        values[i] = slope && isExact ? std::fma(*slope, static_cast<double>(integer), record.Bias)
                                     : exact::toDouble(grid.value(integer));
    }
    return count;
}

/// Calls a function with a value of the type of the stored integers.
template <class Function>
void withStoredType(const fxpDataTypeProp& record, const Function& function) {
    const auto call = [&](auto signedType, auto unsignedType) {
        record.Signedness == 1 ? function(signedType) : function(unsignedType);
    };
    switch (storedSize(record)) {
    case 1:
        return call(std::int8_t{}, std::uint8_t{});
    case 2:
        return call(std::int16_t{}, std::uint16_t{});
    case 4:
        return call(std::int32_t{}, std::uint32_t{});
    default:
        return call(std::int64_t{}, std::uint64_t{});
    }
}

} // namespace

std::size_t storedSize(const fxpDataTypeProp& record) {
    const int bits = record.WordLength;
    return bits <= 8 ? 1 : bits <= 16 ? 2 : bits <= 32 ? 4 : 8;
}

void quantizeArray(const double* values, void* stored, std::size_t count,
                   const fxpDataTypeProp& record, const Grid& grid, convert::Modes modes) {
    withStoredType(record, [&](auto type) {
        quantizeTo(values, static_cast<decltype(type)*>(stored), count, record, grid, modes);
    });
}

std::size_t realValues(const void* stored, double* values, std::size_t count,
                       const fxpDataTypeProp& record, const Grid& grid) {
    std::size_t done = 0;
    withStoredType(record, [&](auto type) {
        done =
            realValuesOf(static_cast<const decltype(type)*>(stored), values, count, record, grid);
    });
    return done;
}

} // namespace tvtool::fixedpoint
