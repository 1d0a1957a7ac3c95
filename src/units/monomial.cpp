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
    // Reserved, since NamePositions requires stable strings.
    names.resize(held);
    names.reserve(held + added);
    powers.resize(held);
    NamePositions positions(names);
    for (std::size_t i = 0; i < added; ++i) {
        const std::size_t position = positions.find(other.names[i], held);
        if (position < held) {
            powers[position] = wrappingSum(powers[position], other.powers[i]);
        } else {
            names.push_back(other.names[i]);
            powers.push_back(other.powers[i]);
        }
    }
    return *this;
}

Monomial& Monomial::operator/=(const Monomial& other) { return *this *= other.power(-1); }
