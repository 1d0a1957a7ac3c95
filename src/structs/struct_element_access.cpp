#include "structs/elements.h"

#include <tvtypes/elementaccess.h>

namespace TVTypeSys {

StructElementAccess::~StructElementAccess() = default;

int StructElementAccess::getComplexWidth(int index) {
    const int width = getWidth(index);
    return getSignalType(index) == 1 ? wrapped(2LL * width) : width;
}

} // namespace TVTypeSys
