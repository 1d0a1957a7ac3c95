/// \file
/// Units for programs: one JSON object on one line, its member names stable.
///
/// | Of       | Members                                                                         |
/// |----------|---------------------------------------------------------------------------------|
/// | sheets   | `units`: array of `text`, `expression`, `name`, `symbol`, `display`, `aliases`, |
/// |          | `definition`, `quantity`, `canonical`, `base`, `factor` (text), `factorDecimal` |
/// |          | (number), `conversion`, `systems`, `convertible`, `convertibleCount`, `notes`   |
/// | a factor | `from`, `to`, `factor` (number), `exact` (text), `exactDecimal`, `differs`,     |
/// |          | `conversion`, `reason`                                                          |
/// | a list   | `units`: array of `name`, `symbol`, `quantity`, `definition`, `systems`         |
/// | words    | `words`: array of `word`, `kind` (`name`, `symbol` or `alias`), `unit`          |
///
/// What is empty or not to be had is null, but for arrays.
#pragma once

#include "units/records.h"

#include <ostream>

namespace tvtool::units {

void printJson(const std::vector<UnitSheet>& sheets, std::ostream& os);
void printJson(const UnitFactor& factor, std::ostream& os);
void printJson(const std::vector<UnitLine>& lines, std::ostream& os);
void printJson(const std::vector<UnitWord>& words, std::ostream& os);

} // namespace tvtool::units
