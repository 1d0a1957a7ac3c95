/// \file
/// The record of one data type, and of an alias.
#pragma once

#include <tvtypes/registry/data_type.h>
