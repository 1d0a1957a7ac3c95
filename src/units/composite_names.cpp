#include "units/composite_names.h"

#include "services/text.h"
#include "units/resolved_names.h"

#include <boost/container/small_vector.hpp>

#include <algorithm>
#include <string_view>

namespace TVTypeSys {

namespace {

/// A run of characters between operators, or an operator.
struct Token {
    std::u16string_view text;
    const UnitBase* unit; ///< the only unit that the text denotes, or null
};

bool isDelimiter(char16_t character) {
    switch (character) {
    case u'(':
    case u')':
    case u'*':
    case u'/':
    case u'^':
        return true;
    default:
        return false;
    }
}

std::u16string_view symbolOrName(const UnitBase& unit) {
    return unit.symbol.empty() ? unit.name : unit.symbol;
}

} // namespace

CompositeNames compositeNames(ResolvedNames& names, const std::u16string& expression) {
    boost::container::small_vector<Token, 16> tokens;
    std::size_t nameSize = 0;
    std::size_t symbolSize = 0;
    std::u16string_view rest = expression;
    while (!rest.empty()) {
        const auto end = std::find_if(rest.begin(), rest.end(), isDelimiter);
        const auto length = static_cast<std::size_t>(end - rest.begin());
        Token token{rest.substr(0, std::max<std::size_t>(length, 1)), nullptr};
        rest.remove_prefix(token.text.size());
        if (length != 0) {
            const UnitMatch match = names.match(token.text);
            token.unit = match.count == 1 ? match.first : nullptr;
        }
        nameSize += token.unit == nullptr ? token.text.size() : token.unit->name.size();
        symbolSize += token.unit == nullptr ? token.text.size() : symbolOrName(*token.unit).size();
        tokens.push_back(token);
    }
    CompositeNames result;
    result.name.reserve(nameSize);
    result.symbol.reserve(symbolSize);
    result.display.reserve(symbolSize);
    for (const auto& [text, unit] : tokens) {
        if (isDelimiter(text.front())) {
            result.name += text.front();
            result.symbol += text.front();
            result.display += static_cast<char>(text.front());
            continue;
        }
        result.name += unit == nullptr ? text : unit->name;
        const std::u16string_view symbol = unit == nullptr ? text : symbolOrName(*unit);
        result.symbol += symbol;
        if (unit == nullptr || unit->display.empty()) {
            appendNarrow(result.display, symbol);
        } else {
            result.display += unit->display;
        }
    }
    return result;
}

} // namespace TVTypeSys
