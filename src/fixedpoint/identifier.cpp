// Identifiers of records.
#include "fixedpoint/integer_text.h"
#include "fixedpoint/scaling.h"
#include "services/number_text.h"

#include <tvtypes/fixedpoint/identifier.h>

#include <algorithm>
#include <string_view>

namespace {

using TVTypeSys::integerText;
using TVTypeSys::slopeIsNormal;
using TVTypeSys::totalSlope;

constexpr char separator = '_';

/// Returns the name of the built-in integer type with the properties of a fixed-point record; empty
/// if there is none.
std::string_view builtInName(const fxpDataTypeProp& record) {
    if (record.FixedExponent != 0 || record.SlopeAdjustmentFactor != 1.0 || record.Bias != 0.0) {
        return {};
    }
    const bool isSigned = record.Signedness == 1;
    switch (record.WordLength) {
    case 8:
        return isSigned ? "int8" : "uint8";
    case 16:
        return isSigned ? "int16" : "uint16";
    case 32:
        return isSigned ? "int32" : "uint32";
    default:
        return {};
    }
}

void appendPart(std::string& name, double value, char letter) {
    name += separator;
    name += letter;
    name += numStrToIdentifierStr(TVTypeSys::decimalText(value));
}

char identifierCharacter(char c) {
    switch (c) {
    case '.':
        return 'p';
    case '-':
        return 'n';
    case 'E':
        return 'e';
    default:
        return c;
    }
}

void appendExponent(std::string& name, const fxpDataTypeProp& record) {
    const std::int64_t exponent = record.FixedExponent;
    if (exponent != 0) {
        name += separator;
        name += exponent < 0 ? "En" : "E";
        name += integerText(exponent < 0 ? -exponent : exponent);
    }
}

void appendSlope(std::string& name, const fxpDataTypeProp& record) {
    const double slope = totalSlope(record);
    if (slope != 1.0) {
        appendPart(name, slope, 'S');
    }
}

void appendFactor(std::string& name, const fxpDataTypeProp& record) {
    if (record.SlopeAdjustmentFactor != 1.0) {
        appendPart(name, record.SlopeAdjustmentFactor, 'F');
    }
}

void appendBias(std::string& name, const fxpDataTypeProp& record) {
    if (record.Bias != 0.0) {
        appendPart(name, record.Bias, 'B');
    }
}

/// Returns one component of a name.
std::string component(void (*append)(std::string&, const fxpDataTypeProp&),
                      const fxpDataTypeProp& record) {
    std::string text;
    append(text, record);
    return text;
}

} // namespace

std::string fxpDataTypeToIdentifierString_NoCache(const fxpDataTypeProp* record) {
    switch (record->DataTypeMode) {
    case FXP_DT_FIXPT:
        if (const std::string_view name = builtInName(*record); !name.empty()) {
            return std::string(name);
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
    std::string name;
    const bool isSigned = record->Signedness == 1;
    name += record->DataTypeMode == FXP_DT_SCALED_DOUBLE ? (isSigned ? "flts" : "fltu")
                                                         : (isSigned ? "sfix" : "ufix");
    name += integerText(record->WordLength);
    if (record->SlopeAdjustmentFactor == 1.0) {
        appendExponent(name, *record);
    } else if (slopeIsNormal(*record)) {
        appendSlope(name, *record);
    } else {
        appendFactor(name, *record);
        appendExponent(name, *record);
    }
    appendBias(name, *record);
    return name;
}

std::string getStringForFixedExponentComponent(const fxpDataTypeProp* record) {
    return component(appendExponent, *record);
}

std::string getStringForSlopeComponent(const fxpDataTypeProp* record) {
    return component(appendSlope, *record);
}

std::string getStringForSlopeAdjustmentComponent(const fxpDataTypeProp* record) {
    return component(appendFactor, *record);
}

std::string getStringForBiasComponent(const fxpDataTypeProp* record) {
    return component(appendBias, *record);
}

std::string getPartOfDataTypeStr(double value, char letter) {
    std::string part;
    appendPart(part, value, letter);
    return part;
}

std::string numStrToIdentifierStr(std::string text) {
    std::erase(text, '+');
    std::transform(text.begin(), text.end(), text.begin(), identifierCharacter);
    if (text.ends_with("p0")) {
        text.erase(text.size() - 2);
    }
    if (text.starts_with("0p")) {
        text.erase(0, 1);
    }
    if (text.starts_with("n0p")) {
        text.erase(1, 1);
    }
    return text;
}

void strrep(std::string& text, const std::string& from, const std::string& to) {
    if (from.empty()) {
        return;
    }
    // `ahead` is the unread text, reversed. `done` contains an occurrence only at its end, where it
    // is replaced at once and the replacement read again.
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
