/// \file
/// How far a long conversion has come, shown on a terminal.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <ostream>

namespace tvtool::convert {

/// A bar on the last line of the terminal, which is gone when the work is.
class Progress {
  public:
    /// Shows nothing if there is no terminal, or if the total is not known.
    Progress(std::ostream* terminal, std::optional<std::uint64_t> total);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    void reached(std::uint64_t done);

  private:
    using Clock = std::chrono::steady_clock;

    std::ostream* terminal_;
    std::uint64_t total_;
    Clock::time_point next_;
    bool shown_ = false;
};

} // namespace tvtool::convert
