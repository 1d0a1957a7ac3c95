#include "conversion/instruction_set.h"

#include <tvtypes/version.h>

#if defined(__x86_64__)
#include <cpuid.h>
#endif

namespace TVTypeSys::conversion {

#if defined(__x86_64__)

namespace {

// Bits of ecx in cpuid results, for features that __builtin_cpu_supports has no name for.
constexpr unsigned int basicLeaf = 1;
constexpr unsigned int cmpxchg16b = 1U << 13;
constexpr unsigned int movbe = 1U << 22;
constexpr unsigned int f16c = 1U << 29;
constexpr unsigned int extendedLeaf = 0x80000001;
constexpr unsigned int lahf = 1U << 0;
constexpr unsigned int lzcnt = 1U << 5;

bool hasBits(unsigned int leaf, unsigned int bits) {
    unsigned int eax = 0;
    unsigned int ebx = 0;
    unsigned int ecx = 0;
    unsigned int edx = 0;
    return __get_cpuid(leaf, &eax, &ebx, &ecx, &edx) != 0 && (ecx & bits) == bits;
}

// What each level adds to the one below it. For vector extensions, __builtin_cpu_supports also
// tests whether the operating system saves their registers.

bool hasLevel2() {
    return __builtin_cpu_supports("popcnt") && __builtin_cpu_supports("sse3") &&
           __builtin_cpu_supports("ssse3") && __builtin_cpu_supports("sse4.1") &&
           __builtin_cpu_supports("sse4.2") && hasBits(basicLeaf, cmpxchg16b) &&
           hasBits(extendedLeaf, lahf);
}

bool hasLevel3() {
    return __builtin_cpu_supports("avx") && __builtin_cpu_supports("avx2") &&
           __builtin_cpu_supports("bmi") && __builtin_cpu_supports("bmi2") &&
           __builtin_cpu_supports("fma") && hasBits(basicLeaf, movbe | f16c) &&
           hasBits(extendedLeaf, lzcnt);
}

bool hasLevel4() {
    return __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512bw") &&
           __builtin_cpu_supports("avx512cd") && __builtin_cpu_supports("avx512dq") &&
           __builtin_cpu_supports("avx512vl");
}

struct Level {
    const Kernel& kernel;
    const char* name;
};

Level bestLevel() {
    __builtin_cpu_init();
    if (!hasLevel2()) {
        return {kernelX86V1, "x86-64"};
    }
    if (!hasLevel3()) {
        return {kernelX86V2, "x86-64-v2"};
    }
    return hasLevel4() ? Level{kernelX86V4, "x86-64-v4"} : Level{kernelX86V3, "x86-64-v3"};
}

} // namespace

const Kernel& bestKernel() { return bestLevel().kernel; }

} // namespace TVTypeSys::conversion

const char* getInstructionSetName() noexcept { return TVTypeSys::conversion::bestLevel().name; }

#else

const Kernel& bestKernel() { return kernelPlain; }

} // namespace TVTypeSys::conversion

const char* getInstructionSetName() noexcept { return "portable"; }

#endif
