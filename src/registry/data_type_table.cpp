// The table: its life, its records, and the settings that a derived table answers.
#include "registry/builtin_templates.h"
#include "registry/name_index.h"
#include "services/memory.h"
#include "services/refuse.h"

#include <tvtypes/datatypetable.h>
#include <tvtypes/structdatatype.h>

#include <algorithm>
#include <typeinfo>
#include <utility>

namespace TVTypeSys {

ClientDataTypeCheckCallback::~ClientDataTypeCheckCallback() = default;

void DataTypeTable::ReleaseMemory::operator()(void* memory) const noexcept {
    releaseMemory(memory);
}

DataTypeTable::DataTypeTable()
    : nameIndex_(std::make_unique<NameIndex>(dataTypes_)),
      dataTypeAccess_(
          static_cast<_tvDataTypeAccess_tag*>(allocateZeroed(sizeof(_tvDataTypeAccess_tag)))) {
    if (dataTypeAccess_ == nullptr) {
        refuse(general::MemoryAllocErr());
    }
    dataTypeAccess_->table = this;
    initialize();
}

DataTypeTable::~DataTypeTable() {
    for (std::unique_ptr<DataType>& dataType : dataTypes_) {
        dataType.reset();
    }
}

void DataTypeTable::initialize() {
    initializeBuiltInDataTypes();
    // No derived table is there yet to answer.
    DataTypeTable::registerDataType("auto", DataTypeSourceBuiltIn, nullptr);
    for (const BuiltInRow& row : builtInRows) {
        DataTypeTable::registerDataType(row.name, DataTypeSourceBuiltIn, nullptr);
    }
    for (const PredefinedRow& row : predefinedRows) {
        DataTypeTable::registerDataType(row.name, DataTypeSourcePredefined, nullptr);
    }
    const double doubleZero = 0.0;
    const float singleZero = 0.0F;
    record(DOUBLE_ID)->setGround(&doubleZero);
    record(SINGLE_ID)->setGround(&singleZero);
}

void DataTypeTable::resetToBuiltin() {
    const std::size_t kept = std::min<std::size_t>(dataTypes_.size(), initialCount);
    for (std::size_t position = 0; position < kept; ++position) {
        DataType& dataType = *dataTypes_[position];
        dataType.cgType_ = nullptr;
        dataType.hostToTargetFcn_ = nullptr;
        dataType.targetToHostFcn_ = nullptr;
    }
    anonymousTypeCount_ = 0;
    std::vector<std::unique_ptr<DataType>> dropped(
        std::make_move_iterator(dataTypes_.begin() + static_cast<std::ptrdiff_t>(kept)),
        std::make_move_iterator(dataTypes_.end()));
    dataTypes_.resize(kept);
    nameIndex_->rebuild();
    for (std::unique_ptr<DataType>& dataType : dropped) {
        dataType.reset();
    }
    if (clientCheckCallback_) {
        clientCheckCallback_->onResetToBuiltin();
    }
}

void DataTypeTable::setClientDataTypeCheckCallback(
    const boost::shared_ptr<ClientDataTypeCheckCallback>& callback) {
    clientCheckCallback_ = callback;
}

void DataTypeTable::setAtomicWordLengths(const std::vector<int>& wordLengths) {
    atomicWordLengths_ = wordLengths;
}

void DataTypeTable::append(std::unique_ptr<DataType> newRecord) {
    dataTypes_.push_back(std::move(newRecord));
    try {
        nameIndex_->addLast();
    } catch (...) {
        dataTypes_.pop_back(); // out of memory: a record that no lookup finds must not stay
        throw;
    }
}

void DataTypeTable::addDataType(DataType* dataType) {
    std::unique_ptr<DataType> owned(dataType);
    const std::type_info& type = typeid(*dataType);
    hasClientRecords_ =
        hasClientRecords_ || (type != typeid(DataType) && type != typeid(BuiltInDataType) &&
                              type != typeid(AutoDataType) && type != typeid(AliasDataType) &&
                              type != typeid(StructDataType));
    append(std::move(owned));
}

void DataTypeTable::removeDataType(DataType* dataType) {
    const std::size_t position = positionOf(dataType);
    if (position < dataTypes_.size()) {
        removeAt(position);
    }
}

/// The position of a record, searched from the end, where the newest stand; the number of records
/// if it is not in the table.
std::size_t DataTypeTable::positionOf(const DataType* dataType) const {
    const auto found =
        std::find_if(dataTypes_.rbegin(), dataTypes_.rend(),
                     [dataType](const auto& held) { return held.get() == dataType; });
    return found == dataTypes_.rend()
               ? dataTypes_.size()
               : static_cast<std::size_t>(std::distance(found, dataTypes_.rend())) - 1;
}

/// Takes a record out, closes the gap, and destroys the record.
void DataTypeTable::removeAt(std::size_t position) {
    const bool isLast = position + 1 == dataTypes_.size();
    if (isLast) {
        nameIndex_->leave(position);
    }
    const std::unique_ptr<DataType> removed = std::move(dataTypes_[position]);
    dataTypes_.erase(dataTypes_.begin() + static_cast<std::ptrdiff_t>(position));
    if (!isLast) {
        nameIndex_->rebuild();
    }
}

/// Whether a record may have aliases that must be told when it is replaced.
bool DataTypeTable::mayBeAliased(const DataType& dataType) const {
    return hasClientRecords_ || dataType.isAliasTarget_;
}

int DataTypeTable::getParameterUnderflowDiagnostic() const { return 1; }
int DataTypeTable::getParameterOverflowDiagnostic() const { return 1; }
int DataTypeTable::getParameterPrecisionLossDiagnostic() const { return 1; }
int DataTypeTable::getFixptConstUnderflowDiagnostic() const { return 0; }
int DataTypeTable::getFixptConstOverflowDiagnostic() const { return 0; }
int DataTypeTable::getFixptConstPrecisionLossDiagnostic() const { return 0; }
int DataTypeTable::getDataOverflowDiagnostic() const { return 1; }
int DataTypeTable::getDataSaturationDiagnostic() const { return 1; }
bool DataTypeTable::getUseIntDivNetSlopeOpt() const { return false; }

const char* DataTypeTable::getEnumTypeStringFromValue(int /*id*/, int /*value*/) const {
    return nullptr;
}

} // namespace TVTypeSys
