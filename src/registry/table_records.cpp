// Storage of the records in DataTypeTable, and their lookup by id, position and name.
#include "registry/alias_chain.h"
#include "registry/name_index.h"
#include "services/errors.h"

#include <tvtypes/datatypetable.h>
#include <tvtypes/structdatatype.h>

#include <algorithm>
#include <cassert>
#include <string_view>
#include <utility>

namespace TVTypeSys {

DataType* DataTypeTable::record(int id) const {
    // Converted before the addition, so that -1, "auto", wraps around to position 0.
    return recordAt(static_cast<std::size_t>(id) + 1);
}

/// Returns the record at a position, which is checked here alone.
DataType* DataTypeTable::recordAt(std::size_t position) const {
    assert(position < dataTypes_.size());
    return dataTypes_[position].get();
}

int DataTypeTable::getDataTypeId(const char* name) const {
    return nameIndex_->idOf(name == nullptr ? "" : name);
}

int DataTypeTable::getNumDataTypes() const { return static_cast<int>(dataTypes_.size()); }

const DataType* DataTypeTable::getDataTypeAt(std::size_t position) const {
    return recordAt(position);
}

DataType* DataTypeTable::getDataTypeAt(std::size_t position) { return recordAt(position); }

bool DataTypeTable::isDataTypeIdValid(int id) const {
    return id >= AUTO_DATA_TYPE_ID && id < getNumDataTypes() - 1;
}

bool DataTypeTable::isDataTypeIdValid_NotAuto(int id) const {
    return id >= 0 && isDataTypeIdValid(id);
}

void DataTypeTable::checkDataTypeId(int id) const {
    if (!isDataTypeIdValid(id)) {
        throwError(general::InvalidDataTypeId(id));
    }
}

const void* DataTypeTable::getDataTypeProperties(const char* /*ignored*/, int id) const {
    return getDataTypeAliasedThruTo(id)->getProperties();
}

void DataTypeTable::addDataType(DataType* dataType) {
    assert(dataType->getId() == getNumDataTypes() - 1);
    dataTypes_.emplace_back();
    dataTypes_.back().reset(dataType);
    try {
        nameIndex_->addLast();
    } catch (...) {
        // Out of memory: the record remains the caller's, as before the call.
        static_cast<void>(dataTypes_.back().release());
        dataTypes_.pop_back();
        throw;
    }
}

void DataTypeTable::removeDataType(DataType* dataType) {
    const std::size_t position = positionOf(dataType);
    if (position < dataTypes_.size()) {
        removeAt(position);
    }
}

/// Returns the position of a record, or the number of records if it is not in the table. Searches
/// from the end, since callers mostly pass a recent record.
std::size_t DataTypeTable::positionOf(const DataType* dataType) const {
    const auto found =
        std::find_if(dataTypes_.rbegin(), dataTypes_.rend(),
                     [dataType](const auto& held) { return held.get() == dataType; });
    return found == dataTypes_.rend()
               ? dataTypes_.size()
               : static_cast<std::size_t>(std::distance(found, dataTypes_.rend())) - 1;
}

/// Removes a record, closes the gap, and destroys the record.
void DataTypeTable::removeAt(std::size_t position) {
    const bool isLast = position + 1 == dataTypes_.size();
    std::erase_if(replaced_, [&](const ReplacedRecord& entry) {
        return entry.position == position ||
               (isLast && entry.record && refersBehind(*entry.record, position));
    });
    if (isLast) {
        nameIndex_->removeLast();
    }
    const std::unique_ptr<DataType> removed = std::move(dataTypes_[position]);
    dataTypes_.erase(dataTypes_.begin() + static_cast<std::ptrdiff_t>(position));
    if (!isLast) {
        nameIndex_->rebuild();
    }
}

void DataTypeTable::replaceDataType(DataType* oldType, DataType* newType) {
    const std::size_t oldPosition = positionOf(oldType);
    const std::size_t newPosition = positionOf(newType);
    if (oldType != newType && oldPosition < dataTypes_.size() && newPosition < dataTypes_.size()) {
        replaceAt(oldPosition, newPosition, nullptr);
    }
}

/// Moves the record at `newPosition` to `oldPosition`, with the id and storage id of the record
/// there, which is destroyed. Puts `filler` at `newPosition`, or closes the gap if it is null. Only
/// std::bad_alloc is thrown, before any change.
/// \pre `filler` has the name of the record that is moved.
void DataTypeTable::replaceAt(std::size_t oldPosition, std::size_t newPosition,
                              std::unique_ptr<DataType> filler) {
    std::erase_if(replaced_, [newPosition](const ReplacedRecord& entry) {
        return entry.position == newPosition;
    });
    replaced_.push_back({oldPosition, nullptr});
    DataType& oldType = *dataTypes_[oldPosition];
    DataType& newType = *dataTypes_[newPosition];
    retargetAliases(oldType, &newType);
    newType.id_ = oldType.getId();
    newType.storageId_ = oldType.getStorageId();

    const bool isLast = newPosition + 1 == dataTypes_.size();
    const bool isIndexed = (isLast || filler) && nameIndex_->isReplaceable(oldPosition, newType);
    if (isIndexed) {
        nameIndex_->replace(oldPosition, newType);
        if (!filler) {
            nameIndex_->removeLast();
        }
    }
    replaced_.back().record =
        std::exchange(dataTypes_[oldPosition], std::move(dataTypes_[newPosition]));
    if (filler) {
        dataTypes_[newPosition] = std::move(filler);
    } else {
        dataTypes_.erase(dataTypes_.begin() + static_cast<std::ptrdiff_t>(newPosition));
    }
    if (!isIndexed) {
        nameIndex_->rebuild();
    }
    destroyReplaced();
}

/// Destroys the records that have been replaced, unless a callback runs: undoing its registration
/// may restore them.
void DataTypeTable::destroyReplaced() {
    if (runningCallbacks_ == 0) {
        replaced_.clear();
    }
}

} // namespace TVTypeSys
