// tvtypes --version
#include "commands/commands.h"
#include "text/safe_text.h"

#include <tvtypes/functions.h>
#include <tvtypes/units.h>

#include <fmt/format.h>

#include <exception>

namespace tvtool {

namespace {

/// Counts the units of the database file, which the library has to read for that.
std::string databaseText() {
    try {
        return fmt::format("{} units",
                           TVTypeSys::UnitDatabase::getUnitDatabase()->getAllUnits().size());
    } catch (const std::exception& error) {
        return text::inOneLine(error.what());
    }
}

} // namespace

std::string versionText() {
    return fmt::format("tvtypes {} ({})\ninstruction set: {}\nunit database: {}",
                       libtv_types_version, libtv_types_build_date, getInstructionSetName(),
                       databaseText());
}

} // namespace tvtool
