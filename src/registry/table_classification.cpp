// Classification of types: storage type, fixed-point names, kinds by qualifier.
#include "registry/builtin_types.h"
#include "services/errors.h"

#include <tvtypes/datatypetable.h>
#include <tvtypes/structdatatype.h>

#include <algorithm>
#include <cassert>
#include <charconv>
#include <limits>
#include <string>
#include <string_view>

namespace TVTypeSys {

/// Returns the name of a type for a message, or the id in decimal if no type has it.
std::string DataTypeTable::nameOrNumber(int id) const {
    return isDataTypeIdValid(id) ? orEmpty(record(id)->getName()) : std::to_string(id);
}

void DataTypeTable::setDataTypeStorageId(int id, int storageId) {
    DataType& dataType = *record(id);
    if (dataType.getIdAliasedTo() != INVALID_DATA_TYPE_ID) {
        throwError(general::CannotSetDataTypeStorageIdOfAlias(orEmpty(dataType.getName())));
    }
    if (storageId > BooleanId) {
        throwError(general::IllegalDataTypeToBeStorageId(orEmpty(dataType.getName()),
                                                         nameOrNumber(storageId)));
    }
    const int storageNow = dataType.getStorageId();
    if (storageNow == id) {
        dataType.setStorageId(storageId);
        dataType.setAliasedToLocked(true);
    } else if (storageNow != storageId) {
        throwError(general::InconsistentDataTypeStorageId(
            orEmpty(dataType.getName()), nameOrNumber(storageId), nameOrNumber(storageNow)));
    }
}

bool DataTypeTable::isInstrinsicFixptName(const char* name, int* wordLength) {
    // Every name that is registered is checked, and the first characters decide for most.
    const auto startsWith = [name](const char(&prefix)[5]) {
        return name[0] == prefix[0] && name[1] == prefix[1] && name[2] == prefix[2] &&
               name[3] == prefix[3];
    };
    if (name == nullptr ||
        !(startsWith("sfix") || startsWith("ufix") || startsWith("flts") || startsWith("fltu"))) {
        return false;
    }
    const std::string_view rest = name + 4;
    if (rest.empty() || rest.front() < '0' || rest.front() > '9') {
        return false;
    }
    if (rest.find("sfcn") != std::string_view::npos ||
        rest.find("_OBS") != std::string_view::npos) {
        return false;
    }
    if (wordLength != nullptr) {
        const auto [end, error] =
            std::from_chars(rest.data(), rest.data() + rest.size(), *wordLength);
        if (error == std::errc::result_out_of_range) {
            *wordLength = std::numeric_limits<int>::max();
        }
    }
    return true;
}

void DataTypeTable::initializeFixptDataTypeAtomicity(DataType* dataType, int wordLength) {
    if (!dataType->getIsType(DataTypeQualifierFixpt)) {
        return;
    }
    switch (wordLength) {
    case 8:
        dataType->setIsAtomic(record(Int8Id)->isAtomic());
        break;
    case 16:
        dataType->setIsAtomic(record(Int16Id)->isAtomic());
        break;
    case 32:
        dataType->setIsAtomic(record(Int32Id)->isAtomic());
        break;
    default:
        dataType->setIsAtomic(std::find(atomicWordLengths_.begin(), atomicWordLengths_.end(),
                                        wordLength) != atomicWordLengths_.end());
    }
}

bool DataTypeTable::isNumeric(int id, bool booleanCounts) const {
    const int end =
        id == INVALID_DATA_TYPE_ID ? INVALID_DATA_TYPE_ID : record(id)->getIdAliasedThruTo();
    if (end == BooleanId && !booleanCounts) {
        return false;
    }
    return checkForBuiltInDataType(end) ||
           getDataTypeAliasedThruTo(end)->getIsType(DataTypeQualifierFixpt);
}

bool DataTypeTable::IsDataTypeNumericOrBoolean(int id) const { return isNumeric(id, true); }

bool DataTypeTable::IsDataTypeNumericNonBoolean(int id) const { return isNumeric(id, false); }

bool DataTypeTable::IsFixptDTNotScaledDouble(int id) const {
    const DataType& end = *getDataTypeAliasedThruTo(id);
    return end.getIsType(DataTypeQualifierFixpt) && !orEmpty(end.getName()).starts_with("flt");
}

bool DataTypeTable::isEnumType(int id) const {
    return id != INVALID_DATA_TYPE_ID && id != AUTO_DATA_TYPE_ID &&
           getDataTypeAliasedThruTo(id)->getIsType(DataTypeQualifierEnum);
}

std::string DataTypeTable::getDTACompliantString(int id) const {
    const DataType& type = *record(id);
    std::string name = orEmpty(type.getName());
    switch (type.getType()) {
    case DataTypeQualifierFixpt:
        return "fixdt('" + name + "')";
    case DataTypeQualifierEnum:
        return "Enum: " + name;
    case DataTypeQualifierStruct:
        return "Bus: " + name;
    default:
        return name;
    }
}

int DataTypeTable::getDataTypeLoggingId(int id) const {
    if (checkForBuiltInDataType(id)) {
        return id;
    }
    if (!getDataTypeAliasedThruTo(id)->getIsType(DataTypeQualifierEnum)) {
        return DoubleId;
    }
    return record(id)->getStorageId();
}

const StructDataType& DataTypeTable::structRecord(int id) const {
    assert(dynamic_cast<const StructDataType*>(record(id)) != nullptr);
    return static_cast<const StructDataType&>(*record(id));
}

bool DataTypeTable::doesBusDTHaveComplexData(int id) const {
    return structRecord(id).hasComplexData();
}

bool DataTypeTable::doesBusDTHaveFrameBasedElements(int id) const {
    return structRecord(id).hasFrameBasedElements();
}

bool DataTypeTable::doesBusDTHaveVarDims(int id) const { return structRecord(id).hasVarDims(); }

bool DataTypeTable::doesBusDTHaveAoB(int id) const { return structRecord(id).hasAOB(); }

} // namespace TVTypeSys
