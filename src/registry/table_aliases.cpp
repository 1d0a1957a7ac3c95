// Aliases in DataTypeTable: creation, resolution of chains, and update when a type is replaced.
#include "registry/alias_chain.h"
#include "registry/name_index.h"
#include "services/errors.h"

#include <tvtypes/datatypetable.h>

#include <utility>

namespace TVTypeSys {

namespace {

/// Calls `visit` with every record of a table, and with those that have been replaced, since they
/// may be restored.
template <class Records, class Replaced, class Visit>
void visitAll(const Records& records, const Replaced& replaced, const Visit& visit) {
    for (const auto& record : records) {
        visit(*record);
    }
    for (const auto& entry : replaced) {
        if (entry.record) {
            visit(*entry.record);
        }
    }
}

} // namespace

bool leadsTo(const DataTypeTable& table, int from, int id) {
    if (from == id || table.alreadyAliasedToDirectlyOrIndirectly(from, id)) {
        return true;
    }
    const auto end = [&table](int start) {
        return table.getDataTypeAt(static_cast<std::size_t>(start) + 1)->getIdAliasedThruTo();
    };
    while (end(from) != from && end(from) != id) {
        from = end(from);
    }
    return end(from) == id;
}

bool refersBehind(const DataType& dataType, std::size_t position) {
    const int firstId = static_cast<int>(position) - 1;
    return dataType.getIdAliasedTo() >= firstId || dataType.getIdAliasedThruTo() >= firstId;
}

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
    if (existingId != INVALID_DATA_TYPE_ID && leadsTo(*this, idAliasedTo, existingId)) {
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
    if (idAliasedTo == id || (mayBeAliased(*plainType) && leadsTo(*this, idAliasedTo, id))) {
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
        const auto retarget = [id, newType](DataType& dataType) {
            if (dataType.getIdAliasedTo() != dataType.getId() && dataType.getIdAliasedTo() == id) {
                dataType.updateAliasedToType(newType);
            }
            // Aliases that ended here now forward to the new alias, which forwards to its own end.
            if (dataType.getIdAliasedThruTo() == id) {
                dataType.updateAliasedThruToType(newType);
            }
        };
        visitAll(dataTypes_, replaced_, retarget);
    }
    destroyReplaced();
}

/// Points the aliases of `oldType`, which is being replaced, to its new record.
void DataTypeTable::retargetAliases(const DataType& oldType, DataType* newType) const {
    if (!mayBeAliased(oldType)) {
        return;
    }
    const auto retarget = [&oldType, newType](DataType& dataType) {
        if (dataType.getIdAliasedTo() == INVALID_DATA_TYPE_ID) {
            return;
        }
        if (dataType.getIdAliasedTo() == oldType.getId()) {
            dataType.updateAliasedToType(newType);
        }
        if (dataType.getIdAliasedThruTo() == oldType.getId()) {
            dataType.updateAliasedThruToType(newType);
        }
    };
    visitAll(dataTypes_, replaced_, retarget);
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
