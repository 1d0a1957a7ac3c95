// Aliases in DataTypeTable: creation, resolution of chains, and update when a type is replaced.
#include "registry/name_index.h"
#include "services/errors.h"

#include <tvtypes/datatypetable.h>

#include <utility>

namespace TVTypeSys {

int DataTypeTable::registerAliasDataType(const char* name, DataTypeSource source, int idAliasedTo,
                                         const char* blockPath) {
    validateDataTypeName(name);
    if (!isDataTypeIdValid(idAliasedTo)) {
        throwError(general::UndefinedDataTypeToBeAliasedTo(name, idAliasedTo));
    }
    const int existingId = registeredId(name);
    if (keepsExistingType(existingId, source)) {
        return existingId;
    }
    DataType* const target = record(idAliasedTo);
    if (existingId != INVALID_DATA_TYPE_ID &&
        (idAliasedTo == existingId ||
         alreadyAliasedToDirectlyOrIndirectly(idAliasedTo, existingId))) {
        throwError(general::DataTypeAliasLoop(name, orEmpty(target->getName())));
    }
    DataType* const end = record(target->getIdAliasedThruTo());
    return adopt(std::make_unique<AliasDataType>(getNumDataTypes() - 1, name, source, target, end),
                 existingId, blockPath);
}

void DataTypeTable::setDataTypeIdAliasedTo(int id, int idAliasedTo) {
    DataType* const plainType = record(id);
    const std::string name = orEmpty(plainType->getName());
    if (!isDataTypeIdValid(idAliasedTo)) {
        throwError(general::UndefinedDataTypeToBeAliasedTo(name, idAliasedTo));
    }
    const int aliasedToNow = plainType->getIdAliasedTo();
    if (aliasedToNow == idAliasedTo) {
        return;
    }
    DataType* const target = record(idAliasedTo);
    if (aliasedToNow != INVALID_DATA_TYPE_ID) {
        throwError(general::InconsistentDataTypeIdAliasedTo(name, orEmpty(target->getName()),
                                                            nameOrNumber(aliasedToNow)));
    }
    if (plainType->getAliasedToLocked()) {
        throwError(general::CannotSetAliasForDefinedType(name));
    }
    if (idAliasedTo == id ||
        (mayBeAliased(*plainType) && alreadyAliasedToDirectlyOrIndirectly(idAliasedTo, id))) {
        throwError(general::DataTypeAliasLoop(name, orEmpty(target->getName())));
    }
    DataType* const end = record(target->getIdAliasedThruTo());
    auto alias = std::make_unique<AliasDataType>(plainType, target, end);
    DataType* const newType = alias.get();
    const auto position = static_cast<std::size_t>(id) + 1;
    replaced_.push_back({position, nullptr});
    nameIndex_->replace(position, *newType);
    replaced_.back().record = std::exchange(dataTypes_[position], std::move(alias));
    if (mayBeAliased(*plainType)) {
        for (const std::unique_ptr<DataType>& dataType : dataTypes_) {
            if (dataType->getIdAliasedTo() != dataType->getId() &&
                dataType->getIdAliasedTo() == id) {
                dataType->updateAliasedToType(newType);
            }
            // Aliases that ended here now forward to the new alias, which forwards to its own end.
            if (dataType->getIdAliasedThruTo() == id) {
                dataType->updateAliasedThruToType(newType);
            }
        }
    }
    destroyReplaced();
}

/// Points the aliases of `oldType`, which is being replaced, to its new record.
void DataTypeTable::retargetAliases(const DataType& oldType, DataType* newType) const {
    if (!mayBeAliased(oldType)) {
        return;
    }
    for (const std::unique_ptr<DataType>& dataType : dataTypes_) {
        if (dataType->getIdAliasedTo() == INVALID_DATA_TYPE_ID) {
            continue;
        }
        if (dataType->getIdAliasedTo() == oldType.getId()) {
            dataType->updateAliasedToType(newType);
        }
        if (dataType->getIdAliasedThruTo() == oldType.getId()) {
            dataType->updateAliasedThruToType(newType);
        }
    }
}

/// Returns whether aliases may point to a record. Records of client classes may be aliases of any
/// type, so with one of them in the table every record counts as a target.
bool DataTypeTable::mayBeAliased(const DataType& dataType) const {
    return nameIndex_->hasClientRecords() || dataType.isAliasTarget_;
}

int DataTypeTable::getDataTypeIdAliasedTo(int id) const {
    return id == INVALID_DATA_TYPE_ID ? INVALID_DATA_TYPE_ID : record(id)->getIdAliasedTo();
}

DataType* DataTypeTable::getDataTypeAliasedThruTo(int id) const {
    checkDataTypeId(id);
    return record(record(id)->getIdAliasedThruTo());
}

bool DataTypeTable::alreadyAliasedToDirectlyOrIndirectly(int id, int idAliasedTo) const {
    for (int current = getDataTypeIdAliasedTo(id); current != INVALID_DATA_TYPE_ID;
         current = getDataTypeIdAliasedTo(current)) {
        if (current == idAliasedTo) {
            return true;
        }
    }
    return false;
}

int DataTypeTable::getDataTypeIdCommonAncestor(int id1, int id2) const {
    if (id1 == id2) {
        return id1;
    }
    const int end = record(id1)->getIdAliasedThruTo();
    if (end != record(id2)->getIdAliasedThruTo()) {
        return INVALID_DATA_TYPE_ID;
    }
    if (end == id2 || end == id1) {
        return end;
    }
    const auto setVisitFlags = [this, id1](bool visited) {
        for (int id = id1; id != INVALID_DATA_TYPE_ID; id = record(id)->getIdAliasedTo()) {
            record(id)->setVisitFlag(visited);
        }
    };
    setVisitFlags(true);
    int ancestor = id2;
    while (ancestor != INVALID_DATA_TYPE_ID && !record(ancestor)->getVisitFlag()) {
        ancestor = record(ancestor)->getIdAliasedTo();
    }
    setVisitFlags(false);
    return ancestor;
}

} // namespace TVTypeSys
