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

/// A function of the host with `inCount` inputs and `outCount` outputs.
///
/// The inputs are borrowed for the duration of the call. Each output is initially null; the
/// function sets it to a reference that the caller will own, so an input that it returns must be
/// shared first. On error the function returns a diagnostic, which the caller will own, or throws;
/// on success it returns null.
using tvsvHostFunction = std::function<tvsvDiagnosticImpl*(int outCount, oxArray_tag** outputs,
                                                           int inCount, oxArray_tag** inputs)>;

/// Registers a function of the host under a name, in place of an earlier one. An empty function
/// removes the name. Not thread-safe.
TV_PLATFORM_API void tvsvRegisterHostFunction(const std::string& name, tvsvHostFunction function);

/// Calls a function of the host.
/// \param outCount     number of outputs; negative counts as 0
/// \param outputs      set to references that the caller owns on success; unchanged on error
/// \param inCount      number of inputs
/// \param inputs       the inputs, which are borrowed
/// \param functionName name of the function; null counts as ""
/// \param fromModel    not used; for hosts with an evaluator of their own
/// \param extra        not used; may be null
/// \return null on success, else a diagnostic that the caller owns: that of the function or its
///         exception; TorvaneTypes::general::HostFunctionDoesNotExist (name) if there is no such
///         function; HostFunctionFailed (name, reason) after an exception of another type;
///         HostFunctionWithoutResult (name, output from 1) if an output is null; MemoryAllocErr
///         after std::bad_alloc.
TV_PLATFORM_API tvsvDiagnosticImpl*
tvsvFEVAL_NoThrow(int outCount, oxArray_tag** outputs, int inCount, oxArray_tag** inputs,
                  const char* functionName, bool fromModel,
                  std::unique_ptr<oxArray_tag, TOxArrayDeleter>* extra);
