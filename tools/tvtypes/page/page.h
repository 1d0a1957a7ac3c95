/// \file
/// The report of an inspection as an HTML page that needs no other file.
#pragma once

#include "report/inspection.h"

#include <string>

namespace tvtool::page {

/// Returns the page. It has the JSON of the inspection, pictures of the structs, and the findings
/// as a plain list for readers without scripts.
std::string htmlPage(const report::Inspection& inspection);

} // namespace tvtool::page
