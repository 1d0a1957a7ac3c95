// Integers of the host become objects of an enumeration: its class is called with them.
#include "services/host.h"
#include "services/memory.h"
#include "services/refuse.h"

#include <tvtypes/functions.h>

tvsvDiagnosticImpl* tvGetEnumObjectFromIntValue(const oxArray_tag* value, oxArray_tag** object,
                                                const char* enumClassName) {
    return TVTypeSys::callHostFunction(enumClassName, value, object);
}

void TVTypeConv::tvConvertMatrixToEnumObjects(oxArray_tag*& array, const char* enumClassName) {
    oxArray_tag* object = nullptr;
    if (auto* refusal = TVTypeSys::callHostFunction(enumClassName, array, &object)) {
        TVTypeSys::refuse(refusal);
    }
    TVTypeSys::releaseValue(array);
    array = object;
}
