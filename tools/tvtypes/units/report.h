/// \file
/// Reports on units, as text and as JSON.
///
/// The JSON is one object in one line. Its member names are stable; absent values are null, absent
/// lists empty.
///
/// | Report      | Members                                                                      |
/// |-------------|------------------------------------------------------------------------------|
/// | details     | `units`: array of `text`, `expression`, `name`, `symbol`, `display`,         |
/// |             | `aliases`, `definition`, `quantity`, `canonical`, `base`, `factor` (text),   |
/// |             | `factorDecimal` (number), `conversion`, `systems`, `convertible`,            |
/// |             | `convertibleCount`, `notes`                                                  |
/// | a factor    | `from`, `to`, `factor` (number), `exact` (text), `exactDecimal`, `differs`,  |
/// |             | `conversion`, `reason`                                                       |
/// | a list      | `units`: array of `name`, `symbol`, `quantity`, `definition`, `systems`      |
/// | completions | `words`: array of `word`, `kind` (`name`, `symbol` or `alias`), `unit`       |
#pragma once

#include "units/details.h"
#include "units/factor.h"
#include "units/search.h"

#include <ostream>
#include <vector>

namespace tvtool::units {

void printText(const std::vector<UnitDetails>& units, bool colour, std::ostream& os);
void printJson(const std::vector<UnitDetails>& units, std::ostream& os);
void printText(const UnitFactor& factor, bool colour, std::ostream& os);
void printJson(const UnitFactor& factor, std::ostream& os);
void printText(const std::vector<UnitLine>& lines, bool colour, std::ostream& os);
void printJson(const std::vector<UnitLine>& lines, std::ostream& os);
void printText(const std::vector<UnitWord>& words, bool colour, std::ostream& os);
void printJson(const std::vector<UnitWord>& words, std::ostream& os);

} // namespace tvtool::units
