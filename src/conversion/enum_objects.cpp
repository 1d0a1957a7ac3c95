// Construction of enumeration objects: the class is a host function that is called with integers.
#include "services/errors.h"
#include "services/host.h"
#include "services/memory.h"

#include <tvtypes/conversion/host_values.h>

tvsvDiagnosticImpl* tvGetEnumObjectFromIntValue(const oxArray_tag* value, oxArray_tag** object,
                                                const char* enumClassName) {
    return TVTypeSys::callHostFunction(enumClassName, value, object);
}

void TVTypeConv::tvConvertMatrixToEnumObjects(oxArray_tag*& array, const char* enumClassName) {
    oxArray_tag* object = nullptr;
    if (auto* refusal = TVTypeSys::callHostFunction(enumClassName, array, &object)) {
        TVTypeSys::throwError(refusal);
    }
    TVTypeSys::releaseValue(array);
    array = object;
}
