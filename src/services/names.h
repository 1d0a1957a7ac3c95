/// \file
/// Validity of names.
#pragma once

namespace TVTypeSys {

/// Returns whether a text is a C identifier. Reserved words of C are accepted; null is not.
bool isIdentifier(const char* text);

} // namespace TVTypeSys
