#include "convert/run.h"

#include <fmt/format.h>

#include <chrono>
#include <vector>

namespace tvtool::convert {

namespace {

constexpr std::size_t chunk = std::size_t{64} << 10;

/// A progress bar, which is erased at the end of its life.
class ProgressBar {
  public:
    ProgressBar(std::ostream* terminal, std::uint64_t total)
        : terminal_(total > 0 ? terminal : nullptr), total_(total) {}
    ~ProgressBar() {
        if (isShown_) {
            *terminal_ << "\r\x1b[K" << std::flush;
        }
    }
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;

    void update(std::uint64_t done) {
        if (terminal_ == nullptr || Clock::now() < next_) {
            return;
        }
        next_ = Clock::now() + interval;
        isShown_ = true;
        const double part = static_cast<double>(done) / static_cast<double>(total_);
        *terminal_ << fmt::format("\r[{:<{}}] {:3.0f} %",
                                  std::string(std::size_t(part * width), '#'), width, part * 100)
                   << std::flush;
    }

  private:
    using Clock = std::chrono::steady_clock;
    static constexpr std::chrono::milliseconds interval{200};
    static constexpr int width = 40;

    std::ostream* terminal_;
    std::uint64_t total_;
    Clock::time_point next_ = Clock::now() + interval;
    bool isShown_ = false;
};

} // namespace

void convertAll(Source& source, Conversion& conversion, Sink& sink, std::ostream* terminal) {
    ProgressBar progress(terminal, source.count().value_or(0));
    std::vector<std::byte> from(chunk * sizeOf(conversion.source()));
    std::vector<std::byte> to(chunk * sizeOf(conversion.destination()));
    while (const std::size_t count = source.read(from.data(), chunk)) {
        conversion.convert(from.data(), to.data(), count);
        sink.write(to.data(), count);
        progress.update(conversion.losses().elements);
    }
    sink.finish();
}

} // namespace tvtool::convert
