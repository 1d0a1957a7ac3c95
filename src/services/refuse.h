/// \file
/// The one short way to refuse and to warn.
#pragma once

#include <tvtypes_res/messages.h>

#include <string>

namespace TVTypeSys {

namespace general = TorvaneTypes::general;

/// Throws the message as a diagnostic: `refuse(general::InvalidDataTypeId(id))`.
[[noreturn]] void refuse(const msgcore::BaseMsgID& message);

/// A text argument of a message; null counts as "".
inline std::string textOf(const char* text) { return text == nullptr ? std::string() : text; }

} // namespace TVTypeSys
