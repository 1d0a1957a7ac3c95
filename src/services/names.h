/// \file
/// What counts as a name.
#pragma once

namespace TVTypeSys {

/// Whether a text is an identifier. Words that C reserves are; null is not.
bool isIdentifier(const char* text);

} // namespace TVTypeSys
