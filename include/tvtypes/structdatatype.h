/// \file
/// Struct types and their elements.
#pragma once

#include <tvtypes/structs/struct_data_type.h>
#include <tvtypes/structs/struct_element.h>
