/// \file
/// The words by which units are found.
#pragma once

#include <set>
#include <string>

namespace tvtool::units {

/// Returns all names, symbols and aliases of the concrete units.
std::set<std::string> unitWords();

} // namespace tvtool::units
