#include "fixedpoint/details.h"

#include "exact/decimal.h"
#include "fixedpoint/range.h"
#include "fixedpoint/record.h"
#include "text/quote.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>
#include <utility>

namespace tvtool::fixedpoint {

namespace {

using TVTypeSys::DataTypeTable;

const char* kindOf(const fxpDataTypeProp& record, const std::string& identifier) {
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

/// The slope in its parts, behind the number where that is a normal double.
std::string slopeOf(const fxpDataTypeProp& record) {
    if (!isSlopeNormal(record)) {
        return slopeFormula(record);
    }
    return record.FixedExponent == 0
               ? slopeStr(record)
               : fmt::format("{} = {}", slopeStr(record), slopeFormula(record));
}

std::vector<Constructor> constructorsOf(const fxpDataTypeProp& record) {
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

/// The smallest built-in integer with room for a word. Empty if there is none.
std::optional<int> integerFor(const fxpDataTypeProp& record) {
    std::optional<int> smallest;
    int length = 0;
    for (int id = 0; id < DataTypeTable::getNumBuiltInDataTypes(); ++id) {
        const fxpDataTypeProp& builtIn = *DataTypeTable::getBuiltinDataTypeProperties(id);
        const bool hasRoom = builtIn.DataTypeMode == FXP_DT_FIXPT &&
                             builtIn.Signedness == record.Signedness &&
                             builtIn.WordLength >= record.WordLength;
        if (hasRoom && (!smallest || builtIn.WordLength < length)) {
            smallest = id;
            length = builtIn.WordLength;
        }
    }
    return smallest;
}

/// The type that holds the values of one that is not built in.
std::optional<int> storageFor(const fxpDataTypeProp& record) {
    return record.DataTypeMode == FXP_DT_SCALED_DOUBLE ? DataTypeTable::getBuiltInDataType("double")
                                                       : integerFor(record);
}

/// Asks the table what it knows of the type.
void addStorage(DataTypeTable& table, TypeDetails& details) {
    const auto typeOf = [&](int id) -> const TVTypeSys::DataType& {
        return *table.getDataTypeAt(static_cast<std::size_t>(id) + 1);
    };
    const int id =
        table.registerDataType(details.identifier.c_str(), DataTypeSourceUnchecked, nullptr);
    details.isAtomic = typeOf(id).isAtomic();
    if (isOpen(details.record) && details.record.DataTypeMode == FXP_DT_FIXPT) {
        return;
    }
    if (!DataTypeTable::checkForBuiltInDataType(id)) {
        const std::optional<int> storage = storageFor(details.record);
        if (!storage) {
            return;
        }
        table.setDataTypeStorageId(id, *storage);
    }
    const TVTypeSys::DataType& storage = typeOf(typeOf(id).getStorageId());
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
            noteIfRounded("slope", slopeStr(details.record), exactSlopeOf(details.record));
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
    details.kind = kindOf(record, details.identifier);
    details.slope = hasScaling(record) ? slopeOf(record) : "";
    details.range = rangeOf(record);
    details.constructors = constructorsOf(record);
    addStorage(table, details);
    addNotes(details);
    return details;
}

} // namespace tvtool::fixedpoint
