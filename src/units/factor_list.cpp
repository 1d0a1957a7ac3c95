#include "units/factor_list.h"

#include "units/name_positions.h"

#include <algorithm>
#include <string>

namespace TVTypeSys {

namespace {

/// Truncates each character to its low 16 bits; a surrogate pair to those of its code point.
std::u16string truncateCharacters(std::u16string_view text) {
    const auto isSurrogate = [](char16_t character) { return (character & 0xf800U) == 0xd800U; };
    if (std::none_of(text.begin(), text.end(), isSurrogate)) {
        return std::u16string(text);
    }
    constexpr std::uint32_t surrogateBits = 10;
    std::u16string name;
    name.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const std::uint32_t unit = text[i];
        if ((unit & 0xfc00U) == 0xd800U) {
            // The offset 0x10000 of a surrogate pair does not affect the low 16 bits.
            name.push_back(
                static_cast<char16_t>((unit << surrogateBits | (text[++i] & 0x3ffU)) & 0xffffU));
        } else {
            name.push_back(text[i]);
        }
    }
    return name;
}

} // namespace

void FactorList::raise(std::size_t from, const Exponent& exponent) {
    const auto first = factors_.begin() + static_cast<std::ptrdiff_t>(from);
    if (exponent.removes) {
        truncate(from);
    } else if (exponent.product != 1) {
        std::for_each(first, factors_.end(), [&](Factor& factor) {
            factor.power = wrappingProduct(factor.power, exponent.product);
        });
    }
}

void FactorList::merge(Monomial& result) const {
    Monomial merged;
    // Reserved, since NamePositions requires stable strings.
    merged.names.reserve(factors_.size());
    merged.powers.reserve(factors_.size());
    NamePositions positions(merged.names);
    for (const Factor& factor : factors_) {
        std::u16string name = truncateCharacters(factor.name);
        const std::size_t position = positions.find(name, merged.names.size());
        if (position < merged.names.size()) {
            merged.powers[position] = wrappingSum(merged.powers[position], factor.power);
        } else {
            merged.names.push_back(std::move(name));
            merged.powers.push_back(factor.power);
        }
    }
    result.names = std::move(merged.names);
    result.powers = std::move(merged.powers);
}

} // namespace TVTypeSys
