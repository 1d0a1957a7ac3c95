/// \file
/// The table of all data types of one model.
#pragma once

#include <tvtypes/registry/data_type_table.h>
