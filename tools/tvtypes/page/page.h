/// \file
/// Reports as HTML pages that need no other file.
#pragma once

#include "report/inspection.h"
#include "systemreport/report.h"

#include <string>

namespace tvtool::page {

/// Returns the page. It has the JSON of the inspection, pictures of the structs, and the findings
/// as a plain list for readers without scripts.
std::string htmlPage(const report::Inspection& inspection);
/// Returns the page of a checked system, with its picture and all connections.
std::string htmlPage(const systemreport::Report& report);

} // namespace tvtool::page
