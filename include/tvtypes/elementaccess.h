/// \file
/// Views that number the contents of a struct type.
#pragma once

#include <tvtypes/structs/element_access.h>
