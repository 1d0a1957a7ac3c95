#include "units/words.h"

#include "text/utf16.h"

#include <tvtypes/units.h>

namespace tvtool::units {

std::set<std::string> unitWords() {
    std::set<std::string> words;
    for (const auto& reference : TVTypeSys::UnitDatabase::getUnitDatabase()->getAllUnits()) {
        const TVTypeSys::UnitBase& unit = reference.get();
        words.insert(text::toUtf8(unit.name));
        words.insert(text::toUtf8(unit.symbol));
        for (const std::u16string& alias : unit.aliases) {
            words.insert(text::toUtf8(alias));
        }
    }
    words.erase("");
    return words;
}

} // namespace tvtool::units
