// Constructor strings.
#include "fixedpoint/integer_text.h"
#include "fixedpoint/scaling.h"
#include "services/number_text.h"

#include <tvtypes/fixedpoint/constructor.h>

#include <string_view>

namespace {

using TVTypeSys::evaluableText;
using TVTypeSys::integerText;
using TVTypeSys::slopeIsNormal;
using TVTypeSys::totalSlope;

std::int64_t fractionLength(const fxpDataTypeProp& record) {
    return -static_cast<std::int64_t>(record.FixedExponent);
}

std::string_view signednessText(std::uint32_t signedness) {
    switch (signedness) {
    case 0:
        return "0";
    case 1:
        return "1";
    default:
        return "[]";
    }
}

void appendSlopeAndBias(std::string& text, const fxpDataTypeProp& record) {
    text += ",";
    if (slopeIsNormal(record)) {
        text += evaluableText(totalSlope(record));
    } else {
        text += evaluableText(record.SlopeAdjustmentFactor);
        text += ",";
        text += integerText(record.FixedExponent);
    }
    text += ",";
    text += evaluableText(record.Bias);
}

void appendScaling(std::string& text, const fxpDataTypeProp& record,
                   FxpDT::scalingRepPrefer scaling) {
    if (scaling == FxpDT::PreferNoScaling) {
        return;
    }
    const bool isBinaryPoint = record.SlopeAdjustmentFactor == 1.0 && record.Bias == 0.0;
    if (scaling == FxpDT::PreferFractionLength && isBinaryPoint) {
        text += ",";
        text += integerText(fractionLength(record));
    } else {
        appendSlopeAndBias(text, record);
    }
}

void appendFixedPointArguments(std::string& text, const fxpDataTypeProp& record,
                               FxpDT::scalingRepPrefer scaling) {
    text += signednessText(record.Signedness);
    text += ",";
    text += integerText(static_cast<std::uint32_t>(record.WordLength));
    appendScaling(text, record, scaling);
    if (record.DataTypeMode == FXP_DT_SCALED_DOUBLE) {
        text += ",'DataType','ScaledDouble'";
    }
}

void appendArguments(std::string& text, const fxpDataTypeProp& record,
                     FxpDT::scalingRepPrefer scaling) {
    switch (record.DataTypeMode) {
    case FXP_DT_FIXPT:
    case FXP_DT_SCALED_DOUBLE:
        appendFixedPointArguments(text, record, scaling);
        return;
    case FXP_DT_DOUBLE:
        text += "'double'";
        return;
    case FXP_DT_SINGLE:
        text += "'single'";
        return;
    case FXP_DT_BOOLEAN:
        break;
    }
    text += "'boolean'";
}

} // namespace

std::string fxpDataTypeToConstructorString_NoCache(const fxpDataTypeProp& record,
                                                   FxpDT::baseCtorPrefer base,
                                                   FxpDT::scalingRepPrefer scaling) {
    const bool needsNumericType = record.DataTypeMode == FXP_DT_SCALED_DOUBLE;
    std::string text;
    text += base == FxpDT::PreferNumericType || needsNumericType ? "numerictype(" : "fixdt(";
    appendArguments(text, record, scaling);
    if (record.DataTypeOverrideState == 1 && record.DataTypeMode != FXP_DT_BOOLEAN) {
        text += ",'DataTypeOverride','Off'";
    }
    text += ")";
    return text;
}

void fxpDataTypeToConstructorString_FixptGuts(std::string& text, const fxpDataTypeProp& record,
                                              FxpDT::scalingRepPrefer scaling) {
    std::string arguments;
    appendFixedPointArguments(arguments, record, scaling);
    text += arguments;
}

std::string fractionLengthStr(const fxpDataTypeProp& record) {
    return integerText(fractionLength(record));
}

std::string fixedExponentStr(const fxpDataTypeProp& record) {
    return integerText(record.FixedExponent);
}

std::string slopeStr(const fxpDataTypeProp& record) { return evaluableText(totalSlope(record)); }

std::string slopeAdjustmentFactorStr(const fxpDataTypeProp& record) {
    return evaluableText(record.SlopeAdjustmentFactor);
}

std::string biasStr(const fxpDataTypeProp& record) { return evaluableText(record.Bias); }
