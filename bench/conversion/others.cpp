#include "conversion/others.h"

namespace convbench {

const std::vector<Other>& others() {
    static const std::vector<Other> all = {
#if defined(TVTYPES_BENCH_EIGEN)
        {"eigen", findInEigen},
#else
        {"eigen", nullptr},
#endif
#if defined(TVTYPES_BENCH_OPENCV)
        {"opencv", findInOpenCv},
#else
        {"opencv", nullptr},
#endif
#if defined(TVTYPES_BENCH_VOLK)
        {"volk", findInVolk},
#else
        {"volk", nullptr},
#endif
    };
    return all;
}

} // namespace convbench
