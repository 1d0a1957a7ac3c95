// Access to struct types by id.
#include "structs/element_properties.h"

#include <tvtypes/structs/bus_functions.h>

bool DtGetDataTypeIsBus(const TVTypeSys::DataTypeTable* table, int id) {
    const StructDataType* const type =
        id == AUTO_DATA_TYPE_ID ? nullptr : TVTypeSys::resolveStruct(*table, id);
    return type != nullptr && type->isBusType();
}

const tvChecksumValue& DtGetStructDataTypeChecksum(const TVTypeSys::DataTypeTable* table, int id) {
    return TVTypeSys::requireStruct(*table, id).getDtChecksumValue();
}

void DtSetStructDataTypeChecksum(TVTypeSys::DataTypeTable* table, int id,
                                 const tvChecksumValue& value) {
    TVTypeSys::requireStruct(*table, id).setDtChecksumValue(value);
}
