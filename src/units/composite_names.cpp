#include "units/composite_names.h"

#include "services/text.h"
#include "units/resolved_names.h"

#include <algorithm>
#include <string_view>

namespace TVTypeSys {

namespace {

const std::u16string& symbolOrName(const UnitBase& unit) {
    return unit.symbol.empty() ? unit.name : unit.symbol;
}

void appendToken(ResolvedNames& names, std::u16string_view token, CompositeNames& result) {
    const UnitMatch match = names.match(token);
    if (match.count != 1) {
        result.name += token;
        result.symbol += token;
        result.display += narrow(std::u16string(token));
        return;
    }
    const UnitBase& unit = *match.first;
    result.name += unit.name;
    result.symbol += symbolOrName(unit);
    result.display += unit.display.empty() ? narrow(symbolOrName(unit)) : unit.display;
}

} // namespace

CompositeNames compositeNames(ResolvedNames& names, const std::u16string& expression) {
    constexpr std::u16string_view delimiters = u"()*/^";
    CompositeNames result;
    std::u16string_view rest = expression;
    while (!rest.empty()) {
        const std::size_t length = std::min(rest.find_first_of(delimiters), rest.size());
        if (length != 0) {
            appendToken(names, rest.substr(0, length), result);
            rest.remove_prefix(length);
        } else {
            result.name += rest.front();
            result.symbol += rest.front();
            result.display += static_cast<char>(rest.front());
            rest.remove_prefix(1);
        }
    }
    return result;
}

} // namespace TVTypeSys
