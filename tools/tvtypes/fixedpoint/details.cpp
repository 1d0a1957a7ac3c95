#include "fixedpoint/details.h"

#include "exact/number.h"
#include "fixedpoint/record.h"
#include "text/quote.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>
#include <utility>

namespace tvtool::fixedpoint {

namespace {

using TVTypeSys::DataTypeTable;

const char* typeKind(const fxpDataTypeProp& record, const std::string& identifier) {
    switch (record.DataTypeMode) {
    case FXP_DT_FIXPT:
        return DataTypeTable::nameOfBuiltInDataType(identifier.c_str()) && !isOpen(record)
                   ? "built-in integer"
                   : "fixed point";
    case FXP_DT_SCALED_DOUBLE:
        return "scaled double";
    case FXP_DT_DOUBLE:
    case FXP_DT_SINGLE:
        return "floating point";
    case FXP_DT_BOOLEAN:
        break;
    }
    return "boolean";
}

bool hasScaling(const fxpDataTypeProp& record) {
    return record.DataTypeMode == FXP_DT_FIXPT || record.DataTypeMode == FXP_DT_SCALED_DOUBLE;
}

bool isSlopeNormal(const fxpDataTypeProp& record) {
    return record.FixedExponent >= -1022 && record.FixedExponent <= 1023;
}

/// Returns the slope as a formula, after the number if that is a normal double.
std::string slopeText(const fxpDataTypeProp& record) {
    if (!isSlopeNormal(record)) {
        return slopeFormula(record);
    }
    return record.FixedExponent == 0
               ? slopeStr(record)
               : fmt::format("{} = {}", slopeStr(record), slopeFormula(record));
}

std::vector<Constructor> constructorForms(const fxpDataTypeProp& record) {
    std::vector<Constructor> constructors;
    for (const auto& [baseName, base] :
         {std::pair("fixdt", FxpDT::PreferFixdt), {"numerictype", FxpDT::PreferNumericType}}) {
        for (const auto& [scalingName, scaling] :
             {std::pair("fraction length", FxpDT::PreferFractionLength),
              {"slope and bias", FxpDT::PreferSlopeBias},
              {"no scaling", FxpDT::PreferNoScaling}}) {
            constructors.push_back(
                {baseName, scalingName, fxpDataTypeToConstructorString(record, base, scaling)});
        }
    }
    return constructors;
}

/// Returns the smallest built-in integer type for a word; empty if there is none.
std::optional<int> smallestInteger(const fxpDataTypeProp& record) {
    // The built-in integers of one signedness are in the order of their sizes.
    for (int id = 0; id < DataTypeTable::getNumBuiltInDataTypes(); ++id) {
        const fxpDataTypeProp& builtIn = *DataTypeTable::getBuiltinDataTypeProperties(id);
        if (builtIn.DataTypeMode == FXP_DT_FIXPT && builtIn.Signedness == record.Signedness &&
            builtIn.WordLength >= record.WordLength) {
            return id;
        }
    }
    return std::nullopt;
}

/// Registers the type and adds its storage and access.
void addStorage(DataTypeTable& table, TypeDetails& details) {
    const auto typeWithId = [&](int id) -> const TVTypeSys::DataType& {
        return *table.getDataTypeAt(static_cast<std::size_t>(id) + 1);
    };
    const int id =
        table.registerDataType(details.identifier.c_str(), DataTypeSourceUnchecked, nullptr);
    details.isAtomic = typeWithId(id).isAtomic();
    if (isOpen(details.record) && details.record.DataTypeMode == FXP_DT_FIXPT) {
        return;
    }
    if (!DataTypeTable::checkForBuiltInDataType(id)) {
        const std::optional<int> storage = details.record.DataTypeMode == FXP_DT_SCALED_DOUBLE
                                               ? DataTypeTable::getBuiltInDataType("double")
                                               : smallestInteger(details.record);
        if (!storage) {
            return;
        }
        table.setDataTypeStorageId(id, *storage);
    }
    const TVTypeSys::DataType& storage = typeWithId(typeWithId(id).getStorageId());
    details.storage = storage.getName();
    details.storageSize = storage.getSize();
}

void addNotes(TypeDetails& details) {
    const auto note = [&](std::string sentence) { details.notes.push_back(std::move(sentence)); };
    if (!details.text.empty() && details.text != details.identifier) {
        constexpr std::size_t longest = 60;
        note(fmt::format("the library writes {} for {}", details.identifier,
                         text::shortened(details.text, longest)));
    }
    const auto noteIfRounded = [&](const char* what, const std::string& decimal,
                                   const exact::Number& number) {
        if (exact::parseDecimal(decimal) != number) {
            note(fmt::format("the {} is the double nearest to {}", what, decimal));
        }
    };
    if (hasScaling(details.record)) {
        const bool isPowerOfTwo = details.record.SlopeAdjustmentFactor == 1.0;
        if (isSlopeNormal(details.record) && !isPowerOfTwo) {
            noteIfRounded("slope", slopeStr(details.record), exactSlope(details.record));
        } else {
            noteIfRounded("factor", slopeAdjustmentFactorStr(details.record),
                          exact::Number(details.record.SlopeAdjustmentFactor));
        }
        noteIfRounded("bias", biasStr(details.record), exact::Number(details.record.Bias));
    }
    if (details.record.DataTypeMode == FXP_DT_SCALED_DOUBLE) {
        note("it holds doubles, so no word limits its range and resolution");
    }
    if (isOpen(details.record)) {
        note("the signedness is open, and the identifier is that of the unsigned type");
    } else if (details.storage.empty()) {
        note(fmt::format("no built-in type has room for {} bits", details.record.WordLength));
    }
}

} // namespace

void setAtomic(const std::vector<int>& wordLengths, DataTypeTable& table) {
    table.setAtomicWordLengths(wordLengths);
    for (int id = 0; id < DataTypeTable::getNumBuiltInDataTypes(); ++id) {
        const fxpDataTypeProp& builtIn = *DataTypeTable::getBuiltinDataTypeProperties(id);
        if (builtIn.DataTypeMode == FXP_DT_FIXPT &&
            std::ranges::find(wordLengths, builtIn.WordLength) != wordLengths.end()) {
            table.getDataTypeAt(static_cast<std::size_t>(id) + 1)->setIsAtomic(true);
        }
    }
}

TypeDetails typeDetails(const std::string& text, const fxpDataTypeProp& record,
                        DataTypeTable& table) {
    TypeDetails details;
    details.text = text;
    details.record = record;
    details.identifier = fxpDataTypeToIdentifierString(&record);
    details.fixedPointName =
        hasScaling(record) ? fxpDataTypeToIdentifierStringTrueFixPt(&record) : "";
    details.kind = typeKind(record, details.identifier);
    details.slope = hasScaling(record) ? slopeText(record) : "";
    details.range = valueRange(record);
    details.constructors = constructorForms(record);
    addStorage(table, details);
    addNotes(details);
    return details;
}

} // namespace tvtool::fixedpoint
