// The exported scalar rounding.
#include "conversion/rounding.h"

#include <tvtypes/conversion/conversion.h>

namespace utdtypeconv {

template <class T>
T ScalarConvergentPreInt(T x) {
    // Arithmetic would change the bits of a signalling NaN.
    return isNaN(x) ? x : Convergent::whole(x);
}

template double ScalarConvergentPreInt<double>(double x);
template float ScalarConvergentPreInt<float>(float x);

} // namespace utdtypeconv
