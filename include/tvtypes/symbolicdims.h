/// \file
/// Symbolic dimensions: sizes that are names or expressions, by id; arithmetic on them; relations
/// between them; and their propagation through blocks.
#pragma once

#include <tvtypes/symbolicdims/constraints.h>
#include <tvtypes/symbolicdims/services.h>
#include <tvtypes/symbolicdims/table.h>
#include <tvtypes/symbolicdims/value.h>
