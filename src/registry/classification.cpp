// What a type is, told by its name, its qualifier and its storage.
#include "registry/builtin_templates.h"
#include "services/refuse.h"

#include <tvtypes/datatypetable.h>

#include <algorithm>
#include <charconv>
#include <limits>
#include <string_view>

namespace TVTypeSys {

void DataTypeTable::setDataTypeStorageId(int id, int storageId) {
    DataType& dataType = *record(id);
    if (dataType.getIdAliasedTo() != INVALID_DATA_TYPE_ID) {
        refuse(general::CannotSetDataTypeStorageIdOfAlias(textOf(dataType.getName())));
    }
    if (storageId > BOOLEAN_ID) {
        refuse(general::IllegalDataTypeToBeStorageId(textOf(dataType.getName()),
                                                     textOf(record(storageId)->getName())));
    }
    const int storageNow = dataType.getStorageId();
    if (storageNow == id) {
        dataType.setStorageId(storageId);
        dataType.setAliasedToLocked(true);
    } else if (storageNow != storageId) {
        refuse(general::InconsistentDataTypeStorageId(textOf(dataType.getName()),
                                                      textOf(record(storageId)->getName()),
                                                      textOf(record(storageNow)->getName())));
    }
}

bool DataTypeTable::isInstrinsicFixptName(const char* name, int* wordLength) {
    const std::string_view text = name == nullptr ? std::string_view() : name;
    const std::string_view stem = text.substr(0, 4);
    if (stem != "sfix" && stem != "ufix" && stem != "flts" && stem != "fltu") {
        return false;
    }
    const std::string_view rest = text.substr(4);
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
        dataType->setIsAtomic(record(INT8_ID)->isAtomic());
        break;
    case 16:
        dataType->setIsAtomic(record(INT16_ID)->isAtomic());
        break;
    case 32:
        dataType->setIsAtomic(record(INT32_ID)->isAtomic());
        break;
    default:
        dataType->setIsAtomic(std::find(atomicWordLengths_.begin(), atomicWordLengths_.end(),
                                        wordLength) != atomicWordLengths_.end());
    }
}

bool DataTypeTable::isNumeric(int id, bool booleanCounts) const {
    const int end =
        id == INVALID_DATA_TYPE_ID ? INVALID_DATA_TYPE_ID : record(id)->getIdAliasedThruTo();
    if (end == BOOLEAN_ID && !booleanCounts) {
        return false;
    }
    return checkForBuiltInDataType(end) ||
           getDataTypeAliasedThruTo(end)->getIsType(DataTypeQualifierFixpt);
}

bool DataTypeTable::IsDataTypeNumericOrBoolean(int id) const { return isNumeric(id, true); }

bool DataTypeTable::IsDataTypeNumericNonBoolean(int id) const { return isNumeric(id, false); }

bool DataTypeTable::IsFixptDTNotScaledDouble(int id) const {
    const DataType& end = *getDataTypeAliasedThruTo(id);
    return end.getIsType(DataTypeQualifierFixpt) && !textOf(end.getName()).starts_with("flt");
}

bool DataTypeTable::isEnumType(int id) const {
    return id != INVALID_DATA_TYPE_ID && id != AUTO_DATA_TYPE_ID &&
           getDataTypeAliasedThruTo(id)->getIsType(DataTypeQualifierEnum);
}

} // namespace TVTypeSys
