/// \file
/// What counts as a name.
#pragma once

#include <fnd/export.h>

/// Whether `text` is an identifier of ANSI C: a letter or underscore, then letters, digits and
/// underscores. Null and "" are not. The words that C reserves, such as "double", are accepted
/// just if `acceptReservedWords` holds.
TV_PLATFORM_API bool tvIsValidANSICIdentifier(const char* text, bool acceptReservedWords);
