/// \file
/// The floating-point environment of the library's arithmetic. The conversion kernels include this
/// file: see conversion/kernel/elements.h for what that forbids.
#pragma once

#if !defined(__x86_64__)
#include <cfenv>
#endif

namespace {

/// Directions in which arithmetic rounds.
enum class RoundingDirection : unsigned int { ToNearest, Down, Up, TowardZero };

/// Sets the default floating-point environment for the life of the object: rounding to nearest,
/// subnormal numbers as operands and results, no traps. Results would otherwise depend on the
/// modes of the calling thread, and a NaN could end the process. On x86-64 another direction of
/// rounding can be set, also within another such object.
///
/// The compiler moves no access to memory across the constructor and the destructor, but may move
/// arithmetic on values that are already loaded: see inDefaultEnvironment().
class DefaultEnvironment {
  public:
    DefaultEnvironment(const DefaultEnvironment&) = delete;
    DefaultEnvironment& operator=(const DefaultEnvironment&) = delete;

#if defined(__x86_64__)
    // Vector registers only: the library has no arithmetic in the x87 registers.
    explicit DefaultEnvironment(RoundingDirection direction = RoundingDirection::ToNearest)
        : control_(defaultControl | static_cast<unsigned int>(direction) << directionShift) {
        asm volatile("stmxcsr %0" : "=m"(caller_) : : "memory");
        if ((caller_ & controlBits) != control_) {
            load((caller_ & ~controlBits) | control_);
        }
    }
    ~DefaultEnvironment() {
        if ((caller_ & controlBits) != control_) {
            load(caller_);
        }
    }

  private:
    static void load(unsigned int control) {
        asm volatile("ldmxcsr %0" : : "m"(control) : "memory");
    }

    // Flush to zero, rounding mode, exception masks, subnormal operands as zero; not the flags.
    static constexpr unsigned int controlBits = 0xFFC0;
    // All exceptions masked.
    static constexpr unsigned int defaultControl = 0x1F80;
    // The directions are numbered as in the control register.
    static constexpr unsigned int directionShift = 13;

    unsigned int control_;
    unsigned int caller_;
#else
    // The standard has no comparison of environments.
    explicit DefaultEnvironment(RoundingDirection /*direction*/ = RoundingDirection::ToNearest) {
        std::fegetenv(&caller_);
        std::fesetenv(FE_DFL_ENV);
    }
    ~DefaultEnvironment() { std::fesetenv(&caller_); }

  private:
    std::fenv_t caller_;
#endif
};

/// Returns `function(x)`, computed in the default environment.
template <class T, class Function>
T inDefaultEnvironment(T x, Function function) {
    const DefaultEnvironment environment;
    // Volatile, so that the computation stays between the constructor and the destructor.
    const volatile T input = x;
    const volatile T result = function(input);
    return result;
}

} // namespace
