#include "commands.h"

#include "report/safe_text.h"

#include <fmt/format.h>

#include <ostream>

namespace tvtool {

void reportUnreadable(const std::string& file, const fmi::ReadError& error, Console& console) {
    const std::string place =
        error.line == 0 ? "" : fmt::format(":{}:{}", error.line, error.column);
    console.err << fmt::format("tvtypes: {}{}: {}\n", report::safeText(file), place,
                               report::safeText(error.what()));
    console.status = ExitUnusable;
}

} // namespace tvtool
