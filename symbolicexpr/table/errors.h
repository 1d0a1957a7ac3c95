/// \file
/// Errors of this library.
#pragma once

#include <tvtypes_res/messages.h>

namespace TV {

/// Throws a message as a diagnostic.
[[noreturn]] void throwError(const msgcore::BaseMsgID& message);

/// Throws InvalidDataTypeId for an expression id that is not in the table. The argument is the id
/// minus one: clients number symbolic dimensions from -1.
[[noreturn]] void throwInvalidId(unsigned long id);

} // namespace TV
