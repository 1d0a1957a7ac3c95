// Which conversion function, and the two ways to call one.
#include "conversion/instruction_set.h"

#include <tvtypes/datatype.h>
#include <tvtypes/datatypetable.h>
#include <tvtypes/functions.h>

using TVTypeSys::conversion::builtInTypes;

namespace {

// clang-format off

// Whether a pair has a choice of rounding.
constexpr unsigned char roundingMatters[builtInTypes][builtInTypes] = {
//               double single int8 uint8 int16 uint16 int32 uint32 boolean
/* double  */ {  0,     0,     1,   1,    1,    1,     1,    1,     0 },
/* single  */ {  0,     0,     1,   1,    1,    1,     1,    1,     0 },
/* int8    */ {  0,     0,     0,   0,    0,    0,     0,    0,     0 },
/* uint8   */ {  0,     0,     0,   0,    0,    0,     0,    0,     0 },
/* int16   */ {  0,     0,     0,   0,    0,    0,     0,    0,     0 },
/* uint16  */ {  0,     0,     0,   0,    0,    0,     0,    0,     0 },
/* int32   */ {  0,     0,     0,   0,    0,    0,     0,    0,     0 },
/* uint32  */ {  0,     0,     0,   0,    0,    0,     0,    0,     0 },
/* boolean */ {  0,     0,     0,   0,    0,    0,     0,    0,     0 }};

// Whether a pair has a choice between wrapping and saturating.
constexpr unsigned char overflowMatters[builtInTypes][builtInTypes] = {
//               double single int8 uint8 int16 uint16 int32 uint32 boolean
/* double  */ {  0,     0,     1,   1,    1,    1,     1,    1,     0 },
/* single  */ {  0,     0,     1,   1,    1,    1,     1,    1,     0 },
/* int8    */ {  0,     0,     0,   1,    0,    1,     0,    1,     0 },
/* uint8   */ {  0,     0,     1,   0,    0,    0,     0,    0,     0 },
/* int16   */ {  0,     0,     1,   1,    0,    1,     0,    1,     0 },
/* uint16  */ {  0,     0,     1,   1,    1,    0,     0,    0,     0 },
/* int32   */ {  0,     0,     1,   1,    1,    1,     0,    1,     0 },
/* uint32  */ {  0,     0,     1,   1,    1,    1,     1,    0,     0 },
/* boolean */ {  0,     0,     0,   0,    0,    0,     0,    0,     0 }};

// clang-format on

int groundOf(const TVTypeSys::DataTypeTable& table, int id) {
    const std::size_t position = static_cast<std::size_t>(id) + 1;
    return table.getDataTypeAt(position)->getIdAliasedThruTo();
}

} // namespace

tvBuiltinDtypeConvFcn utGetTvBuiltinDtypeConvFcn(int srcId, int dstId, fxpModeOverflow_tag overflow,
                                                 fxpModeRounding_tag rounding) {
    static const TVTypeSys::conversion::Kernel& kernel = TVTypeSys::conversion::bestKernel();
    const int round = roundingMatters[srcId][dstId] != 0 && rounding != FXP_ROUND_ZERO_ALIAS
                          ? rounding
                          : FXP_ROUND_ZERO;
    const int over = overflowMatters[srcId][dstId] != 0 ? overflow : FXP_OVERFLOW_WRAP;
    return kernel.rows[srcId][dstId][2 * round + over];
}

bool tvConvertBuiltInDTypeVectWithCheck(const void* src, unsigned long srcCount, int srcId,
                                        bool srcIsComplex, void* dst, unsigned long dstCount,
                                        int dstId, bool dstIsComplex, fxpModeOverflow_tag overflow,
                                        fxpModeRounding_tag rounding, bool checkLoss) {
    return utGetTvBuiltinDtypeConvFcn(srcId, dstId, overflow, rounding)(
        src, dst, srcCount, dstCount, srcIsComplex, dstIsComplex, checkLoss, srcId, dstId, overflow,
        rounding);
}

int ConvertBetweenBuiltinFcn(_tvDataTypeAccess_tag* access, const char* /*context*/, int dstId,
                             int srcId, int count, const void* src, const void* /*extra*/,
                             void* dst) {
    const int srcGround = groundOf(*access->table, srcId);
    const int dstGround = groundOf(*access->table, dstId);
    const unsigned long length = count > 0 ? static_cast<unsigned long>(count) : 0;
    // A loss would not be reported, so it is not looked for.
    tvConvertBuiltInDTypeVectWithCheck(src, length, srcGround, false, dst, length, dstGround, false,
                                       FXP_OVERFLOW_SATURATE, FXP_ROUND_ZERO, false);
    return 1;
}
