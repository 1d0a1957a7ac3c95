#include "structs/element_properties.h"

#include <tvtypes/structs/struct_element_access.h>

namespace TVTypeSys {

StructElementAccess::~StructElementAccess() = default;

int StructElementAccess::getComplexWidth(int index) {
    const int realWidth = getWidth(index);
    return getSignalType(index) == 1 ? truncateToInt(2LL * realWidth) : realWidth;
}

} // namespace TVTypeSys
