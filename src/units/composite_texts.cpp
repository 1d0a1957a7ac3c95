#include "units/composite_texts.h"

#include "services/text.h"
#include "units/unit_lookup.h"

#include <algorithm>
#include <string_view>

namespace TVTypeSys {

namespace {

const std::u16string& symbolOrName(const UnitBase& unit) {
    return unit.symbol.empty() ? unit.name : unit.symbol;
}

void appendToken(const UnitDatabase& database, std::u16string_view token, CompositeTexts& texts) {
    const UnitMatch match = UnitLookup::concrete(database, token);
    if (match.count != 1) {
        texts.name += token;
        texts.symbol += token;
        texts.display += narrow(std::u16string(token));
        return;
    }
    const UnitBase& unit = *match.first;
    texts.name += unit.name;
    texts.symbol += symbolOrName(unit);
    texts.display += unit.display.empty() ? narrow(symbolOrName(unit)) : unit.display;
}

} // namespace

CompositeTexts compositeTexts(const UnitDatabase& database, const std::u16string& expression) {
    constexpr std::u16string_view delimiters = u"()*/^";
    CompositeTexts texts;
    std::u16string_view rest = expression;
    while (!rest.empty()) {
        const std::size_t length = std::min(rest.find_first_of(delimiters), rest.size());
        if (length != 0) {
            appendToken(database, rest.substr(0, length), texts);
            rest.remove_prefix(length);
        } else {
            texts.name += rest.front();
            texts.symbol += rest.front();
            texts.display += static_cast<char>(rest.front());
            rest.remove_prefix(1);
        }
    }
    return texts;
}

} // namespace TVTypeSys
