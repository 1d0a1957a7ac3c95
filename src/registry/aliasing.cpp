// Types that stand for other types.
#include "registry/name_index.h"
#include "services/refuse.h"

#include <tvtypes/datatypetable.h>

#include <utility>

namespace TVTypeSys {

int DataTypeTable::registerAliasDataType(const char* name, DataTypeSource source, int idAliasedTo,
                                         const char* blockPath) {
    validateDataTypeName(name);
    if (!isDataTypeIdValid(idAliasedTo)) {
        refuse(general::UndefinedDataTypeToBeAliasedTo(name, idAliasedTo));
    }
    int existingId = INVALID_DATA_TYPE_ID;
    if (!isNewName(name, source, existingId)) {
        return existingId;
    }
    DataType* const target = record(idAliasedTo);
    if (existingId != INVALID_DATA_TYPE_ID &&
        (idAliasedTo == existingId ||
         alreadyAliasedToDirectlyOrIndirectly(idAliasedTo, existingId))) {
        refuse(general::DataTypeAliasLoop(name, textOf(target->getName())));
    }
    DataType* const end = record(target->getIdAliasedThruTo());
    return adopt(std::make_unique<AliasDataType>(getNumDataTypes() - 1, name, source, target, end),
                 existingId, blockPath);
}

void DataTypeTable::setDataTypeIdAliasedTo(int id, int idAliasedTo) {
    DataType* const plainType = record(id);
    const std::string name = textOf(plainType->getName());
    if (!isDataTypeIdValid(idAliasedTo)) {
        refuse(general::UndefinedDataTypeToBeAliasedTo(name, idAliasedTo));
    }
    const int aliasedToNow = plainType->getIdAliasedTo();
    if (aliasedToNow == idAliasedTo) {
        return;
    }
    DataType* const target = record(idAliasedTo);
    if (aliasedToNow != INVALID_DATA_TYPE_ID) {
        refuse(general::InconsistentDataTypeIdAliasedTo(name, textOf(target->getName()),
                                                        textOf(record(aliasedToNow)->getName())));
    }
    if (plainType->getAliasedToLocked()) {
        refuse(general::CannotSetAliasForDefinedType(name));
    }
    if (idAliasedTo == id ||
        (mayBeAliased(*plainType) && alreadyAliasedToDirectlyOrIndirectly(idAliasedTo, id))) {
        refuse(general::DataTypeAliasLoop(name, textOf(target->getName())));
    }
    DataType* const end = record(target->getIdAliasedThruTo());
    auto alias = std::make_unique<AliasDataType>(plainType, target, end);
    DataType* const newType = alias.get();
    const auto position = static_cast<std::size_t>(id) + 1;
    nameIndex_->leave(position);
    // Kept until nothing points at it any more.
    const std::unique_ptr<DataType> old = std::exchange(dataTypes_[position], std::move(alias));
    nameIndex_->enter(position);
    if (!mayBeAliased(*old)) {
        return;
    }
    for (const std::unique_ptr<DataType>& dataType : dataTypes_) {
        if (dataType->getIdAliasedTo() != dataType->getId() && dataType->getIdAliasedTo() == id) {
            dataType->updateAliasedToType(newType);
        }
        // Aliases that ended here now end at the new alias, and reach its end through it.
        if (dataType->getIdAliasedThruTo() == id) {
            dataType->updateAliasedThruToType(newType);
        }
    }
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
    const auto markChainOfFirst = [this, id1](bool visited) {
        for (int id = id1; id != INVALID_DATA_TYPE_ID; id = record(id)->getIdAliasedTo()) {
            record(id)->setVisitFlag(visited);
        }
    };
    markChainOfFirst(true);
    int ancestor = id2;
    while (ancestor != INVALID_DATA_TYPE_ID && !record(ancestor)->getVisitFlag()) {
        ancestor = record(ancestor)->getIdAliasedTo();
    }
    markChainOfFirst(false);
    return ancestor;
}

} // namespace TVTypeSys
