/// \file
/// The rules of the arguments of the other commands.
#pragma once

#include "findings/rules.h"

namespace tvtool::findings {

inline constexpr Rule callRules[] = {
    {Code::ConversionMissing, "conversion-missing", Severity::Error, Area::Call,
     "No factor converts the first unit to the second, or the library has none.",
     "Check that both units measure the same quantity.", "units do not convert"},
    {Code::DimensionForm, "dimension-form", Severity::Note, Area::Call,
     "A dimension, or a part of it, is not simplified.", "Nothing has to be done.",
     "dimensions are not simplified"},
    {Code::FactContradiction, "fact-contradiction", Severity::Error, Area::Call,
     "A fact contradicts the facts that the sentence lists.",
     "Correct or remove one of these facts.", "facts contradict others"},
    {Code::FactInvalid, "fact-invalid", Severity::Error, Area::Call,
     "A line of a file of facts cannot be parsed, and is skipped.", "Correct the line.",
     "lines cannot be parsed"},
    {Code::FactRemark, "fact-remark", Severity::Note, Area::Call,
     "A line of a file of facts has no effect, is understood in a certain way, or is not "
     "decided.",
     "Nothing has to be done.", "lines have remarks"},
    {Code::TypeRemark, "type-remark", Severity::Note, Area::Call,
     "A numeric type differs from what its name or its options suggest.", "Nothing has to be done.",
     "types have remarks"},
    {Code::ValuesLost, "values-lost", Severity::Warning, Area::Call,
     "Values are not the same after the conversion.",
     "Choose a type that holds the values, if they have to be kept.", "conversions change values"},
};

} // namespace tvtool::findings
