// Selection of conversion functions for this processor, and the two entry points that call them.
#include "conversion/selection.h"

#include "conversion/instruction_set.h"

#include <tvtypes/conversion/conversion.h>
#include <tvtypes/datatype.h>
#include <tvtypes/datatypetable.h>

namespace {

/// Returns the id at the end of the alias chain; an id without a record unchanged.
int resolvedId(const TVTypeSys::DataTypeTable& table, int id) {
    if (!table.isDataTypeIdValid(id)) {
        return id;
    }
    const std::size_t position = static_cast<std::size_t>(id) + 1;
    return table.getDataTypeAt(position)->getIdAliasedThruTo();
}

} // namespace

tvBuiltinDtypeConvFcn utGetTvBuiltinDtypeConvFcn(int srcId, int dstId, fxpModeOverflow_tag overflow,
                                                 fxpModeRounding_tag rounding) {
    static const TVTypeSys::conversion::Kernel& kernel = TVTypeSys::conversion::bestKernel();
    return TVTypeSys::conversion::selectFunction(kernel, srcId, dstId, overflow, rounding);
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
    const int resolvedSrcId = resolvedId(*access->table, srcId);
    const int resolvedDstId = resolvedId(*access->table, dstId);
    using TVTypeSys::conversion::isBuiltInId;
    if (!isBuiltInId(resolvedSrcId) || !isBuiltInId(resolvedDstId)) {
        return 0;
    }
    const unsigned long length = count > 0 ? static_cast<unsigned long>(count) : 0;
    // Without the check, since a loss would not be reported.
    tvConvertBuiltInDTypeVectWithCheck(src, length, resolvedSrcId, false, dst, length,
                                       resolvedDstId, false, FXP_OVERFLOW_SATURATE, FXP_ROUND_ZERO,
                                       false);
    return 1;
}
