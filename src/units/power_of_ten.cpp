#include "units/power_of_ten.h"

#include <iterator>
#include <limits>

namespace TVTypeSys {

namespace {

// Literals, since the compiler rounds them correctly in every rounding mode of the process.
// clang-format off
#define TEN(prefix) \
    prefix##0, prefix##1, prefix##2, prefix##3, prefix##4, \
    prefix##5, prefix##6, prefix##7, prefix##8, prefix##9
#define HUNDRED(prefix) \
    TEN(prefix##0), TEN(prefix##1), TEN(prefix##2), TEN(prefix##3), TEN(prefix##4), \
    TEN(prefix##5), TEN(prefix##6), TEN(prefix##7), TEN(prefix##8), TEN(prefix##9)

constexpr double powers[] = {
    HUNDRED(1e0), HUNDRED(1e1), HUNDRED(1e2),
    1e300, 1e301, 1e302, 1e303, 1e304, 1e305, 1e306, 1e307, 1e308,
};
constexpr double inversePowers[] = {
    HUNDRED(1e-0), HUNDRED(1e-1), HUNDRED(1e-2), TEN(1e-30), TEN(1e-31),
    1e-320, 1e-321, 1e-322, 1e-323,
};
// clang-format on
#undef HUNDRED
#undef TEN

constexpr int greatestExponent = static_cast<int>(std::size(powers)) - 1;
constexpr int leastExponent = 1 - static_cast<int>(std::size(inversePowers));

static_assert(greatestExponent == std::numeric_limits<double>::max_exponent10);
static_assert(inversePowers[-leastExponent] > 0 && inversePowers[-leastExponent] / 8 == 0);

} // namespace

double powerOfTen(int exponent) {
    if (exponent >= 0) {
        return exponent <= greatestExponent ? powers[exponent]
                                            : std::numeric_limits<double>::infinity();
    }
    return exponent >= leastExponent ? inversePowers[-exponent] : 0.0;
}

} // namespace TVTypeSys
