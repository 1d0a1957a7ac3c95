#include <tvtypes/functions.h>

#include <cmath>
#include <limits>

namespace utdtypeconv {

// From 2 to the power of the digits behind the first on, and for what is not finite, there is
// nothing to round.
template <class T>
T ScalarConvergentPreInt(T x) {
    constexpr T limit = T(1) / std::numeric_limits<T>::epsilon();
    return std::abs(x) < limit ? std::nearbyint(x) : x;
}

template double ScalarConvergentPreInt<double>(double x);
template float ScalarConvergentPreInt<float>(float x);

} // namespace utdtypeconv
