// Registration of types by name.
#include "registry/builtin_types.h"
#include "services/errors.h"
#include "services/guard.h"
#include "services/names.h"

#include <tvtypes/datatypetable.h>
#include <tvtypes/structdatatype.h>

#include <cstdio>
#include <utility>

namespace TVTypeSys {

bool DataTypeTable::isAValidDataType(const char* name) { return isIdentifier(name); }

void DataTypeTable::validateDataTypeName(const char* name) {
    if (!isAValidDataType(name)) {
        throwError(general::InvalidDataType(orEmpty(name)));
    }
}

void DataTypeTable::verifyDataTypeSourcesMatch(DataTypeSource source, int id) const {
    const DataType& dataType = *record(id);
    if (source != DataTypeSourceUnchecked && source != dataType.getDataTypeSource()) {
        throwError(general::DataType_SameNameAsExistingType(orEmpty(dataType.getName())));
    }
}

bool DataTypeTable::shortCircuitRegistration(DataTypeSource /*source*/) const { return true; }

/// Returns the id of the type that has a name, or -10 if there is none or its id is out of range.
int DataTypeTable::registeredId(const char* name) const {
    const int id = getDataTypeId(name);
    return isDataTypeIdValid(id) ? id : INVALID_DATA_TYPE_ID;
}

/// Returns whether a registration returns the existing type instead of making a new record. Throws
/// DataType_SameNameAsExistingType if it does and the sources differ.
bool DataTypeTable::keepsExistingType(int existingId, DataTypeSource source) const {
    if (existingId == INVALID_DATA_TYPE_ID || !shortCircuitRegistration(source)) {
        return false;
    }
    verifyDataTypeSourcesMatch(source, existingId);
    return true;
}

/// Appends a new record, calls the client's callback, and replaces the type `existingId` unless it
/// is -10. Returns the id of the record.
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
    const int existingId = registeredId(name);
    if (keepsExistingType(existingId, source)) {
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
    const int existingId = registeredId(name);
    if (keepsExistingType(existingId, source)) {
        return existingId;
    }
    return adopt(std::make_unique<StructDataType>(getNumDataTypes() - 1, name, source), existingId,
                 blockPath);
}

tvsvDiagnosticImpl* DataTypeTable::RegisterDataType(DataTypeTable* table, const char* blockPath,
                                                    const char* name, DataTypeSource source,
                                                    int* outId) {
    return guarded(blockPath, [&] { *outId = table->registerDataType(name, source, blockPath); });
}

const char* DataTypeTable::generateAnonymousTypeName() const {
    std::snprintf(anonymousTypeName_, sizeof anonymousTypeName_, "rtt_%d", anonymousTypeCount_);
    // Unsigned arithmetic: wraps around, where int would overflow.
    anonymousTypeCount_ = static_cast<int>(static_cast<unsigned>(anonymousTypeCount_) + 1U);
    return anonymousTypeName_;
}

} // namespace TVTypeSys
