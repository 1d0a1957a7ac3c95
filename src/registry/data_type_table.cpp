// DataTypeTable: construction, reset, and the default settings of the model.
#include "registry/builtin_types.h"
#include "registry/name_index.h"
#include "services/errors.h"
#include "services/memory.h"

#include <tvtypes/datatypetable.h>

#include <algorithm>
#include <utility>

namespace TVTypeSys {

namespace {

// Number of types for which a new table has room: 7 KiB, and no growth while a small model is
// registered. A power of two, from which the vector of records grows as from one record.
constexpr std::size_t initialCapacity = 128;

} // namespace

ClientDataTypeCheckCallback::~ClientDataTypeCheckCallback() = default;

void DataTypeTable::ReleaseMemory::operator()(void* memory) const noexcept {
    releaseMemory(memory);
}

DataTypeTable::DataTypeTable()
    : nameIndex_(std::make_unique<NameIndex>(dataTypes_, initialCapacity)),
      dataTypeAccess_(
          static_cast<_tvDataTypeAccess_tag*>(allocateZeroed(sizeof(_tvDataTypeAccess_tag)))) {
    if (dataTypeAccess_ == nullptr) {
        throwError(general::MemoryAllocErr());
    }
    dataTypeAccess_->table = this;
    dataTypes_.reserve(initialCapacity);
    initialize();
}

DataTypeTable::~DataTypeTable() {
    for (std::unique_ptr<DataType>& dataType : dataTypes_) {
        dataType.reset();
    }
}

void DataTypeTable::initialize() {
    initializeBuiltInDataTypes();
    // Qualified calls: the derived part of the table is not constructed yet.
    for (int id = AUTO_DATA_TYPE_ID; id < initialCount - 1; ++id) {
        DataTypeTable::registerDataType(
            builtInTypeRow(id).name,
            isPredefinedDataType(id) ? DataTypeSourcePredefined : DataTypeSourceBuiltIn, nullptr);
    }
    const double doubleZero = 0.0;
    const float singleZero = 0.0F;
    record(DoubleId)->setGround(&doubleZero);
    record(SingleId)->setGround(&singleZero);
}

void DataTypeTable::resetToBuiltin() {
    const std::size_t kept = std::min<std::size_t>(dataTypes_.size(), initialCount);
    std::vector<std::unique_ptr<DataType>> dropped(dataTypes_.size() - kept);
    for (std::size_t position = 0; position < kept; ++position) {
        DataType& dataType = *dataTypes_[position];
        dataType.cgType_ = nullptr;
        dataType.hostToTargetFcn_ = nullptr;
        dataType.targetToHostFcn_ = nullptr;
    }
    anonymousTypeCount_ = 0;
    std::move(dataTypes_.begin() + static_cast<std::ptrdiff_t>(kept), dataTypes_.end(),
              dropped.begin());
    dataTypes_.resize(kept);
    nameIndex_->rebuild();
    replaced_.clear();
    for (std::unique_ptr<DataType>& dataType : dropped) {
        dataType.reset();
    }
    // A copy: the callback may remove itself from the table while it runs.
    if (const boost::shared_ptr<ClientDataTypeCheckCallback> callback = clientCheckCallback_) {
        callback->onResetToBuiltin();
    }
}

void DataTypeTable::setClientDataTypeCheckCallback(
    const boost::shared_ptr<ClientDataTypeCheckCallback>& callback) {
    clientCheckCallback_ = callback;
}

void DataTypeTable::setAtomicWordLengths(const std::vector<int>& wordLengths) {
    atomicWordLengths_ = wordLengths;
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
