#include "units/factor_list.h"

#include "units/name_positions.h"

#include <algorithm>
#include <string>

namespace TVTypeSys {

namespace {

/// The name with the low 16 bits of each character: for a pair of surrogates, of what it encodes.
std::u16string lowBits(std::u16string_view text) {
    constexpr std::uint32_t surrogateBits = 10;
    std::u16string name;
    name.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const std::uint32_t unit = text[i];
        if ((unit & 0xfc00U) == 0xd800U) {
            // What a pair of surrogates adds to its bits does not reach into the low 16.
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
    // Room for all ahead of the search, which needs the names to stay where they are.
    merged.names.reserve(factors_.size());
    merged.powers.reserve(factors_.size());
    NamePositions positions(merged.names);
    for (const Factor& factor : factors_) {
        std::u16string name = lowBits(factor.name);
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
