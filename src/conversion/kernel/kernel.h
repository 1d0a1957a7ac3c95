/// \file
/// What the kernels hand out: for each pair of built-in types a row of conversion functions.
#pragma once

enum fxpModeOverflow_tag : int;
enum fxpModeRounding_tag : int;

namespace TVTypeSys::conversion {

inline constexpr int builtInTypes = 9;

using ConversionFcn = bool (*)(const void* src, void* dst, unsigned long srcCount,
                               unsigned long dstCount, bool srcIsComplex, bool dstIsComplex,
                               bool checkLoss, int srcId, int dstId, fxpModeOverflow_tag overflow,
                               fxpModeRounding_tag rounding);

/// All conversion functions for one instruction set: rows[source id][destination id][slot]. A row
/// has one slot, two (wrap, saturate), or two for each rounding value.
struct Kernel {
    const ConversionFcn* rows[builtInTypes][builtInTypes];
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
