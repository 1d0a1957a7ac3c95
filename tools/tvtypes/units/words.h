/// \file
/// The words by which units are found.
#pragma once

#include <functional>
#include <set>
#include <string>

namespace tvtool::units {

/// Calls `function` with the names, symbols and aliases of all units of the database, some of them
/// several times.
void forEachUnitWord(const std::function<void(std::string)>& function);

/// Returns all names, symbols and aliases of the concrete units.
std::set<std::string> unitWords();

} // namespace tvtool::units
