// Identifiers of records.
#include "fixedpoint/scaling.h"
#include "fixedpoint/short_text.h"

#include <tvtypes/fixedpoint/identifier.h>

namespace {

using TVTypeSys::ShortText;
using TVTypeSys::slopeIsNormal;
using TVTypeSys::totalSlope;

constexpr std::string_view separator = "_";

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

void appendPart(ShortText& name, double value, char letter) {
    name.append(separator);
    name.append({&letter, 1});
    name.appendIdentifierNumber(value);
}

void appendExponent(ShortText& name, const fxpDataTypeProp& record) {
    const std::int64_t exponent = record.FixedExponent;
    if (exponent != 0) {
        name.append(separator);
        name.append(exponent < 0 ? "En" : "E");
        name.appendInteger(exponent < 0 ? -exponent : exponent);
    }
}

void appendSlope(ShortText& name, const fxpDataTypeProp& record) {
    const double slope = totalSlope(record);
    if (slope != 1.0) {
        appendPart(name, slope, 'S');
    }
}

void appendFactor(ShortText& name, const fxpDataTypeProp& record) {
    if (record.SlopeAdjustmentFactor != 1.0) {
        appendPart(name, record.SlopeAdjustmentFactor, 'F');
    }
}

void appendBias(ShortText& name, const fxpDataTypeProp& record) {
    if (record.Bias != 0.0) {
        appendPart(name, record.Bias, 'B');
    }
}

/// Returns one component of a name.
std::string component(void (*append)(ShortText&, const fxpDataTypeProp&),
                      const fxpDataTypeProp& record) {
    ShortText text;
    append(text, record);
    return text.str();
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
    ShortText name;
    const bool isSigned = record->Signedness == 1;
    name.append(record->DataTypeMode == FXP_DT_SCALED_DOUBLE ? (isSigned ? "flts" : "fltu")
                                                             : (isSigned ? "sfix" : "ufix"));
    name.appendInteger(record->WordLength);
    if (record->SlopeAdjustmentFactor == 1.0) {
        appendExponent(name, *record);
    } else if (slopeIsNormal(*record)) {
        appendSlope(name, *record);
    } else {
        appendFactor(name, *record);
        appendExponent(name, *record);
    }
    appendBias(name, *record);
    return name.str();
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
    ShortText part;
    appendPart(part, value, letter);
    return part.str();
}

std::string numStrToIdentifierStr(std::string text) {
    char* const end = TVTypeSys::rewriteForIdentifier(text.data(), text.data() + text.size());
    text.resize(static_cast<std::size_t>(end - text.data()));
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
