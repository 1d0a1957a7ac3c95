// The exported scalar rounding.
#include "conversion/rounding.h"

#include "floating_point_environment.h"

#include <tvtypes/conversion/conversion.h>

namespace utdtypeconv {

template <class T>
T ScalarConvergentPreInt(T x) {
    // Arithmetic would change the bits of a signalling NaN.
    return inDefaultEnvironment(x, [](T y) { return isNaN(y) ? y : Convergent::whole(y); });
}

template double ScalarConvergentPreInt<double>(double x);
template float ScalarConvergentPreInt<float>(float x);

} // namespace utdtypeconv
