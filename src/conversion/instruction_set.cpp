#include "conversion/instruction_set.h"

#if defined(__x86_64__) && __has_include(<sys/platform/x86.h>)
#include <sys/platform/x86.h>
#define TVTYPES_HAS_CPU_FEATURES
#endif

namespace TVTypeSys::conversion {

#if defined(TVTYPES_HAS_CPU_FEATURES)

// What each level adds to the one below it. A feature is active if the system saves its registers.
namespace {

bool hasLevel2() {
    return CPU_FEATURE_ACTIVE(CMPXCHG16B) && CPU_FEATURE_ACTIVE(LAHF64_SAHF64) &&
           CPU_FEATURE_ACTIVE(POPCNT) && CPU_FEATURE_ACTIVE(SSE3) && CPU_FEATURE_ACTIVE(SSSE3) &&
           CPU_FEATURE_ACTIVE(SSE4_1) && CPU_FEATURE_ACTIVE(SSE4_2);
}

bool hasLevel3() {
    return CPU_FEATURE_ACTIVE(AVX) && CPU_FEATURE_ACTIVE(AVX2) && CPU_FEATURE_ACTIVE(BMI1) &&
           CPU_FEATURE_ACTIVE(BMI2) && CPU_FEATURE_ACTIVE(F16C) && CPU_FEATURE_ACTIVE(FMA) &&
           CPU_FEATURE_ACTIVE(LZCNT) && CPU_FEATURE_ACTIVE(MOVBE);
}

bool hasLevel4() {
    return CPU_FEATURE_ACTIVE(AVX512F) && CPU_FEATURE_ACTIVE(AVX512BW) &&
           CPU_FEATURE_ACTIVE(AVX512CD) && CPU_FEATURE_ACTIVE(AVX512DQ) &&
           CPU_FEATURE_ACTIVE(AVX512VL);
}

} // namespace

const Kernel& bestKernel() {
    if (!hasLevel2()) {
        return kernelX86V1;
    }
    if (!hasLevel3()) {
        return kernelX86V2;
    }
    return hasLevel4() ? kernelX86V4 : kernelX86V3;
}

#elif defined(__x86_64__)

const Kernel& bestKernel() { return kernelX86V1; }

#else

const Kernel& bestKernel() { return kernelPlain; }

#endif

} // namespace TVTypeSys::conversion
