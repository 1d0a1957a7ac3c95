/// \file
/// Rounding by the processor. Where the arithmetic rounds in the direction of a mode, the
/// conversion of a value to an integer rounds it, which saves the instructions that Mode::whole
/// takes.
#pragma once

#include "conversion/rounding.h"
#include "floating_point_environment.h"

namespace {

/// Whether integerOf(x) rounds in the direction of the arithmetic. If not, the direction is never
/// changed, and values are rounded by Mode::whole.
#if defined(__SSE4_1__) && !defined(__clang__)
inline constexpr bool hasDirectedRounding = true;
#else
inline constexpr bool hasDirectedRounding = false;
#endif

/// What rounding begins with.
enum class Addend { Nothing, Half, HalfWithSign };

/// The sum of a value and the addend, rounded in the direction to an integer, is the rounded value.
/// That the sum is first rounded in the same direction to a floating-point number changes nothing.
struct Steps {
    RoundingDirection direction;
    Addend addend;
};

// clang-format off
template <class Mode> inline constexpr Steps stepsOf = {};
template <> inline constexpr Steps stepsOf<Zero>       = {RoundingDirection::TowardZero, Addend::Nothing};
template <> inline constexpr Steps stepsOf<Near>       = {RoundingDirection::Down,       Addend::Half};
template <> inline constexpr Steps stepsOf<Ceil>       = {RoundingDirection::Up,         Addend::Nothing};
template <> inline constexpr Steps stepsOf<Floor>      = {RoundingDirection::Down,       Addend::Nothing};
template <> inline constexpr Steps stepsOf<Round>      = {RoundingDirection::TowardZero, Addend::HalfWithSign};
template <> inline constexpr Steps stepsOf<Convergent> = {RoundingDirection::ToNearest,  Addend::Nothing};
// clang-format on

/// Whether the direction of a mode depends on the sign of the value.
template <class Mode>
inline constexpr bool dependsOnSign = stepsOf<Mode>.direction == RoundingDirection::TowardZero;

/// Sentinel for values without an int32 result. INT32_MIN, which is also a valid result.
inline constexpr int32_T noInteger = -2147483647 - 1;

/// Returns the int32 of x, or noInteger. Rounds in the direction of the arithmetic, or to either
/// neighbour without hasDirectedRounding.
template <class S>
inline int32_T integerOf(S x) {
#if defined(__x86_64__) && !defined(__clang__)
    // One instruction, which is defined for all values; a cast is undefined out of range.
    if constexpr (sizeof(S) == 8) {
        return __builtin_irint(x);
    } else {
        return __builtin_irintf(x);
    }
#else
    const bool fits = x > S(-0x1p31) && x < S(0x1p31);
    const int32_T integer = static_cast<int32_T>(fits ? x : S(0));
    return fits ? integer : noInteger;
#endif
}

/// The doubles from 2^52 to 2^53 are the integers: a sum with this number is rounded to one, in its
/// last bits.
inline constexpr real_T sumOffset = 0x1.8p52;

/// Rounds in a mode. \pre The arithmetic rounds in `direction`: to nearest unless `isDirected`.
template <class Mode, class S, bool isDirected>
class Rounding {
  public:
    static constexpr RoundingDirection direction =
        isDirected ? stepsOf<Mode>.direction : RoundingDirection::ToNearest;

    /// Returns a value that integerOf converts to the rounded value of x.
    S prepared(S x) const {
        if constexpr (!isDirected) {
            return Mode::whole(x);
        } else if constexpr (stepsOf<Mode>.addend == Addend::Half) {
            return x + half_;
        } else if constexpr (stepsOf<Mode>.addend == Addend::HalfWithSign) {
            return x + withSignOf(x, half_);
        } else {
            return x;
        }
    }

    /// Returns the rounded value of x plus sumOffset. For magnitudes below 2^51 it is between 2^52
    /// and 2^53, and its last 32 bits are those of the rounded value in two's complement.
    real_T sum(real_T x) const {
        if constexpr (direction == RoundingDirection::TowardZero) {
            // The sum is positive, so that it would be rounded down.
            return truncated(prepared(x)) + sumOffset;
        } else {
            return prepared(x) + sumOffset;
        }
    }

    /// Returns the integer nearest to x, either one of a tie.
    S nearest(S x) const {
        if constexpr (direction == RoundingDirection::Down) {
            return roundedByArithmetic(x + half_);
        } else if constexpr (direction == RoundingDirection::Up) {
            return roundedByArithmetic(x - half_);
        } else if constexpr (direction == RoundingDirection::TowardZero) {
            return roundedByArithmetic(x + withSignOf(x, half_));
        } else {
            return roundedByArithmetic(x);
        }
    }

  private:
    // Not a constant, since the compiler computes sums of constants in the default direction.
    static S unknownHalf() {
        S half = S(0.5);
        if constexpr (isDirected) {
            asm("" : "+x"(half));
        }
        return half;
    }

    S half_ = unknownHalf();
};

} // namespace
