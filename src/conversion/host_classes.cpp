// Class ids of the host, and allocation of host memory for values of a type.
#include "services/errors.h"
#include "services/host.h"

#include <tvtypes/conversion/host_values.h>
#include <tvtypes/datatypetable.h>

#include <cstdint>
#include <iterator>
#include <limits>

namespace {

/// The numbers of classes, which all hosts share. The names of their enumerators differ.
enum HostClass {
    NoClass = 0,
    BooleanClass = 3,
    DoubleClass = 6,
    SingleClass = 7,
    Int8Class = 8,
    UInt8Class = 9,
    Int16Class = 10,
    UInt16Class = 11,
    Int32Class = 12,
    UInt32Class = 13
};

// By type id: the built-in types, then "fcn_call" and "integer".
constexpr HostClass classOfType[] = {DoubleClass,  SingleClass, Int8Class,  UInt8Class,
                                     Int16Class,   UInt16Class, Int32Class, UInt32Class,
                                     BooleanClass, NoClass,     Int32Class};

constexpr int booleanId = 8;

} // namespace

oxClassID utGetoxClassIdFromDTypeId(int dataTypeId, bool booleanAsUint8) {
    if (dataTypeId == booleanId && booleanAsUint8) {
        return oxClassID(UInt8Class);
    }
    return oxClassID(dataTypeId >= 0 && dataTypeId < static_cast<int>(std::size(classOfType))
                         ? classOfType[dataTypeId]
                         : NoClass);
}

int utGetDTypeIdFromOxClassId(oxClassID classId) {
    for (int id = 0; id <= booleanId; ++id) {
        if (oxClassID(classOfType[id]) == classId) {
            return id;
        }
    }
    return INVALID_DATA_TYPE_ID;
}

void* oxDTypeCalloc(const TVTypeSys::DataTypeTable* table, int count, int dataTypeId,
                    bool isComplex) {
    if (count < 1) {
        return nullptr;
    }
    const int size = table->getDataTypeAt(static_cast<std::size_t>(dataTypeId) + 1)->getSize();
    if (size < 1) {
        return nullptr;
    }
    // The host counts parts in 32 bits; a greater number must fail instead of wrapping around.
    const std::int64_t parts = (isComplex ? 2 : 1) * std::int64_t{count};
    void* memory = nullptr;
    if (parts <= std::numeric_limits<std::int32_t>::max()) {
        memory = TVTypeSys::allocateHostZeroed(static_cast<std::size_t>(parts),
                                               static_cast<std::size_t>(size));
    }
    if (memory == nullptr) {
        TVTypeSys::throwOutOfMemory();
    }
    return memory;
}
