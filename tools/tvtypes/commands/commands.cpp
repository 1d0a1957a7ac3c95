#include "commands.h"

#include "fmi/remarks.h"
#include "report/excerpt.h"
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

void reportUnreadable(const std::string& argument, std::size_t position, const char* reason,
                      Console& console) {
    console.err << fmt::format("tvtypes: {}: column {}: {}\n{}",
                               report::safeText(fmi::quoted(argument)),
                               report::columnOf(argument, position), report::safeText(reason),
                               report::excerptAt(argument, position));
    console.status = ExitUnusable;
}

} // namespace tvtool
