/// \file
/// All exported plain functions that belong to no class, and the texts about the version.
#pragma once

#include <tvtypes/conversion/comparators.h>
#include <tvtypes/conversion/conversion.h>
#include <tvtypes/conversion/host_values.h>
#include <tvtypes/conversion/overflow_check.h>
#include <tvtypes/fixedpoint.h>
#include <tvtypes/registry/counts.h>
#include <tvtypes/structs/bus_functions.h>
#include <tvtypes/version.h>
