/// \file
/// Conversion of vectors between the nine built-in types.
///
/// Built-in types are given by their ids, 0 to 8 in the order double, single, int8, uint8, int16,
/// uint16, int32, uint32, boolean; ids of aliases must be resolved first. Vectors may have any
/// alignment. Complex vectors are interleaved, real then imaginary.
///
/// The functions do not allocate and keep no state: every input has a defined output, the same on
/// every processor and in every floating-point environment (rounding mode, flushing of subnormal
/// numbers to zero, traps). The environment of the calling thread is set to the default during a
/// conversion where it differs, and restored. Threads may convert concurrently into buffers that do
/// not overlap.
///
/// A vector may be converted in place: the destination begins where the source does, and its
/// elements, with all their parts, are no larger than those of the source. The result is that of
/// separate buffers. Any other overlap of source and destination gives unspecified values.
///
/// - An integer outside the range of the destination is reduced modulo 2^N (wrap) or becomes the
///   nearer bound (saturate). A floating-point value is rounded first; NaN becomes 0, an infinity
///   0 (wrap) or the bound (saturate).
/// - A mode without effect on a pair is ignored: rounding of an integer, saturation where no value
///   is out of range.
/// - To `boolean`: 1 if the value is not zero (NaN is not zero), otherwise 0. A source byte of
///   `boolean` is converted as an integer, also if it is neither 0 nor 1.
/// - double to single is the IEEE conversion and has no saturating form.
///
/// Bytes that a conversion writes for each destination element. A complex element has two parts,
/// except that conversion of another type to boolean gives one byte for both:
///
/// | Destination          | Real | Complex |
/// |----------------------|-----:|--------:|
/// | double               |    8 |      16 |
/// | single               |    4 |       8 |
/// | int8, uint8          |    1 |       2 |
/// | int16, uint16        |    2 |       4 |
/// | int32, uint32        |    4 |       8 |
/// | boolean from boolean |    1 |       2 |
/// | boolean from others  |    1 |       1 |
#pragma once

#include <tvtypes/export.h>
#include <tvtypes/fixedpoint/properties.h>

/// \addtogroup conversion
/// @{

struct _tvDataTypeAccess_tag;

/// A conversion function of one pair of types: converts `dstCount` elements.
///
/// With a `srcCount` of 0 or 1 the source is one element, which is replicated into every
/// destination element (for `boolean` destinations of another source type only with 1); otherwise
/// the source has `dstCount` elements. Real to complex gives imaginary parts of zero, complex to
/// real drops them. A complex element is 1 in a `boolean` destination if either part is not zero.
///
/// Returns false if `checkLoss` is true and something was lost: an element converted back differs
/// from its source, the source is NaN, or a dropped imaginary part is not zero. Pairs whose
/// destination holds every value of the source, such as single to double, check nothing. The
/// destination is written in full either way. The ids and modes are ignored: the selection of the
/// function fixes them.
/// \pre Unless `dstCount` is 0, `src` has the elements described above and `dst` has room for the
/// bytes of the table in conversion.h; they overlap only if the vector is converted in place. Only
/// null pointers are checked, in builds with assertions.
using tvBuiltinDtypeConvFcn = bool (*)(const void* src, void* dst, unsigned long srcCount,
                                       unsigned long dstCount, bool srcIsComplex, bool dstIsComplex,
                                       bool checkLoss, int srcId, int dstId,
                                       fxpModeOverflow_tag overflow, fxpModeRounding_tag rounding);

/// Returns the conversion function of a pair of types in the given modes; never null. Takes
/// constant time. If an id is not 0 to 8, or a mode that has an effect on the pair is not an
/// enumerator, the function writes nothing and returns false.
TVTYPES_API tvBuiltinDtypeConvFcn utGetTvBuiltinDtypeConvFcn(int srcId, int dstId,
                                                             fxpModeOverflow_tag overflow,
                                                             fxpModeRounding_tag rounding);

/// Selects the conversion function, calls it and returns its result: false, with nothing written,
/// for ids and modes without a conversion. \pre Those of tvBuiltinDtypeConvFcn.
TVTYPES_API bool tvConvertBuiltInDTypeVectWithCheck(const void* src, unsigned long srcCount,
                                                    int srcId, bool srcIsComplex, void* dst,
                                                    unsigned long dstCount, int dstId,
                                                    bool dstIsComplex, fxpModeOverflow_tag overflow,
                                                    fxpModeRounding_tag rounding, bool checkLoss);

/// The conversion function in the records of the built-in types: converts `count` real elements,
/// rounded toward zero and saturated; none if `count` is below 1. `context` and `extra` are
/// ignored. Returns 1; a loss is not reported. Returns 0, with nothing written, if an id does not
/// resolve to a built-in type, 0 to 8, in the table of `access`: DataTypeTable reports that as
/// TorvaneTypes::general::DataTypeConvertBetweenFcnUnknownError. \pre `access` refers to a table;
/// the buffers are as for tvBuiltinDtypeConvFcn.
TVTYPES_API int ConvertBetweenBuiltinFcn(_tvDataTypeAccess_tag* access, const char* context,
                                         int dstId, int srcId, int count, const void* src,
                                         const void* extra, void* dst);

namespace utdtypeconv {

/// Returns the nearest integral value, ties to even, for `T` double and float. A zero result has
/// the sign of `x`; NaN and the infinities are returned unchanged. The result does not depend on
/// the floating-point environment.
template <class T>
TVTYPES_API T ScalarConvergentPreInt(T x);

/// Instantiated for double.
extern template TVTYPES_API double ScalarConvergentPreInt<double>(double x);

/// Instantiated for float.
extern template TVTYPES_API float ScalarConvergentPreInt<float>(float x);

} // namespace utdtypeconv

/// @}
