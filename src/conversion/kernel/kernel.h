/// \file
/// The tables of conversion functions, one for each instruction set.
#pragma once

enum fxpModeOverflow_tag : int;
enum fxpModeRounding_tag : int;

namespace TVTypeSys::conversion {

inline constexpr int builtInTypes = 9;
inline constexpr int overflowModes = 2;
inline constexpr int roundingModes = 7; // an alias of mode 0 included

using ConversionFcn = bool (*)(const void* src, void* dst, unsigned long srcCount,
                               unsigned long dstCount, bool srcIsComplex, bool dstIsComplex,
                               bool checkLoss, int srcId, int dstId, fxpModeOverflow_tag overflow,
                               fxpModeRounding_tag rounding);

/// What a pair of types selects.
struct ConversionPair {
    /// By rounding mode and overflow mode. A mode that does not matter to the pair is taken as 0.
    const ConversionFcn (*functions)[overflowModes];
    bool roundingMatters;
    bool overflowMatters;
};

/// The conversion functions for one instruction set.
struct Kernel {
    ConversionPair pairs[builtInTypes][builtInTypes]; ///< by source id and destination id
};

#if defined(__x86_64__)
extern const Kernel kernelX86V1;
extern const Kernel kernelX86V2;
extern const Kernel kernelX86V3;
extern const Kernel kernelX86V4;
#else
extern const Kernel kernelPlain;
#endif

} // namespace TVTypeSys::conversion
