/// \file
/// Refusals of this library.
#pragma once

#include <tvtypes_res/messages.h>

namespace TV {

[[noreturn]] void refuse(const msgcore::BaseMsgID& message);

/// For an id that is not one of the table.
[[noreturn]] void refuseId(unsigned long id);

} // namespace TV
