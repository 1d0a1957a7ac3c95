/// \file
/// Fixed-point and other numeric types: the record of a type, its identifier and constructor
/// strings, and the cache of these strings.
#pragma once

#include <tvtypes/fixedpoint/cache.h>
#include <tvtypes/fixedpoint/constructor.h>
#include <tvtypes/fixedpoint/identifier.h>
#include <tvtypes/fixedpoint/properties.h>
