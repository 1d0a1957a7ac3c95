#include "units/name_positions.h"
#include "units/wrapping_arithmetic.h"

#include <tvtypes/units/expression.h>

#include <algorithm>

using TVTypeSys::NamePositions;
using TVTypeSys::wrappingProduct;
using TVTypeSys::wrappingSum;

Monomial::Monomial(const std::vector<wchar_t>& name) : powers{1} {
    std::u16string& text = names.emplace_back();
    std::transform(name.begin(), name.end(), std::back_inserter(text), [](wchar_t character) {
        return static_cast<char16_t>(static_cast<std::uint32_t>(character) & 0xffffU);
    });
}

Monomial Monomial::power(int n) const {
    Monomial result = *this;
    if (n == 0) {
        result.names.clear();
        result.powers.clear();
    }
    for (std::int32_t& power : result.powers) {
        power = wrappingProduct(power, n);
    }
    return result;
}

Monomial Monomial::power(const Monomial& exponent) const { return power(exponent.value); }

Monomial& Monomial::operator*=(const Monomial& other) {
    const std::size_t held = std::min(names.size(), powers.size());
    const std::size_t added = std::min(other.names.size(), other.powers.size());
    // A copy, so that nothing changes if memory runs out. Reserved, since NamePositions requires
    // stable strings.
    std::vector<std::u16string> mergedNames;
    std::vector<std::int32_t> mergedPowers;
    mergedNames.reserve(held + added);
    mergedPowers.reserve(held + added);
    mergedNames.assign(names.begin(), names.begin() + static_cast<std::ptrdiff_t>(held));
    mergedPowers.assign(powers.begin(), powers.begin() + static_cast<std::ptrdiff_t>(held));
    NamePositions positions(mergedNames);
    for (std::size_t i = 0; i < added; ++i) {
        const std::size_t position = positions.find(other.names[i], held);
        if (position < held) {
            mergedPowers[position] = wrappingSum(mergedPowers[position], other.powers[i]);
        } else {
            mergedNames.push_back(other.names[i]);
            mergedPowers.push_back(other.powers[i]);
        }
    }
    names = std::move(mergedNames);
    powers = std::move(mergedPowers);
    return *this;
}

Monomial& Monomial::operator/=(const Monomial& other) { return *this *= other.power(-1); }
