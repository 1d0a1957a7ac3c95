// The family of conversion functions as a table. Compiled once for each instruction set;
// TVTYPES_KERNEL is the name under which this one's table is known.
#include "conversion/kernel/kernel.h"

#include "conversion/kernel/loops.h"

namespace {

using TVTypeSys::conversion::ConversionFcn;
using TVTypeSys::conversion::Kernel;

// clang-format off

// The same value: copied.
template <class S>
constexpr ConversionFcn N[] = {tvConvBuiltinDTypeTpl<S, S, NoConv<S, S>, NoDiff>::conv};

// The destination holds every value of the source.
template <class S, class D>
constexpr ConversionFcn C[] = {tvConvBuiltinDTypeTpl<S, D, Cast_Conv<S, D>, NoDiff>::conv};

// The destination has fewer digits.
template <class S, class D>
constexpr ConversionFcn L[] = {tvConvBuiltinDTypeTpl<S, D, Cast_Conv<S, D>, CastDiff<S, D>>::conv};

// To boolean.
template <class S>
constexpr ConversionFcn B[] = {tvConvBuiltinDType2BoolTpl<S>::conv};

// Between integers: wrap, saturate. The letters tell which bounds of D a value of S can pass: the
// lower one, the upper one, or both.
template <class S, class D, class Saturate>
constexpr ConversionFcn integerRow[] = {
    tvConvBuiltinDTypeTpl<S, D, Cast_Conv<S, D>, CastDiff<S, D>>::conv,
    tvConvBuiltinDTypeTpl<S, D, Saturate,        CastDiff<S, D>>::conv};
template <class S, class D>
constexpr const ConversionFcn* Pl = integerRow<S, D, Sat_Lb_Conv<S, D, BoundOf<D>>>;
template <class S, class D>
constexpr const ConversionFcn* Pu = integerRow<S, D, Sat_Ub_Conv<S, D, BoundOf<D>>>;
template <class S, class D>
constexpr const ConversionFcn* Plu = integerRow<S, D, Sat_Conv<S, D, BoundOf<D>, Cast_Conv<S, D>>>;

// From floating point to integer: wrap and saturate for each value of rounding. Value 4 is value 0.
template <class S, class D, class Policy>
constexpr ConversionFcn rounded = tvConvBuiltinDTypeTpl<S, D, Policy, CastDiff<S, D>>::conv;

template <class S, class D, class B>
constexpr ConversionFcn Fs[] = {
    rounded<S, D, Zero_Wrap_Signed_Conv<S, D>>,       rounded<S, D, Sat_Conv<S, D, B, Cast_Conv<S, D>>>,
    rounded<S, D, Near_Wrap_Signed_Conv<S, D>>,       rounded<S, D, Sat_Conv<S, D, B, Near_Conv<S, D>>>,
    rounded<S, D, Ceil_Wrap_Signed_Conv<S, D>>,       rounded<S, D, Sat_Conv<S, D, B, Ceil_Conv<S, D>>>,
    rounded<S, D, Floor_Wrap_Signed_Conv<S, D>>,      rounded<S, D, Sat_Conv<S, D, B, Floor_Conv<S, D>>>,
    rounded<S, D, Zero_Wrap_Signed_Conv<S, D>>,       rounded<S, D, Sat_Conv<S, D, B, Cast_Conv<S, D>>>,
    rounded<S, D, Round_Wrap_Signed_Conv<S, D>>,      rounded<S, D, Sat_Conv<S, D, B, Round_Conv<S, D>>>,
    rounded<S, D, Convergent_Wrap_Signed_Conv<S, D>>, rounded<S, D, Sat_Conv<S, D, B, Convergent_Conv<S, D>>>};

template <class S, class D, class B>
constexpr ConversionFcn Fu[] = {
    rounded<S, D, Zero_Wrap_Unsigned_Conv<S, D>>,       rounded<S, D, Sat_Conv<S, D, B, Cast_Conv<S, D>>>,
    rounded<S, D, Near_Wrap_Unsigned_Conv<S, D>>,       rounded<S, D, Sat_Conv<S, D, B, Near_Conv<S, D>>>,
    rounded<S, D, Ceil_Wrap_Unsigned_Conv<S, D>>,       rounded<S, D, Sat_Conv<S, D, B, Ceil_Conv<S, D>>>,
    rounded<S, D, Floor_Wrap_Unsigned_Conv<S, D>>,      rounded<S, D, Sat_Conv<S, D, B, Floor_Conv<S, D>>>,
    rounded<S, D, Zero_Wrap_Unsigned_Conv<S, D>>,       rounded<S, D, Sat_Conv<S, D, B, Cast_Conv<S, D>>>,
    rounded<S, D, Round_Wrap_Unsigned_Conv<S, D>>,      rounded<S, D, Sat_Conv<S, D, B, Round_Conv<S, D>>>,
    rounded<S, D, Convergent_Wrap_Unsigned_Conv<S, D>>, rounded<S, D, Sat_Conv<S, D, B, Convergent_Conv<S, D>>>};

using f64 = real_T;   using f32 = real32_T;
using i8  = int8_T;   using u8  = uint8_T;
using i16 = int16_T;  using u16 = uint16_T;
using i32 = int32_T;  using u32 = uint32_T;

template <class S> constexpr const ConversionFcn* toInt8   = Fs<S, i8,  Int8Bound>;
template <class S> constexpr const ConversionFcn* toUint8  = Fu<S, u8,  Uint8Bound>;
template <class S> constexpr const ConversionFcn* toInt16  = Fs<S, i16, Int16Bound>;
template <class S> constexpr const ConversionFcn* toUint16 = Fu<S, u16, Uint16Bound>;
template <class S> constexpr const ConversionFcn* toInt32  = Fs<S, i32, Int32Bound>;
template <class S> constexpr const ConversionFcn* toUint32 = Fu<S, u32, Uint32Bound>;

} // namespace

namespace TVTypeSys::conversion {

// A source a row, a destination a column.
constinit const Kernel TVTYPES_KERNEL = {{
//               double       single       int8           uint8          int16          uint16          int32          uint32          boolean
/* double  */ { N<f64>,      L<f64, f32>, toInt8<f64>,   toUint8<f64>,  toInt16<f64>,  toUint16<f64>,  toInt32<f64>,  toUint32<f64>,  B<f64> },
/* single  */ { C<f32, f64>, N<f32>,      toInt8<f32>,   toUint8<f32>,  toInt16<f32>,  toUint16<f32>,  toInt32<f32>,  toUint32<f32>,  B<f32> },
/* int8    */ { C<i8, f64>,  C<i8, f32>,  N<i8>,         Pl<i8, u8>,    C<i8, i16>,    Pl<i8, u16>,    C<i8, i32>,    Pl<i8, u32>,    B<i8> },
/* uint8   */ { C<u8, f64>,  C<u8, f32>,  Pu<u8, i8>,    N<u8>,         C<u8, i16>,    C<u8, u16>,     C<u8, i32>,    C<u8, u32>,     B<u8> },
/* int16   */ { C<i16, f64>, C<i16, f32>, Plu<i16, i8>,  Plu<i16, u8>,  N<i16>,        Pl<i16, u16>,   C<i16, i32>,   Pl<i16, u32>,   B<i16> },
/* uint16  */ { C<u16, f64>, C<u16, f32>, Pu<u16, i8>,   Pu<u16, u8>,   Pu<u16, i16>,  N<u16>,         C<u16, i32>,   C<u16, u32>,    B<u16> },
/* int32   */ { C<i32, f64>, L<i32, f32>, Plu<i32, i8>,  Plu<i32, u8>,  Plu<i32, i16>, Plu<i32, u16>,  N<i32>,        Pl<i32, u32>,   B<i32> },
/* uint32  */ { C<u32, f64>, L<u32, f32>, Pu<u32, i8>,   Pu<u32, u8>,   Pu<u32, i16>,  Pu<u32, u16>,   Pu<u32, i32>,  N<u32>,         B<u32> },
// A byte other than 0 and 1 is taken as it is; there is nothing to lose in a boolean.
/* boolean */ { C<u8, f64>,  C<u8, f32>,  C<u8, i8>,     C<u8, u8>,     C<u8, i16>,    C<u8, u16>,     C<u8, i32>,    C<u8, u32>,     N<u8> },
}};
// clang-format on

} // namespace TVTypeSys::conversion
