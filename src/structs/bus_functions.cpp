// Struct types by id.
#include "structs/elements.h"

#include <tvtypes/functions.h>

bool DtGetDataTypeIsBus(const TVTypeSys::DataTypeTable* table, int id) {
    const StructDataType* const type = TVTypeSys::structAt(*table, id);
    return type != nullptr && type->isBusType();
}

const tvChecksumValue& DtGetStructDataTypeChecksum(const TVTypeSys::DataTypeTable* table, int id) {
    return TVTypeSys::structOf(*table, id).getDtChecksumValue();
}

void DtSetStructDataTypeChecksum(TVTypeSys::DataTypeTable* table, int id,
                                 const tvChecksumValue& value) {
    TVTypeSys::structOf(*table, id).setDtChecksumValue(value);
}
