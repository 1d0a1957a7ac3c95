/// \file
/// Physical units: scale factors, unit expressions, units with canonical forms, the unit database,
/// and the table of the units of a model.
#pragma once

#include <tvtypes/units/database.h>
#include <tvtypes/units/expression.h>
#include <tvtypes/units/fundamental_units.h>
#include <tvtypes/units/rational.h>
#include <tvtypes/units/table.h>
#include <tvtypes/units/trie.h>
#include <tvtypes/units/unit.h>
#include <tvtypes/units/unit_base_instance_mapping.h>
