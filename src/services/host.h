/// \file
/// What the host does for the library: it has classes of values, memory and functions.
#pragma once

#include <ox/array.h>

#include <cstddef>

class tvsvDiagnosticImpl;

namespace TVTypeSys {

/// Zeroed memory of the host, which the host releases; null if there is none.
void* allocateHostZeroed(std::size_t count, std::size_t elementSize);

/// Calls a function of the host with one input, which it does not keep. Null on success, with the
/// result behind `output`, which the caller owns; else the diagnostic, which the caller owns, and
/// `output` is as it was.
tvsvDiagnosticImpl* callHostFunction(const char* name, const oxArray_tag* input,
                                     oxArray_tag** output);

} // namespace TVTypeSys
