// Constructor strings.
#include "fixedpoint/scaling.h"
#include "fixedpoint/short_text.h"
#include "services/number_text.h"

#include <tvtypes/fixedpoint/constructor.h>

namespace {

using TVTypeSys::decimalText;
using TVTypeSys::ShortText;
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

void appendSlopeAndBias(ShortText& text, const fxpDataTypeProp& record) {
    text.append(",");
    if (slopeIsNormal(record)) {
        text.appendNumber(totalSlope(record));
    } else {
        text.appendNumber(record.SlopeAdjustmentFactor);
        text.append(",");
        text.appendInteger(record.FixedExponent);
    }
    text.append(",");
    text.appendNumber(record.Bias);
}

void appendScaling(ShortText& text, const fxpDataTypeProp& record,
                   FxpDT::scalingRepPrefer scaling) {
    if (scaling == FxpDT::PreferNoScaling) {
        return;
    }
    const bool isBinaryPoint = record.SlopeAdjustmentFactor == 1.0 && record.Bias == 0.0;
    if (scaling == FxpDT::PreferFractionLength && isBinaryPoint) {
        text.append(",");
        text.appendInteger(fractionLength(record));
    } else {
        appendSlopeAndBias(text, record);
    }
}

void appendFixedPointArguments(ShortText& text, const fxpDataTypeProp& record,
                               FxpDT::scalingRepPrefer scaling) {
    text.append(signednessText(record.Signedness));
    text.append(",");
    text.appendInteger(static_cast<std::uint32_t>(record.WordLength));
    appendScaling(text, record, scaling);
    if (record.DataTypeMode == FXP_DT_SCALED_DOUBLE) {
        text.append(",'DataType','ScaledDouble'");
    }
}

void appendArguments(ShortText& text, const fxpDataTypeProp& record,
                     FxpDT::scalingRepPrefer scaling) {
    switch (record.DataTypeMode) {
    case FXP_DT_FIXPT:
    case FXP_DT_SCALED_DOUBLE:
        appendFixedPointArguments(text, record, scaling);
        return;
    case FXP_DT_DOUBLE:
        text.append("'double'");
        return;
    case FXP_DT_SINGLE:
        text.append("'single'");
        return;
    case FXP_DT_BOOLEAN:
        break;
    }
    text.append("'boolean'");
}

std::string integerText(std::int64_t value) {
    ShortText text;
    text.appendInteger(value);
    return text.str();
}

} // namespace

std::string fxpDataTypeToConstructorString_NoCache(const fxpDataTypeProp& record,
                                                   FxpDT::baseCtorPrefer base,
                                                   FxpDT::scalingRepPrefer scaling) {
    const bool needsNumericType = record.DataTypeMode == FXP_DT_SCALED_DOUBLE;
    ShortText text;
    text.append(base == FxpDT::PreferNumericType || needsNumericType ? "numerictype(" : "fixdt(");
    appendArguments(text, record, scaling);
    if (record.DataTypeOverrideState == 1 && record.DataTypeMode != FXP_DT_BOOLEAN) {
        text.append(",'DataTypeOverride','Off'");
    }
    text.append(")");
    return text.str();
}

void fxpDataTypeToConstructorString_FixptGuts(std::string& text, const fxpDataTypeProp& record,
                                              FxpDT::scalingRepPrefer scaling) {
    ShortText arguments;
    appendFixedPointArguments(arguments, record, scaling);
    text.append(arguments.view());
}

std::string fractionLengthStr(const fxpDataTypeProp& record) {
    return integerText(fractionLength(record));
}

std::string fixedExponentStr(const fxpDataTypeProp& record) {
    return integerText(record.FixedExponent);
}

std::string slopeStr(const fxpDataTypeProp& record) { return decimalText(totalSlope(record)); }

std::string slopeAdjustmentFactorStr(const fxpDataTypeProp& record) {
    return decimalText(record.SlopeAdjustmentFactor);
}

std::string biasStr(const fxpDataTypeProp& record) { return decimalText(record.Bias); }
