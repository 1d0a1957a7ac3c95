/// \file
/// Constructor strings: what the host numeric environment evaluates to rebuild a type.
///
/// constructor := base arguments [",'DataTypeOverride','Off'"] ")"
/// base        := "numerictype(" | "fixdt("
/// arguments   := "'double'" | "'single'" | "'boolean'"
///              | sign "," wordlength [scaling] [",'DataType','ScaledDouble'"]
/// sign        := "1" | "0" | "[]"                       "[]": the signedness is left open
/// scaling     := "," fractionlength | "," slope "," bias | "," factor "," exponent "," bias
///
/// Every record has a string, valid or not; a mode that is none reads as boolean. The host reads
/// numbers back as the same doubles. Only exhausted memory can fail. All functions are pure, and
/// can be called from any thread, but for fxpDataTypeToConstructorString, which uses the cache: see
/// fixedpoint/cache.h.
///
/// Integers are written with the digit groups of the global locale if it has any; the classic
/// locale, which a program starts with, has none.
#pragma once

#include <tvtypes/export.h>
#include <tvtypes/fixedpoint/properties.h>

#include <cstdint>
#include <string>

namespace FxpDT {

/// The function called. Any other value acts as PreferFixdt.
enum baseCtorPrefer : std::int32_t {
    PreferNumericType = 0, ///< numerictype(
    PreferFixdt = 1        ///< fixdt(, but numerictype( for scaled doubles, which need it
};

/// How the scaling is spelled. Any other value acts as PreferSlopeBias.
enum scalingRepPrefer : std::int32_t {
    PreferFractionLength = 0, ///< the fraction length if that says it all, else slope and bias
    PreferSlopeBias = 1,      ///< slope and bias
    PreferNoScaling = 2       ///< left out
};

} // namespace FxpDT

/// The string from the cache: the same text object for equal records, valid until exit. A scaling
/// preference beyond the enumerators shares what is kept for PreferNoScaling: whichever of them is
/// asked for first stays. fxpDataTypeToConstructorString_NoCache tells them apart.
TVTYPES_API const std::string& fxpDataTypeToConstructorString(const fxpDataTypeProp& record,
                                                              FxpDT::baseCtorPrefer base,
                                                              FxpDT::scalingRepPrefer scaling);

/// The string, made anew.
TVTYPES_API std::string fxpDataTypeToConstructorString_NoCache(const fxpDataTypeProp& record,
                                                               FxpDT::baseCtorPrefer base,
                                                               FxpDT::scalingRepPrefer scaling);

/// Appends the arguments of a fixed-point or scaled double type.
TVTYPES_API void fxpDataTypeToConstructorString_FixptGuts(std::string& text,
                                                          const fxpDataTypeProp& record,
                                                          FxpDT::scalingRepPrefer scaling);

/// \name The numbers of a record as texts
/// @{
TVTYPES_API std::string fractionLengthStr(const fxpDataTypeProp& record); ///< the exponent negated
TVTYPES_API std::string fixedExponentStr(const fxpDataTypeProp& record);
TVTYPES_API std::string slopeStr(const fxpDataTypeProp& record); ///< the total slope
TVTYPES_API std::string slopeAdjustmentFactorStr(const fxpDataTypeProp& record);
TVTYPES_API std::string biasStr(const fxpDataTypeProp& record);
/// @}
