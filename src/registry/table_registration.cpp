// Registration of types by name.
#include "registry/alias_chain.h"
#include "registry/builtin_types.h"
#include "registry/name_index.h"
#include "services/errors.h"
#include "services/guard.h"
#include "services/names.h"

#include <tvtypes/datatypetable.h>
#include <tvtypes/structdatatype.h>

#include <algorithm>
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
///
/// The callback may change the table in any way: it may turn the new record into an alias, which
/// destroys it, remove it, and register other types. The record is therefore addressed by its
/// position, and undoing the registration removes all records from there on.
int DataTypeTable::adopt(std::unique_ptr<DataType> newRecord, int existingId,
                         const char* blockPath) {
    const std::size_t position = dataTypes_.size();
    const int newId = newRecord->getId();
    addDataType(newRecord.get());
    DataType* const added = newRecord.release();

    struct RunningCallback {
        explicit RunningCallback(DataTypeTable& caller) : table(caller) {
            ++table.runningCallbacks_;
        }
        RunningCallback(const RunningCallback&) = delete;
        RunningCallback& operator=(const RunningCallback&) = delete;
        ~RunningCallback() {
            --table.runningCallbacks_;
            table.destroyReplaced();
        }
        DataTypeTable& table;
    } const running(*this);

    // A copy: the callback may remove itself from the table while it runs.
    if (const boost::shared_ptr<ClientDataTypeCheckCallback> callback = clientCheckCallback_) {
        try {
            callback->checkRegisteredType(added, blockPath);
        } catch (const fnd::except::IException&) {
            removeFrom(position);
            throw;
        }
    }
    if (existingId == INVALID_DATA_TYPE_ID) {
        return newId;
    }
    try {
        replaceExisting(static_cast<std::size_t>(existingId) + 1, position);
    } catch (...) {
        removeFrom(position);
        throw;
    }
    return existingId;
}

/// Replaces an existing type by the new record of the same name, unless the callback has removed
/// one of them. Throws DataTypeAliasLoop (name, name of the target) if the callback has made the
/// new record an alias of the existing type, or the other way round.
void DataTypeTable::replaceExisting(std::size_t existingPosition, std::size_t position) {
    if (existingPosition >= position || position >= dataTypes_.size()) {
        return;
    }
    const DataType& newType = *dataTypes_[position];
    const std::string name = orEmpty(newType.getName());
    if (name != orEmpty(dataTypes_[existingPosition]->getName())) {
        return;
    }
    const int id = static_cast<int>(position) - 1;
    if (leadsTo(*this, id, static_cast<int>(existingPosition) - 1)) {
        throwError(
            general::DataTypeAliasLoop(name, orEmpty(record(newType.getIdAliasedTo())->getName())));
    }
    // Records that the callback has registered keep their positions.
    const bool isLast = position + 1 == dataTypes_.size();
    replaceAt(existingPosition, position,
              isLast ? nullptr : std::make_unique<DataType>(id, name, newType.getDataTypeSource()));
}

/// Removes and destroys the records from `position` on. Restores the records before it that have
/// been replaced by aliases of a removed type.
void DataTypeTable::removeFrom(std::size_t position) {
    bool hasRestored = false;
    for (auto entry = replaced_.rbegin(); entry != replaced_.rend(); ++entry) {
        if (entry->record == nullptr || entry->position >= std::min(position, dataTypes_.size())) {
            continue;
        }
        if (refersBehind(*entry->record, position)) {
            entry->record = nullptr; // an earlier entry has what the type was before
            continue;
        }
        std::unique_ptr<DataType>& current = dataTypes_[entry->position];
        if (refersBehind(*current, position)) {
            retargetAliases(*current, entry->record.get());
            current = std::move(entry->record);
            hasRestored = true;
        }
    }
    while (dataTypes_.size() > position) {
        if (!hasRestored) {
            nameIndex_->removeLast();
        }
        dataTypes_.pop_back();
    }
    if (hasRestored) {
        nameIndex_->rebuild();
    }
    std::erase_if(replaced_, [position](const auto& entry) {
        return entry.record == nullptr || entry.position >= position;
    });
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
