/// \file
/// The report for programs: one JSON object on one line, its member names stable.
///
/// | Member       | Value                                                                       |
/// |--------------|-----------------------------------------------------------------------------|
/// | `file`       | text, as given in the call                                                  |
/// | `fmiVersion` | text                                                                        |
/// | `modelName`  | text                                                                        |
/// | `variables`  | number of variables                                                         |
/// | `types`      | array of types in the order of their ids: `id`, `name`, `kind` (`built-in`, |
/// |              | `alias`, `enumerated`, `fixed-point`, `struct`), `size` in bytes, `storage` |
/// |              | and `aliasOf` (names, or null), `variables` (how many are of it; for a      |
/// |              | struct how many lie in one), `originalName` (text, or null where it is the  |
/// |              | name), `elements` and `leaves` (how many a struct has; null for the others) |
/// | `outside`    | array of what lies outside the table: `baseType`, `variables`, `types`      |
/// | `units`      | array of units in the order of the description: `name`, `id` (in the unit   |
/// |              | table, or null), `expression` (text, or null), `from` (`name`, `reading`,   |
/// |              | `base units`, or null: what the expression comes from), `baseUnits` (text   |
/// |              | with factor and offset, or null), `variables` (names of those that have it) |
/// | `dimensions` | array of the dimensions of arrays in the order of the description: `id` (in |
/// |              | the table of symbolic dimensions), `text`, `variables` (names of those that |
/// |              | have them)                                                                  |
/// | `facts`      | array of what is said of sizes: `id`, `text`, `blocks` (the names of the    |
/// |              | variables that say so)                                                      |
/// | `problems`   | array of remarks: `element`, `line` (or null), `sentence`, `count`          |
/// | `notes`      | the same                                                                    |
#pragma once

#include "model/findings.h"

#include <ostream>

namespace tvtool::model {

void printJson(const Findings& findings, std::ostream& os);

} // namespace tvtool::model
