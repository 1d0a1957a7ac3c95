#include "units/words.h"

#include "text/utf16.h"

#include <tvtypes/units.h>

#include <algorithm>
#include <utility>

namespace tvtool::units {

void forEachUnitWord(const std::function<void(std::string)>& function) {
    const auto pass = [&function](const std::u16string& word) {
        if (!word.empty()) {
            function(text::toUtf8(word));
        }
    };
    for (const auto& reference : TVTypeSys::UnitDatabase::getUnitDatabase()->getAllUnits()) {
        const TVTypeSys::UnitBase& unit = reference.get();
        pass(unit.name);
        pass(unit.symbol);
        std::ranges::for_each(unit.aliases, pass);
    }
}

std::set<std::string> unitWords() {
    std::set<std::string> words;
    forEachUnitWord([&words](std::string word) { words.insert(std::move(word)); });
    return words;
}

} // namespace tvtool::units
