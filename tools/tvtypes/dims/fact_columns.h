/// \file
/// The columns of facts, for the reports that list them.
#pragma once

#include "dims/fact_records.h"
#include "output/columns.h"

namespace tvtool::dims {

extern const output::Columns<DimsFact> factColumns;

} // namespace tvtool::dims
