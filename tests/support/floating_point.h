// Floating-point environments that a caller of the library may have.
#pragma once

#include <gtest/gtest.h>

#include <cfenv>
#if defined(__x86_64__)
#include <xmmintrin.h>
#endif

namespace floating_point {

struct Environment {
    const char* name;
    void (*enter)();
};

inline constexpr Environment environments[] = {
    {"downward", [] { std::fesetround(FE_DOWNWARD); }},
    {"upward", [] { std::fesetround(FE_UPWARD); }},
    {"toward zero", [] { std::fesetround(FE_TOWARDZERO); }},
#if defined(__GLIBC__)
    {"all exceptions trap", [] { feenableexcept(FE_ALL_EXCEPT); }},
#endif
#if defined(__x86_64__)
    {"subnormal numbers are zero", [] { _mm_setcsr(_mm_getcsr() | 0x8040); }},
#endif
};

inline unsigned int modes() {
#if defined(__x86_64__)
    return _mm_getcsr() & 0xFFC0;
#else
    return static_cast<unsigned int>(std::fegetround());
#endif
}

// Calls `function` in an environment, which it must not change. It must not compute itself.
template <class Function>
void run(const Environment& environment, const Function& function) {
    std::fenv_t before;
    std::fegetenv(&before);
    environment.enter();
    const unsigned int entered = modes();
    function();
    const unsigned int left = modes();
    std::fesetenv(&before);
    EXPECT_EQ(entered, left) << environment.name;
}

} // namespace floating_point
