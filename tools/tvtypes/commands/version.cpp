// tvtypes --version
#include "commands/commands.h"
#include "text/safe_text.h"
#include "units/definitions.h"

#include <tvtypes/functions.h>

#include <fmt/format.h>

#include <exception>

namespace tvtool {

namespace {

/// The number of units is read from the file of definitions, since loading the database takes
/// longer than all else.
std::string databaseText() {
    try {
        return fmt::format("{} units", units::definitions().unitCount());
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
