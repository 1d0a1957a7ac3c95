/// \file
/// Symbolic dimensions: sizes that are names or expressions, by id; arithmetic on them; the facts
/// that are known of them; and what blocks compute of their ports.
#pragma once

#include <tvtypes/symbolicdims/constraints.h>
#include <tvtypes/symbolicdims/services.h>
#include <tvtypes/symbolicdims/table.h>
#include <tvtypes/symbolicdims/value.h>
