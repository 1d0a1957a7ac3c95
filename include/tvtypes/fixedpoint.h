/// \file
/// Numeric types of the fixed-point world: the record that says everything about one, its name and
/// constructor strings, and the cache that keeps them.
#pragma once

#include <tvtypes/fixedpoint/cache.h>
#include <tvtypes/fixedpoint/constructor.h>
#include <tvtypes/fixedpoint/identifier.h>
#include <tvtypes/fixedpoint/properties.h>
