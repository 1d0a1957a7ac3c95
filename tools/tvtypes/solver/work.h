/// \file
/// A bound on the work of a solver.
#pragma once

#include <algorithm>
#include <cstdint>

namespace tvtool::solver {

/// Counts steps, each of which takes about the same time. There is a limit for all tasks together,
/// and one for each task.
class Work {
  public:
    explicit Work(std::uint64_t limit) : total_(limit), task_(limit) {}

    /// Begins a task with a limit of its own.
    void beginTask(std::uint64_t limit) { task_ = std::min(limit, total_); }

    /// Returns false if the steps are beyond a limit; then no more work may be done for the task.
    bool charge(std::uint64_t steps) {
        total_ -= std::min(steps, total_);
        task_ -= std::min(steps, task_);
        return task_ > 0;
    }

    /// Returns whether the limit of the task, or of all tasks, is reached.
    bool isExhausted() const { return task_ == 0; }

  private:
    std::uint64_t total_;
    std::uint64_t task_;
};

} // namespace tvtool::solver
