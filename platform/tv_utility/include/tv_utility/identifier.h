/// \file
/// Identifiers.
#pragma once

#include <fnd/export.h>

/// Returns whether `text` is an identifier of ANSI C: a letter or underscore, then letters, digits
/// and underscores. Null and "" are not. Reserved words of C90, such as "double", are accepted only
/// if `acceptReservedWords` is true.
TV_PLATFORM_API bool tvIsValidANSICIdentifier(const char* text, bool acceptReservedWords);
