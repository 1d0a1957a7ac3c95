/// \file
/// Memory and functions of the host.
#pragma once

#include <ox/array.h>

#include <cstddef>

class tvsvDiagnosticImpl;

namespace TVTypeSys {

/// Allocates zeroed memory that the host releases. Returns null if memory runs out.
void* allocateHostZeroed(std::size_t count, std::size_t elementSize);

/// Calls a function of the host with one input, which it does not keep. Returns null on success
/// and stores the result in `*output`; otherwise returns the diagnostic and leaves `*output`
/// unchanged. The caller owns both.
tvsvDiagnosticImpl* callHostFunction(const char* name, const oxArray_tag* input,
                                     oxArray_tag** output);

} // namespace TVTypeSys
