// The table of conversions. Compiled once for each instruction set; TVTYPES_KERNEL is the name of
// the table.
#include "conversion/kernel/kernel.h"

#include "conversion/kernel/exact_cast.h"
#include "conversion/kernel/to_boolean.h"
#include "conversion/kernel/vectors.h"

#include <cassert>

namespace {

using namespace TVTypeSys::conversion;

/// A conversion function: calls `convert` with `loops`. The only place that asserts the
/// precondition of the conversions on buffers.
template <auto convert, const auto& loops>
bool conversionFunction(const void* src, void* dst, Count srcCount, Count dstCount,
                        bool srcIsComplex, bool dstIsComplex, bool checkLoss, int /*srcId*/,
                        int /*dstId*/, fxpModeOverflow_tag /*overflow*/,
                        fxpModeRounding_tag /*rounding*/) {
    assert(dstCount == 0 || (src != nullptr && dst != nullptr));
    return convert(src, dst, srcCount, dstCount, srcIsComplex, dstIsComplex, checkLoss, loops);
}

/// A conversion without rounding; `castExactly` is null if nothing is lost.
template <class S, class D, class Conversion, auto castExactly>
struct PlainLoops {
    static constexpr ConversionLoops value = {.src = &elementType<S>,
                                              .dst = &elementType<D>,
                                              .convertOne = convertElement<Conversion>,
                                              .convert = convertElements<Conversion>,
                                              .convertQuickly = nullptr,
                                              .direction = RoundingDirection::ToNearest,
                                              .hasArithmetic = isFloat<S> || isFloat<D>,
                                              .castExactly = castExactly};
};

/// Whether a cast leaves all bits as they are.
template <class S, class D>
constexpr bool isCopy = isSame<S, D> || (!isFloat<S> && !isFloat<D> && sizeof(S) == sizeof(D));

template <class S, class D, auto castExactly>
requires isCopy<S, D>
struct PlainLoops<S, D, SharedCast<S, D>, castExactly> {
    static constexpr ConversionLoops value = {.src = &elementType<S>,
                                              .dst = &elementType<D>,
                                              .convertOne = nullptr,
                                              .convert = nullptr,
                                              .convertQuickly = nullptr,
                                              .direction = RoundingDirection::ToNearest,
                                              .hasArithmetic = false,
                                              .castExactly = castExactly};
};

template <class S, class D, class Conversion, auto castExactly>
constexpr ConversionFcn plainFunction =
    conversionFunction<convertVector, PlainLoops<S, D, Conversion, castExactly>::value>;

/// The faster loop of a conversion; null if there is none.
template <class Conversion>
constexpr auto quickLoop = convertElementsQuickly<Conversion>;
template <class Conversion>
requires(!Conversion::isQuick) constexpr auto quickLoop<Conversion> = nullptr;

/// A conversion from floating point to the integer type D: in directed arithmetic, and of one
/// element in the default environment.
template <class Conversion, class OneConversion, class D>
struct RoundingLoops {
    using S = typename Conversion::Source;
    static constexpr ConversionLoops value = {.src = &elementType<S>,
                                              .dst = &elementType<D>,
                                              .convertOne = convertElement<OneConversion>,
                                              .convert = convertElements<Conversion>,
                                              .convertQuickly = quickLoop<Conversion>,
                                              .direction = Conversion::direction,
                                              .hasArithmetic = true,
                                              .castExactly = ExactCast<S, D>::cast};
};

/// A pair to which no mode matters.
template <ConversionFcn function>
constexpr ConversionFcn onlyFunction[][overflowModes] = {{function}};
template <ConversionFcn function>
constexpr ConversionPair inAllModes = {onlyFunction<function>, false, false};

// The kinds of pairs.

/// The destination holds every value of S.
template <class S, class D>
constexpr ConversionPair exact = inAllModes<plainFunction<S, D, SharedCast<S, D>, nullptr>>;

/// The same type.
template <class S>
constexpr ConversionPair same = exact<S, S>;

/// The destination is a floating-point type with fewer digits.
template <class S, class D>
constexpr ConversionPair inexact =
    inAllModes<plainFunction<S, D, SharedCast<S, D>, ExactCast<S, D>::cast>>;

/// Between integers; the destination does not hold every value of S.
template <class S, class D>
constexpr ConversionFcn overflowFunctions[][overflowModes] = {
    {plainFunction<S, D, SharedCast<S, D>, ExactCast<S, D>::cast>,
     plainFunction<S, D, Saturate<S, D>, ExactCast<S, D>::cast>}};
template <class S, class D>
constexpr ConversionPair overflow = {overflowFunctions<S, D>, false, true};

/// From floating point to integers.
template <class S, class D>
struct RoundingFunctions {
    template <template <class, class, class, bool> class Conversion, class Result, class Mode>
    static constexpr ConversionFcn function =
        conversionFunction<convertVector,
                           RoundingLoops<Conversion<S, Result, Mode, hasDirectedRounding>,
                                         Conversion<S, Result, Mode, false>, D>::value>;

    template <class... Modes>
    struct InModes {
        static_assert(sizeof...(Modes) == roundingModes);
        static constexpr ConversionFcn value[][overflowModes] = {
            {function<RoundAndWrap, Unsigned<D>, Modes>, function<RoundAndSaturate, D, Modes>}...};
    };
};
template <class S, class D>
constexpr ConversionPair rounding = {
    RoundingModes<RoundingFunctions<S, D>::template InModes>::value, true, true};

/// The destination is boolean. The sign of an integer does not matter: S is unsigned.
template <class S>
constexpr ConversionPair toBool =
    inAllModes<conversionFunction<convertVectorToBoolean, BooleanLoopsFrom<S>::loops>>;

// clang-format off
using f64 = real_T;   using f32 = real32_T;
using i8  = int8_T;   using u8  = uint8_T;
using i16 = int16_T;  using u16 = uint16_T;
using i32 = int32_T;  using u32 = uint32_T;

} // namespace

namespace TVTypeSys::conversion {

// By source and destination.
constinit const Kernel TVTYPES_KERNEL = {{
//               double           single             int8               uint8              int16               uint16              int32               uint32              boolean
/* double  */ { same<f64>,       inexact<f64, f32>, rounding<f64, i8>, rounding<f64, u8>, rounding<f64, i16>, rounding<f64, u16>, rounding<f64, i32>, rounding<f64, u32>, toBool<f64> },
/* single  */ { exact<f32, f64>, same<f32>,         rounding<f32, i8>, rounding<f32, u8>, rounding<f32, i16>, rounding<f32, u16>, rounding<f32, i32>, rounding<f32, u32>, toBool<f32> },
/* int8    */ { exact<i8, f64>,  exact<i8, f32>,    same<i8>,          overflow<i8, u8>,  exact<i8, i16>,     overflow<i8, u16>,  exact<i8, i32>,     overflow<i8, u32>,  toBool<u8> },
/* uint8   */ { exact<u8, f64>,  exact<u8, f32>,    overflow<u8, i8>,  same<u8>,          exact<u8, i16>,     exact<u8, u16>,     exact<u8, i32>,     exact<u8, u32>,     toBool<u8> },
/* int16   */ { exact<i16, f64>, exact<i16, f32>,   overflow<i16, i8>, overflow<i16, u8>, same<i16>,          overflow<i16, u16>, exact<i16, i32>,    overflow<i16, u32>, toBool<u16> },
/* uint16  */ { exact<u16, f64>, exact<u16, f32>,   overflow<u16, i8>, overflow<u16, u8>, overflow<u16, i16>, same<u16>,          exact<u16, i32>,    exact<u16, u32>,    toBool<u16> },
/* int32   */ { exact<i32, f64>, inexact<i32, f32>, overflow<i32, i8>, overflow<i32, u8>, overflow<i32, i16>, overflow<i32, u16>, same<i32>,          overflow<i32, u32>, toBool<u32> },
/* uint32  */ { exact<u32, f64>, inexact<u32, f32>, overflow<u32, i8>, overflow<u32, u8>, overflow<u32, i16>, overflow<u32, u16>, overflow<u32, i32>, same<u32>,          toBool<u32> },
// A byte of any value is converted as it is; a conversion from boolean neither overflows nor loses.
/* boolean */ { exact<u8, f64>,  exact<u8, f32>,    exact<u8, i8>,     exact<u8, u8>,     exact<u8, i16>,     exact<u8, u16>,     exact<u8, i32>,     exact<u8, u32>,     same<u8> },
}};
// clang-format on

} // namespace TVTypeSys::conversion
