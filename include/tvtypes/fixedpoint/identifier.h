/// \file
/// Identifiers: canonical names of records, which DataTypeTable recognises as types.
///
/// name     := "double" | "single" | "boolean" | ("int" | "uint") ("8" | "16" | "32")
///           | stem digits [exponent | slope | factor exponent] [bias]
/// stem     := "sfix" | "ufix" | "flts" | "fltu"         signed, unsigned; flt: scaled double
/// exponent := "_E" ["n"] digits                         omitted if 0
/// slope    := "_S" number                               the total slope, if it is a normal double
/// factor   := "_F" number                               and no power of two
/// bias     := "_B" number                               omitted if 0
/// number   := decimal digits with "p" for the point, "n" for a minus, "e" for the exponent
///
/// Examples: sfix16_En4, ufix8_Sp375_Bnp5, flts32_S1p5. Every record has a name, valid or not. The
/// override state is not part of it, and an unspecified signedness is written as unsigned. The
/// functions throw nothing but std::bad_alloc. All may be called from any thread.
///
/// Integers are written with the digit grouping of the global locale; the classic locale, which is
/// the initial one, has none.
///
/// \pre No pointer to a record is null; unchecked.
#pragma once

#include <tvtypes/export.h>
#include <tvtypes/fixedpoint/properties.h>

#include <string>

/// \addtogroup fixedpoint
/// @{

/// Returns the name from the cache: the same object for equal records, valid until exit.
/// \pre That of fixedpoint/cache.h.
TVTYPES_API const std::string& fxpDataTypeToIdentifierString(const fxpDataTypeProp* record);

/// Computes the name without the cache.
TVTYPES_API std::string fxpDataTypeToIdentifierString_NoCache(const fxpDataTypeProp* record);

/// Computes the name of stem, word length and scaling, also for the records of built-in types.
TVTYPES_API std::string fxpDataTypeToIdentifierStringTrueFixPt(const fxpDataTypeProp* record);

/// Returns the component `exponent` of the grammar; empty if the exponent is 0.
TVTYPES_API std::string getStringForFixedExponentComponent(const fxpDataTypeProp* record);

/// Returns the component `slope` of the grammar; empty if the total slope is 1.
TVTYPES_API std::string getStringForSlopeComponent(const fxpDataTypeProp* record);

/// Returns the component `factor` of the grammar; empty if the factor is 1.
TVTYPES_API std::string getStringForSlopeAdjustmentComponent(const fxpDataTypeProp* record);

/// Returns the component `bias` of the grammar; empty if the bias is 0.
TVTYPES_API std::string getStringForBiasComponent(const fxpDataTypeProp* record);

/// Returns an underscore, the letter, and the number in the form `number` of the grammar.
TVTYPES_API std::string getPartOfDataTypeStr(double value, char letter);

/// Rewrites the decimal text of a number for an identifier: "p" for the point, "n" for a minus, no
/// plus, "e" for the exponent, no zero alone before or after the point.
TVTYPES_API std::string numStrToIdentifierStr(std::string text);

/// Replaces every occurrence of `from`, including those that a replacement creates; an empty `from`
/// does not occur.
/// \pre `to` does not contain `from`, and replacing does not create occurrences forever: the call
/// would not return. Unchecked.
TVTYPES_API void strrep(std::string& text, const std::string& from, const std::string& to);

/// @}
