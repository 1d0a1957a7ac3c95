/// \file
/// The one short way to refuse and to warn.
#pragma once

#include <tvtypes_res/messages.h>

#include <string>

class tvsvDiagnosticImpl;

namespace TVTypeSys {

namespace general = TorvaneTypes::general;
namespace units = TorvaneTypes::Unit;
namespace dimensions = TorvaneTypes::Dimensions;

/// Throws the message as a diagnostic: `refuse(general::InvalidDataTypeId(id))`.
[[noreturn]] void refuse(const msgcore::BaseMsgID& message);

/// Throws a diagnostic that another operation gave, and takes it over.
[[noreturn]] void refuse(tvsvDiagnosticImpl* diagnostic);

/// Throws the diagnostic which says that memory ran out.
[[noreturn]] void refuseForLackOfMemory();

/// Reports the message as a warning.
void warn(const msgcore::BaseMsgID& message);

/// A text argument of a message; null counts as "".
inline std::string textOf(const char* text) { return text == nullptr ? std::string() : text; }

} // namespace TVTypeSys
