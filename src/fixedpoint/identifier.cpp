// The canonical name of a record, in the form that the data type table recognises.
#include "services/number_text.h"

#include <tvtypes/fixedpoint.h>

#include <boost/lexical_cast.hpp>

#include <algorithm>
#include <cmath>

namespace {

const std::string separator = "_";

/// Whether a factor and this exponent together make a slope that is a normal double.
bool slopeIsNormal(int fixedExponent) { return fixedExponent >= -1022 && fixedExponent <= 1023; }

double totalSlope(const fxpDataTypeProp& record) {
    return std::ldexp(record.SlopeAdjustmentFactor, record.FixedExponent);
}

bool isBuiltInInteger(const fxpDataTypeProp& record) {
    return record.FixedExponent == 0 && record.SlopeAdjustmentFactor == 1.0 && record.Bias == 0.0 &&
           (record.WordLength == 8 || record.WordLength == 16 || record.WordLength == 32);
}

} // namespace

std::string fxpDataTypeToIdentifierString_NoCache(const fxpDataTypeProp* record) {
    switch (record->DataTypeMode) {
    case FXP_DT_FIXPT:
        if (isBuiltInInteger(*record)) {
            return (record->Signedness == 1 ? "int" : "uint") +
                   boost::lexical_cast<std::string>(record->WordLength);
        }
        return fxpDataTypeToIdentifierStringTrueFixPt(record);
    case FXP_DT_SCALED_DOUBLE:
        return fxpDataTypeToIdentifierStringTrueFixPt(record);
    case FXP_DT_DOUBLE:
        return "double";
    case FXP_DT_SINGLE:
        return "single";
    case FXP_DT_BOOLEAN:
        break;
    }
    return "boolean";
}

std::string fxpDataTypeToIdentifierStringTrueFixPt(const fxpDataTypeProp* record) {
    const bool isSigned = record->Signedness == 1;
    std::string name = record->DataTypeMode == FXP_DT_SCALED_DOUBLE ? (isSigned ? "flts" : "fltu")
                                                                    : (isSigned ? "sfix" : "ufix");
    name += boost::lexical_cast<std::string>(record->WordLength);
    if (record->SlopeAdjustmentFactor == 1.0) {
        name += getStringForFixedExponentComponent(record);
    } else if (slopeIsNormal(record->FixedExponent)) {
        name += getStringForSlopeComponent(record);
    } else {
        name += getStringForSlopeAdjustmentComponent(record);
        name += getStringForFixedExponentComponent(record);
    }
    return name + getStringForBiasComponent(record);
}

std::string getStringForFixedExponentComponent(const fxpDataTypeProp* record) {
    const std::int64_t exponent = record->FixedExponent;
    if (exponent == 0) {
        return {};
    }
    return separator + (exponent < 0 ? "En" : "E") +
           boost::lexical_cast<std::string>(exponent < 0 ? -exponent : exponent);
}

std::string getStringForSlopeComponent(const fxpDataTypeProp* record) {
    const double slope = totalSlope(*record);
    return slope == 1.0 ? std::string() : getPartOfDataTypeStr(slope, 'S');
}

std::string getStringForSlopeAdjustmentComponent(const fxpDataTypeProp* record) {
    const double factor = record->SlopeAdjustmentFactor;
    return factor == 1.0 ? std::string() : getPartOfDataTypeStr(factor, 'F');
}

std::string getStringForBiasComponent(const fxpDataTypeProp* record) {
    return record->Bias == 0.0 ? std::string() : getPartOfDataTypeStr(record->Bias, 'B');
}

std::string getPartOfDataTypeStr(double value, char letter) {
    return separator + letter + numStrToIdentifierStr(TVTypeSys::decimalText(value));
}

std::string numStrToIdentifierStr(std::string text) {
    strrep(text, ".", "p");
    strrep(text, "+", "");
    strrep(text, "-", "n");
    strrep(text, "E", "e");
    if (text.size() >= 2 && text.ends_with("p0")) {
        text.erase(text.size() - 2);
    }
    if (text.size() >= 2 && text.starts_with("0p")) {
        text.erase(0, 1);
    }
    if (text.size() >= 3 && text.starts_with("n0p")) {
        text.erase(1, 1);
    }
    return text;
}

void strrep(std::string& text, const std::string& from, const std::string& to) {
    if (from.empty()) {
        return;
    }
    // What is read stands reversed in `ahead`; `done` never holds an occurrence but at its end.
    std::string ahead(text.rbegin(), text.rend());
    std::string done;
    while (!ahead.empty()) {
        done += ahead.back();
        ahead.pop_back();
        if (done.ends_with(from)) {
            done.erase(done.size() - from.size());
            ahead.append(to.rbegin(), to.rend());
        }
    }
    text = std::move(done);
}
