// The road from a name to an id.
#include "registry/builtin_templates.h"
#include "registry/name_index.h"
#include "services/guard.h"
#include "services/memory.h"
#include "services/names.h"
#include "services/refuse.h"

#include <tvtypes/datatypetable.h>
#include <tvtypes/structdatatype.h>

#include <cstring>
#include <utility>

namespace TVTypeSys {

bool DataTypeTable::isAValidDataType(const char* name) { return isIdentifier(name); }

void DataTypeTable::validateDataTypeName(const char* name) {
    if (!isAValidDataType(name)) {
        refuse(general::InvalidDataType(textOf(name)));
    }
}

void DataTypeTable::verifyDataTypeSourcesMatch(DataTypeSource source, int id) const {
    const DataType& dataType = *record(id);
    if (source != DataTypeSourceUnchecked && source != dataType.getDataTypeSource()) {
        refuse(general::DataType_SameNameAsExistingType(textOf(dataType.getName())));
    }
}

bool DataTypeTable::shortCircuitRegistration(DataTypeSource /*source*/) const { return true; }

/// Whether a record has to be made for a name. If not, `existingId` is the answer to the
/// registration; if so, it is the id of the type to be replaced, or -10.
bool DataTypeTable::isNewName(const char* name, DataTypeSource source, int& existingId) const {
    existingId = getDataTypeId(name);
    if (!isDataTypeIdValid(existingId)) {
        existingId = INVALID_DATA_TYPE_ID;
        return true;
    }
    if (!shortCircuitRegistration(source)) {
        return true;
    }
    verifyDataTypeSourcesMatch(source, existingId);
    return false;
}

/// Takes a new record into the table, past the client's hook, and gives the id that it has there.
int DataTypeTable::adopt(std::unique_ptr<DataType> newRecord, int existingId,
                         const char* blockPath) {
    DataType* const added = newRecord.get();
    append(std::move(newRecord));
    if (clientCheckCallback_) {
        try {
            clientCheckCallback_->checkRegisteredType(added, blockPath);
        } catch (const fnd::except::IException&) {
            removeDataType(added);
            throw;
        }
    }
    if (existingId != INVALID_DATA_TYPE_ID) {
        replaceAt(static_cast<std::size_t>(existingId) + 1, positionOf(added));
    }
    return added->getId();
}

int DataTypeTable::registerDataType(const char* name, DataTypeSource source,
                                    const char* blockPath) {
    validateDataTypeName(name);
    int existingId = INVALID_DATA_TYPE_ID;
    if (!isNewName(name, source, existingId)) {
        return existingId;
    }
    const int count = getNumDataTypes();
    const int newId = count - 1;
    std::unique_ptr<DataType> dataType;
    if (count == 0) {
        dataType = std::make_unique<AutoDataType>();
    } else if (count < initialCount) {
        dataType = std::make_unique<BuiltInDataType>(newId, name, source);
    } else {
        dataType = std::make_unique<DataType>(newId, std::string(name), source);
    }

    int wordLength = 0;
    if (newId < firstPredefinedId) {
        registerBuiltInDataType(dataType.get(), newId);
    } else if (count < initialCount) {
        registerInternalExtraDataType(dataType.get(), newId);
    } else if (isInstrinsicFixptName(name, &wordLength)) {
        dataType->setType(DataTypeQualifierFixpt);
        dataType->setIsAliasToLocked(true);
        initializeFixptDataTypeAtomicity(dataType.get(), wordLength);
    }
    return adopt(std::move(dataType), existingId, blockPath);
}

int DataTypeTable::registerStructDataType(const char* name, DataTypeSource source,
                                          const char* blockPath) {
    validateDataTypeName(name);
    int existingId = INVALID_DATA_TYPE_ID;
    if (!isNewName(name, source, existingId)) {
        return existingId;
    }
    return adopt(std::make_unique<StructDataType>(getNumDataTypes() - 1, name, source), existingId,
                 blockPath);
}

void DataTypeTable::registerBuiltInDataType(DataType* dataType, int id) {
    const BuiltInDataType& source = BuiltInDataTypes[id + 1];
    dataType->size_ = source.size_;
    dataType->storageId_ = source.storageId_;
    dataType->idAliasedToForTesting_ = source.idAliasedToForTesting_;
    dataType->functions_ = source.functions_;
    dataType->groundHasNonZeroStoredValue_ = source.groundHasNonZeroStoredValue_;
    if (!dataType->allocateGround()) {
        refuse(general::MemoryAllocErr());
    }
    dataType->defaultGround_ = true;
    if (id != AUTO_DATA_TYPE_ID) {
        const fxpDataTypeProp& properties = builtInRows[id].properties;
        dataType->properties_.reset(allocateZeroed(sizeof properties));
        if (dataType->properties_ == nullptr) {
            refuse(general::MemoryAllocErr());
        }
        std::memcpy(dataType->properties_.get(), &properties, sizeof properties);
        dataType->propertiesSize_ = sizeof properties;
    }
    dataType->setIsAliasToLocked(true);
}

void DataTypeTable::registerInternalExtraDataType(DataType* dataType, int id) {
    const BuiltInDataType& source = PreDefinedDataTypes[id - firstPredefinedId];
    dataType->size_ = source.size_;
    dataType->storageId_ = source.storageId_;
    dataType->idAliasedToForTesting_ = source.idAliasedToForTesting_;
    dataType->functions_ = source.functions_;
    if (!dataType->allocateGround()) {
        refuse(general::MemoryAllocErr());
    }
    dataType->setDefaultGround(true);
    dataType->setIsAliasToLocked(true);
    dataType->setType(DataTypeQualifierPredefined);
}

tvsvDiagnosticImpl* DataTypeTable::RegisterDataType(DataTypeTable* table, const char* blockPath,
                                                    const char* name, DataTypeSource source,
                                                    int* outId) {
    return guarded(blockPath, [&] { *outId = table->registerDataType(name, source, blockPath); });
}

void DataTypeTable::replaceDataType(DataType* oldType, DataType* newType) {
    const std::size_t oldPosition = positionOf(oldType);
    const std::size_t newPosition = positionOf(newType);
    if (oldType != newType && oldPosition < dataTypes_.size() && newPosition < dataTypes_.size()) {
        replaceAt(oldPosition, newPosition);
    }
}

void DataTypeTable::replaceAt(std::size_t oldPosition, std::size_t newPosition) {
    DataType* const oldType = dataTypes_[oldPosition].get();
    DataType* const newType = dataTypes_[newPosition].get();
    if (mayBeAliased(*oldType)) {
        for (const std::unique_ptr<DataType>& dataType : dataTypes_) {
            if (dataType->getIdAliasedTo() == INVALID_DATA_TYPE_ID) {
                continue;
            }
            if (dataType->getIdAliasedTo() == oldType->getId()) {
                dataType->updateAliasedToType(newType);
            }
            if (dataType->getIdAliasedThruTo() == oldType->getId()) {
                dataType->updateAliasedThruToType(newType);
            }
        }
    }
    newType->id_ = oldType->getId();
    newType->storageId_ = oldType->getStorageId();

    nameIndex_->leave(newPosition);
    nameIndex_->leave(oldPosition);
    std::swap(dataTypes_[oldPosition], dataTypes_[newPosition]);
    nameIndex_->enter(oldPosition);
    nameIndex_->enter(newPosition);
    removeAt(newPosition);
}

} // namespace TVTypeSys
