/// \file
/// What the commands that report findings in several files share.
#pragma once

#include "commands/commands.h"
#include "files/read_error.h"

#include <boost/json.hpp>

#include <cstddef>
#include <ostream>
#include <string>
#include <vector>

namespace tvtool {

/// Which findings are reported, and how they decide the exit status.
struct FindingOptions {
    std::vector<std::string> select;
    std::vector<std::string> ignore;
    bool isQuiet = false;
    bool isStrict = false;
    bool showsAll = false; ///< whether no finding is folded or left out

    /// Returns the exit status of a file with these numbers of findings.
    int statusOf(std::size_t errors, std::size_t warnings) const {
        return errors > 0 || (isStrict && warnings > 0) ? ExitProblems : ExitClean;
    }
};

/// Adds the options --select, --ignore, --quiet, --strict and --all.
void addFindingOptions(CLI::App& command, FindingOptions& options);

/// The sums over several files.
struct Total {
    std::size_t files = 0;
    std::size_t unreadable = 0;
    std::size_t withErrors = 0;
    std::size_t errors = 0;
    std::size_t warnings = 0;
    std::size_t notes = 0;

    /// Adds the numbers of findings of a file.
    void add(std::size_t addedErrors, std::size_t addedWarnings, std::size_t addedNotes);

    std::string text() const;
    boost::json::object json() const;
};

/// The last file that is being read, in a line of the terminal that is overwritten.
class Progress {
  public:
    Progress(const Console& console, std::size_t files);
    ~Progress() { clear(); }
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    void show(std::size_t number, const std::string& file);
    void clear();

  private:
    std::ostream& os_;
    std::size_t files_;
    bool isShown_;
};

/// Sets the exit status unless it is higher.
void raiseStatus(Console& console, int status);

/// Prints why one of several files cannot be read, as a finding or as an object.
void printUnreadable(const char* command, const std::string& file, const files::ReadError& error,
                     bool isJson, Console& console);

} // namespace tvtool
