/// \file
/// The table of all data types of one model.
#pragma once

#include <tvtypes/datatype.h>
#include <tvtypes/registry/data_type_table.h>
#include <tvtypes/registry/registration_callback.h>
