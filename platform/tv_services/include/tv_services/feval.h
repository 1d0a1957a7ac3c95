/// \file
/// Functions of the host, called by name.
#pragma once

#include <fnd/export.h>
#include <tv_services/diagnostics.h>

#include <functional>
#include <memory>
#include <string>

struct oxArray_tag;
struct TOxArrayDeleter;

/// A function of the host: from `inCount` inputs it makes `outCount` outputs.
///
/// The inputs are lent for the length of the call. Each output starts null, and the function
/// writes a reference there that it gives away; an input that it gives back is to be shared first.
/// It refuses by a diagnostic, which it gives away too, or by throwing; null says that all went
/// well.
using tvsvHostFunction = std::function<tvsvDiagnosticImpl*(int outCount, oxArray_tag** outputs,
                                                           int inCount, oxArray_tag** inputs)>;

/// Gives the host a function under a name, in place of one that it may have; an empty function
/// removes the name.
TV_PLATFORM_API void tvsvRegisterHostFunction(const std::string& name, tvsvHostFunction function);

/// Calls a function of the host. Null on success; then `outputs` holds `outCount` references that
/// belong to the caller. Otherwise a diagnostic, which the caller owns, and `outputs` is as it was:
/// what the function refused with or threw, HostFunctionDoesNotExist (name) where there is none of
/// this name, HostFunctionFailed (name, reason) after an exception of no known kind,
/// HostFunctionWithoutResult (name, number of the output) where one was left null.
///
/// `fromModel` and `extra` are of use to a host with an evaluator of its own; here they are not
/// read. `extra` may be null.
TV_PLATFORM_API tvsvDiagnosticImpl*
tvsvFEVAL_NoThrow(int outCount, oxArray_tag** outputs, int inCount, oxArray_tag** inputs,
                  const char* functionName, bool fromModel,
                  std::unique_ptr<oxArray_tag, TOxArrayDeleter>* extra);
