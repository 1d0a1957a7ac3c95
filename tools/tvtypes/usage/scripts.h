/// \file
/// The scripts by which shells complete calls of the tool.
///
/// They complete commands, options, the arguments of options and positional arguments. Those that
/// only the unit database has are listed by the tool itself, as the first word of the line calls
/// it.
#pragma once

#include "usage/definition.h"

#include <string>

namespace tvtool::usage {

std::string bashScript(const Tool& tool);
std::string zshScript(const Tool& tool);
std::string fishScript(const Tool& tool);

} // namespace tvtool::usage
