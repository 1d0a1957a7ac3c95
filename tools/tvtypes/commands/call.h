/// \file
/// The arguments of a call, before the command line library parses them.
#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace tvtool {

class Call {
  public:
    /// Takes the arguments behind the name of the program. `help` and `help COMMAND` become --help.
    explicit Call(std::vector<std::string> arguments);

    bool isEmpty() const { return arguments_.empty(); }
    /// Returns whether --json is among the options.
    bool hasJson() const;
    /// Returns the name of the command; empty if the call has none that exists.
    std::string command(const CLI::App& app) const;

    /// Throws a UsageError, with a suggestion, for a command or an option that does not exist, and
    /// for an option that has no argument, has one it does not take, or is given twice.
    ///
    /// The library would report the first of its own checks that fails: a missing FILE, and not
    /// that an option is misspelt.
    void check(const CLI::App& app) const;

    /// Returns the arguments in reverse order, as the parser expects them. The parser would read
    /// -inf as options and [2,N] as two values; a blank before it makes it one value. So it does
    /// for texts after "--", which the parser honours only while a command has no text.
    std::vector<std::string> parserArguments() const;

  private:
    std::vector<std::string> arguments_;
};

} // namespace tvtool
