// The setters of a data type's definition: each takes its first value, and after that no other.
#include "registry/builtin_templates.h"
#include "services/memory.h"
#include "services/refuse.h"

#include <tvtypes/datatype.h>

#include <algorithm>
#include <cstring>

namespace TVTypeSys {

namespace {

std::size_t sizeOf(int bytes) { return static_cast<std::size_t>(bytes); }

/// Copies a value given by a client, where null stands for zeros.
void copyValue(void* destination, const void* value, int size) {
    if (value != nullptr && size > 0) {
        std::memcpy(destination, value, sizeOf(size));
    } else if (size > 0) {
        std::memset(destination, 0, sizeOf(size));
    }
}

/// Whether a value given by a client is the one that is held.
bool isSameValue(const void* value, const void* held, int size) {
    if (value != nullptr && size > 0) {
        return std::memcmp(value, held, sizeOf(size)) == 0;
    }
    const auto* bytes = static_cast<const unsigned char*>(held);
    return std::all_of(bytes, bytes + std::max(size, 0), [](unsigned char b) { return b == 0; });
}

} // namespace

void DataType::setSize(int newSize) {
    const int oldSize = getSize();
    if (oldSize != -1 && oldSize != newSize && getId() != BOOLEAN_ID) {
        refuse(general::CannotModifyDataTypeSize(textOf(getName()), oldSize));
    }
    if (newSize < 0) {
        refuse(general::InvalidDataTypeSize(textOf(getName()), newSize));
    }
    size_ = newSize;
    if (oldSize != newSize && !allocateGround()) {
        refuse(general::MemoryAllocErr());
    }
    setDefaultGround(true);
    setIsAliasToLocked(true);
}

/// Gives the type a zeroed ground value of its size, twice over. False if memory ran out.
bool DataType::allocateGround() {
    ground_.reset();
    ground_.reset(allocateZeroed(2 * sizeOf(size_)));
    return ground_ != nullptr || size_ < 1;
}

void DataType::setGround(const void* value) {
    if (getIdAliasedTo() != INVALID_DATA_TYPE_ID) {
        refuse(general::CannotSetDataTypeGroundOfAlias(textOf(getName())));
    }
    const int size = getSize();
    if (size == -1) {
        refuse(general::CannotSetGroundRepBeforeSettingSize(textOf(getName())));
    }
    if (size > 0 && ground_ == nullptr) {
        // The size was set when there was no memory for the ground value.
        refuse(general::MemoryAllocErr());
    }
    if (getDefaultGround()) {
        auto* bytes = static_cast<unsigned char*>(ground_.get());
        copyValue(bytes, value, size);
        copyValue(bytes + size, value, size);
        setDefaultGround(false);
        setAliasedToLocked(true);
    } else if (!isSameValue(value, ground_.get(), size)) {
        refuse(general::CannotModifyDataTypeGroundRepresentation(textOf(getName())));
    }
}

void DataType::setPropertiesSize(int newSize) {
    if (getIdAliasedTo() != INVALID_DATA_TYPE_ID) {
        refuse(general::CannotSetDataTypePropertiesSizeOfAlias(textOf(getName())));
    }
    const int oldSize = getPropertiesSize();
    if (oldSize != 0 && oldSize != newSize) {
        refuse(general::CannotModifyDataTypePropertiesSize(textOf(getName()), oldSize, newSize));
    }
    if (newSize < 0) {
        refuse(general::InvalidDataTypePropertiesSize(textOf(getName()), newSize));
    }
    if (oldSize == 0) {
        propertiesSize_ = newSize;
        properties_.reset();
        setAliasedToLocked(true);
    }
}

void DataType::setProperties(const void* value) {
    if (getIdAliasedTo() != INVALID_DATA_TYPE_ID) {
        refuse(general::CannotSetDataTypePropertiesOfAlias(textOf(getName())));
    }
    const int size = getPropertiesSize();
    if (value != nullptr && size == 0) {
        refuse(general::CannotSetPropertiesBeforeSettingSize(textOf(getName())));
    }
    if (const void* held = getProperties()) {
        if (!isSameValue(value, held, size)) {
            refuse(general::CannotModifyDataTypeProperties(textOf(getName())));
        }
        return;
    }
    properties_.reset(allocate(sizeOf(size)));
    if (properties_ == nullptr && size != 0) {
        refuse(general::MemoryAllocErr());
    }
    copyValue(properties_.get(), value, size);
    setAliasedToLocked(true);
}

/// Stores a function of the type if there is none. `current` is the one there is, as the record
/// answers it.
template <class Refusal, class Conflict, class Function>
void DataType::setOnce(Function& field, Function current, Function function) {
    if (getIdAliasedTo() != INVALID_DATA_TYPE_ID) {
        refuse(Refusal(textOf(getName())));
    }
    if (current == nullptr) {
        field = function;
        setAliasedToLocked(true);
    } else if (current != function) {
        refuse(Conflict(textOf(getName())));
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
        refuse(general::InConsistentTargetToHostFcn());
    }
    hostToTargetFcn_ = function;
}

void DataType::setTargetToHostFcn(TargetToHostFcn function) {
    if (targetToHostFcn_ != nullptr && targetToHostFcn_ != function) {
        refuse(general::InConsistentTargetToHostFcn());
    }
    targetToHostFcn_ = function;
}

} // namespace TVTypeSys
