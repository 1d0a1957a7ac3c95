// The write-once setters of a data type's definition: after the first value they accept only the
// same one.
#include "registry/builtin_types.h"
#include "services/errors.h"
#include "services/memory.h"

#include <tvtypes/registry/data_type.h>

#include <algorithm>
#include <cstring>

namespace TVTypeSys {

namespace {

std::size_t byteCount(int size) { return static_cast<std::size_t>(size); }

/// Copies a value of a client; null means zeros.
void copyValue(void* destination, const void* value, int size) {
    if (value != nullptr && size > 0) {
        std::memcpy(destination, value, byteCount(size));
    } else if (size > 0) {
        std::memset(destination, 0, byteCount(size));
    }
}

/// Returns whether a value of a client equals the current one; null means zeros.
bool isSameValue(const void* value, const void* current, int size) {
    if (value != nullptr && size > 0) {
        return std::memcmp(value, current, byteCount(size)) == 0;
    }
    const auto* bytes = static_cast<const unsigned char*>(current);
    return std::all_of(bytes, bytes + std::max(size, 0), [](unsigned char b) { return b == 0; });
}

} // namespace

void DataType::setSize(int newSize) {
    const int oldSize = getSize();
    if (oldSize != -1 && oldSize != newSize && getId() != BooleanId) {
        throwError(general::CannotModifyDataTypeSize(orEmpty(getName()), oldSize));
    }
    if (newSize < 0) {
        throwError(general::InvalidDataTypeSize(orEmpty(getName()), newSize));
    }
    size_ = newSize;
    // Also after a call that failed to allocate the ground value.
    const bool isMissing = ground_ == nullptr && newSize > 0;
    if ((oldSize != newSize || isMissing) && !allocateGround()) {
        throwError(general::MemoryAllocErr());
    }
    setDefaultGround(true);
    setIsAliasToLocked(true);
}

/// Allocates a zeroed ground value: the value twice. Returns false if memory runs out.
bool DataType::allocateGround() {
    ground_.reset();
    ground_.reset(allocateZeroed(2 * byteCount(size_)));
    return ground_ != nullptr || size_ < 1;
}

void DataType::setGround(const void* value) {
    if (getIdAliasedTo() != INVALID_DATA_TYPE_ID) {
        throwError(general::CannotSetDataTypeGroundOfAlias(orEmpty(getName())));
    }
    const int size = getSize();
    if (size == -1) {
        throwError(general::CannotSetGroundRepBeforeSettingSize(orEmpty(getName())));
    }
    if (size > 0 && ground_ == nullptr) {
        // setSize failed to allocate the ground value.
        throwError(general::MemoryAllocErr());
    }
    if (getDefaultGround()) {
        auto* bytes = static_cast<unsigned char*>(ground_.get());
        copyValue(bytes, value, size);
        copyValue(bytes + size, value, size);
        setDefaultGround(false);
        setAliasedToLocked(true);
    } else if (!isSameValue(value, ground_.get(), size)) {
        throwError(general::CannotModifyDataTypeGroundRepresentation(orEmpty(getName())));
    }
}

void DataType::setPropertiesSize(int newSize) {
    if (getIdAliasedTo() != INVALID_DATA_TYPE_ID) {
        throwError(general::CannotSetDataTypePropertiesSizeOfAlias(orEmpty(getName())));
    }
    const int oldSize = getPropertiesSize();
    if (oldSize != 0 && oldSize != newSize) {
        throwError(
            general::CannotModifyDataTypePropertiesSize(orEmpty(getName()), oldSize, newSize));
    }
    if (newSize < 0) {
        throwError(general::InvalidDataTypePropertiesSize(orEmpty(getName()), newSize));
    }
    if (oldSize == 0) {
        propertiesSize_ = newSize;
        properties_.reset();
        setAliasedToLocked(true);
    }
}

void DataType::setProperties(const void* value) {
    if (getIdAliasedTo() != INVALID_DATA_TYPE_ID) {
        throwError(general::CannotSetDataTypePropertiesOfAlias(orEmpty(getName())));
    }
    const int size = getPropertiesSize();
    if (value != nullptr && size == 0) {
        throwError(general::CannotSetPropertiesBeforeSettingSize(orEmpty(getName())));
    }
    if (const void* current = getProperties()) {
        if (!isSameValue(value, current, size)) {
            throwError(general::CannotModifyDataTypeProperties(orEmpty(getName())));
        }
        return;
    }
    properties_.reset(allocate(byteCount(size)));
    if (properties_ == nullptr && size != 0) {
        throwError(general::MemoryAllocErr());
    }
    copyValue(properties_.get(), value, size);
    setAliasedToLocked(true);
}

/// Stores a function of the type in `field` if `current`, the function that is set, is null.
template <class AliasError, class ConflictError, class Function>
void DataType::setOnce(Function& field, Function current, Function function) {
    if (getIdAliasedTo() != INVALID_DATA_TYPE_ID) {
        throwError(AliasError(orEmpty(getName())));
    }
    if (current == nullptr) {
        field = function;
        setAliasedToLocked(true);
    } else if (current != function) {
        throwError(ConflictError(orEmpty(getName())));
    }
}

void DataType::setConvertBetweenFcn(ConvertBetweenFcn function) {
    setOnce<general::CannotSetDataTypeConvertBetweenOfAlias,
            general::InconsistentDataTypeConvertBetweenFcn>(functions_.convertBetween,
                                                            getConvertBetweenFcn(), function);
}

void DataType::setGreaterThanFcn(GreaterThanFcn function) {
    setOnce<general::CannotSetDataTypeGreaterThanOfAlias,
            general::InconsistentDataTypeGreaterThanFcn>(functions_.greaterThan,
                                                         functions_.greaterThan, function);
}

void DataType::setGreaterEqualFcn(GreaterEqualFcn function) {
    setOnce<general::CannotSetDataTypeGreaterEqualOfAlias,
            general::InconsistentDataTypeGreaterEqualFcn>(functions_.greaterEqual,
                                                          functions_.greaterEqual, function);
}

void DataType::setIsNegativeFcn(IsNegativeFcn function) {
    setOnce<general::CannotSetDataTypeIsNegativeOfAlias,
            general::InconsistentDataTypeIsNegativeFcn>(functions_.isNegative,
                                                        functions_.isNegative, function);
}

void DataType::setIsPositiveFcn(IsPositiveFcn function) {
    setOnce<general::CannotSetDataTypeIsPositiveOfAlias,
            general::InconsistentDataTypeIsPositiveFcn>(functions_.isPositive,
                                                        functions_.isPositive, function);
}

ConvertBetweenFcn DataType::getConvertBetweenFcn() const { return functions_.convertBetween; }

IsPositiveFcn DataType::getIsPositiveFcn() const { return functions_.isPositive; }

IsNegativeFcn DataType::getIsNegativeFcn() const { return functions_.isNegative; }

GreaterThanFcn DataType::getGreaterThanFcn() const { return functions_.greaterThan; }

GreaterEqualFcn DataType::getGreaterEqualFcn() const { return functions_.greaterEqual; }

HostToTargetFcn DataType::getHostToTargetFcn() const { return hostToTargetFcn_; }

TargetToHostFcn DataType::getTargetToHostFcn() const { return targetToHostFcn_; }

void DataType::setHostToTargetFcn(HostToTargetFcn function) {
    if (hostToTargetFcn_ != nullptr && hostToTargetFcn_ != function) {
        throwError(general::InConsistentTargetToHostFcn());
    }
    hostToTargetFcn_ = function;
}

void DataType::setTargetToHostFcn(TargetToHostFcn function) {
    if (targetToHostFcn_ != nullptr && targetToHostFcn_ != function) {
        throwError(general::InConsistentTargetToHostFcn());
    }
    targetToHostFcn_ = function;
}

} // namespace TVTypeSys
