/// \file
/// Physical units: exact scale factors, unit expressions, units with canonical forms, the database
/// of the units that the product knows, and the units of a model by id.
#pragma once

#include <tvtypes/units/database.h>
#include <tvtypes/units/expression.h>
#include <tvtypes/units/rational.h>
#include <tvtypes/units/table.h>
#include <tvtypes/units/unit.h>
