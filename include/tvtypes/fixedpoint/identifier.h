/// \file
/// The canonical name of a record, as the data type table recognises it.
///
/// name     := "double" | "single" | "boolean" | ("int" | "uint") ("8" | "16" | "32")
///           | stem digits [exponent | slope | factor exponent] [bias]
/// stem     := "sfix" | "ufix" | "flts" | "fltu"         signed or not; flt for scaled doubles
/// exponent := "_E" ["n"] digits                         not if 0
/// slope    := "_S" number                               the total slope, if it is a normal double
/// factor   := "_F" number                               and no power of two
/// bias     := "_B" number                               not if 0
/// number   := decimal digits with "p" for the point, "n" for a minus, "e" for the exponent
///
/// Every record has a name, valid or not: sfix16_En4, ufix8_Sp375_Bnp5, flts32_S1p5. The override
/// state has no place in it, and a signedness left open reads as unsigned. Only exhausted memory
/// can fail. All functions are pure, and can be called from any thread, but for
/// fxpDataTypeToIdentifierString, which uses the cache: see fixedpoint/cache.h.
///
/// Integers are written with the digit groups of the global locale if it has any; the classic
/// locale, which a program starts with, has none.
#pragma once

#include <tvtypes/export.h>
#include <tvtypes/fixedpoint/properties.h>

#include <string>

/// The whole name, from the cache: the same text object for equal records, valid until exit.
TVTYPES_API const std::string& fxpDataTypeToIdentifierString(const fxpDataTypeProp* record);

/// The whole name, made anew.
TVTYPES_API std::string fxpDataTypeToIdentifierString_NoCache(const fxpDataTypeProp* record);

/// The name built from stem, word length and scaling, also where a built-in type has another.
TVTYPES_API std::string fxpDataTypeToIdentifierStringTrueFixPt(const fxpDataTypeProp* record);

/// \name Components of a name, each with its underscore and letter; empty where they say nothing
/// @{
TVTYPES_API std::string getStringForFixedExponentComponent(const fxpDataTypeProp* record);
TVTYPES_API std::string getStringForSlopeComponent(const fxpDataTypeProp* record);
TVTYPES_API std::string getStringForSlopeAdjustmentComponent(const fxpDataTypeProp* record);
TVTYPES_API std::string getStringForBiasComponent(const fxpDataTypeProp* record);
/// @}

/// An underscore, the letter, and the number rewritten for use in an identifier.
TVTYPES_API std::string getPartOfDataTypeStr(double value, char letter);

/// The decimal text of a number rewritten for use in an identifier: "p" for the point, "n" for a
/// minus, no plus, "e" for the exponent, no zero alone before or behind the point.
TVTYPES_API std::string numStrToIdentifierStr(std::string text);

/// Replaces every occurrence of `from`, also those that come about by replacing; an empty `from`
/// occurs nowhere. `to` must not contain `from`, nor make more of it with what stands beside it
/// each time: the text would grow without end.
TVTYPES_API void strrep(std::string& text, const std::string& from, const std::string& to);
