// Class ids of the host, and allocation of host memory for values of a type.
#include "services/errors.h"
#include "services/host.h"

#include <tvtypes/conversion/host_values.h>
#include <tvtypes/datatypetable.h>

#include <cstdint>
#include <iterator>
#include <limits>

namespace {

// By type id: the built-in types, then "fcn_call" and "integer".
constexpr oxClassID classOfType[] = {oxDoubleClass,  oxSingleClass, oxInt8Class,  oxUint8Class,
                                     oxInt16Class,   oxUint16Class, oxInt32Class, oxUint32Class,
                                     oxBooleanClass, oxNoClass,     oxInt32Class};

constexpr int booleanId = 8;

} // namespace

oxClassID utGetoxClassIdFromDTypeId(int dataTypeId, bool booleanAsUint8) {
    if (dataTypeId == booleanId && booleanAsUint8) {
        return oxUint8Class;
    }
    return dataTypeId >= 0 && dataTypeId < static_cast<int>(std::size(classOfType))
               ? classOfType[dataTypeId]
               : oxNoClass;
}

int utGetDTypeIdFromOxClassId(oxClassID classId) {
    for (int id = 0; id <= booleanId; ++id) {
        if (classOfType[id] == classId) {
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
