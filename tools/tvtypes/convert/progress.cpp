#include "convert/progress.h"

#include <fmt/format.h>

namespace tvtool::convert {

namespace {

constexpr std::chrono::milliseconds interval(200);
constexpr int width = 40;

} // namespace

Progress::Progress(std::ostream* terminal, std::optional<std::uint64_t> total)
    : terminal_(total ? terminal : nullptr),
      total_(total.value_or(0)),
      next_(Clock::now() + interval) {}

Progress::~Progress() {
    if (shown_) {
        *terminal_ << "\r\x1b[K" << std::flush;
    }
}

void Progress::reached(std::uint64_t done) {
    if (terminal_ == nullptr || total_ == 0 || Clock::now() < next_) {
        return;
    }
    next_ = Clock::now() + interval;
    shown_ = true;
    const double part = static_cast<double>(done) / static_cast<double>(total_);
    *terminal_ << fmt::format("\r[{:<{}}] {:3.0f} %", std::string(std::size_t(part * width), '#'),
                              width, part * 100)
               << std::flush;
}

} // namespace tvtool::convert
