#include "services/host.h"

#include <tv_services/feval.h>

namespace TVTypeSys {

void* allocateHostZeroed(std::size_t count, std::size_t elementSize) {
    return oxCallocEx(count, elementSize);
}

tvsvDiagnosticImpl* callHostFunction(const char* name, const oxArray_tag* input,
                                     oxArray_tag** output) {
    // The parameter of the host is not const, but its functions do not change their inputs.
    oxArray_tag* inputs[] = {const_cast<oxArray_tag*>(input)};
    return tvsvFEVAL_NoThrow(1, output, 1, inputs, name, true, nullptr);
}

} // namespace TVTypeSys
