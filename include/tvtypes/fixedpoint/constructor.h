/// \file
/// Constructor strings: expressions that the host's numeric environment evaluates to a type.
///
/// constructor := base arguments [",'DataTypeOverride','Off'"] ")"
/// base        := "numerictype(" | "fixdt("
/// arguments   := "'double'" | "'single'" | "'boolean'"
///              | sign "," wordlength [scaling] [",'DataType','ScaledDouble'"]
/// sign        := "1" | "0" | "[]"                       "[]": unspecified signedness
/// scaling     := "," fractionlength | "," slope "," bias | "," factor "," exponent "," bias
///
/// Every record has a string, valid or not; a mode that is not an enumerator is written as boolean.
/// Numbers convert back to the same doubles. The functions throw nothing but std::bad_alloc. All
/// may be called from any thread.
///
/// Integers are written with the digit grouping of the global locale; the classic locale, which is
/// the initial one, has none.
#pragma once

#include <tvtypes/export.h>
#include <tvtypes/fixedpoint/properties.h>

#include <cstdint>
#include <string>

/// \addtogroup fixedpoint
/// @{

namespace FxpDT {

/// The function that the string calls. Any other value acts as PreferFixdt.
enum baseCtorPrefer : std::int32_t {
    PreferNumericType = 0, ///< numerictype(
    PreferFixdt = 1        ///< fixdt(; numerictype( for scaled doubles, which fixdt cannot express
};

/// The form of the scaling. Any other value acts as PreferSlopeBias.
enum scalingRepPrefer : std::int32_t {
    PreferFractionLength = 0, ///< fraction length if factor is 1 and bias 0, else slope and bias
    PreferSlopeBias = 1,      ///< slope and bias
    PreferNoScaling = 2       ///< omitted
};

} // namespace FxpDT

/// Returns the string from the cache: the same object for equal records, valid until exit. A
/// `scaling` that is not an enumerator shares the cached string of PreferNoScaling: the first of
/// the two requests determines it. fxpDataTypeToConstructorString_NoCache distinguishes them. \pre
/// That of fixedpoint/cache.h.
TVTYPES_API const std::string& fxpDataTypeToConstructorString(const fxpDataTypeProp& record,
                                                              FxpDT::baseCtorPrefer base,
                                                              FxpDT::scalingRepPrefer scaling);

/// Computes the string without the cache.
TVTYPES_API std::string fxpDataTypeToConstructorString_NoCache(const fxpDataTypeProp& record,
                                                               FxpDT::baseCtorPrefer base,
                                                               FxpDT::scalingRepPrefer scaling);

/// Appends the arguments of a fixed-point or scaled double type.
TVTYPES_API void fxpDataTypeToConstructorString_FixptGuts(std::string& text,
                                                          const fxpDataTypeProp& record,
                                                          FxpDT::scalingRepPrefer scaling);

/// Returns the negated exponent as text.
TVTYPES_API std::string fractionLengthStr(const fxpDataTypeProp& record);

/// Returns the exponent as text.
TVTYPES_API std::string fixedExponentStr(const fxpDataTypeProp& record);

/// Returns the total slope as text.
TVTYPES_API std::string slopeStr(const fxpDataTypeProp& record);

/// Returns the slope adjustment factor as text.
TVTYPES_API std::string slopeAdjustmentFactorStr(const fxpDataTypeProp& record);

/// Returns the bias as text.
TVTYPES_API std::string biasStr(const fxpDataTypeProp& record);

/// @}
