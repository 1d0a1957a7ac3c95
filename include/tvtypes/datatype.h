/// \file
/// Records of data types, of built-in types and of aliases.
#pragma once

#include <tvtypes/registry/alias_data_type.h>
#include <tvtypes/registry/builtin_data_type.h>
#include <tvtypes/registry/data_type.h>
