#include "services/names.h"

#include <tv_utility/identifier.h>

namespace TVTypeSys {

bool isIdentifier(const char* text) {
    return text != nullptr && tvIsValidANSICIdentifier(text, true);
}

} // namespace TVTypeSys
