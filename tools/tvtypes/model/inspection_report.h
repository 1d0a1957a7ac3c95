/// \file
/// The report of an inspection, as text and as JSON.
///
/// The JSON is one object in one line. Its member names are stable; absent values are null.
///
/// | Member       | Value                                                                       |
/// |--------------|-----------------------------------------------------------------------------|
/// | `file`       | text, as given in the call                                                  |
/// | `fmiVersion` | text                                                                        |
/// | `modelName`  | text                                                                        |
/// | `variables`  | number of variables                                                         |
/// | `types`      | array of typeColumns (type_rows.h), in the order of the ids                 |
/// | `outside`    | array of outsideColumns (type_rows.h)                                       |
/// | `units`      | array of unitColumns (unit_rows.h), in the order of the description         |
/// | `dimensions` | array of dimensionColumns (unit_rows.h), in the order of the description    |
/// | `facts`      | array of facts about sizes: `id`, `text`, `blocks` (names of the variables  |
/// |              | that imply it)                                                              |
/// | `problems`   | array of remarks: `element`, `line`, `sentence`, `count`                    |
/// | `notes`      | the same                                                                    |
#pragma once

#include "model/inspection.h"

#include <ostream>

namespace tvtool::model {

void printText(const Inspection& inspection, bool colour, std::ostream& os);
void printJson(const Inspection& inspection, std::ostream& os);

} // namespace tvtool::model
