/// \file
/// Findings in JSON.
#pragma once

#include "findings/findings.h"

#include <boost/json.hpp>

#include <ostream>
#include <string_view>
#include <vector>

namespace tvtool::findings {

/// Returns "file", "variable", "type", "unit", "displayUnit", "dimension", "struct", "element",
/// "connector", "connection", "parameter", "fact" or
/// "value".
const char* kindName(SubjectKind kind);

/// Returns an object with every member of a finding. Absent values are null.
boost::json::object jsonObject(const Finding& finding, std::string_view file);

/// Returns the array of all findings.
boost::json::array jsonArray(const std::vector<Finding>& findings, std::string_view file = {});

/// Prints the array of all findings.
void printJson(const std::vector<Finding>& findings, std::string_view file, std::ostream& os);

} // namespace tvtool::findings
