// The inspection of any bytes, and the layout of its structs: reports or a files::ReadError,
// nothing else.
#include "model/inspection.h"
#include "model/inspection_report.h"
#include "model/layout_report.h"
#include "model/layout_svg.h"
#include "model/memory_map.h"

#include <algorithm>
#include <cstdint>
#include <sstream>

namespace {

class MemorySource : public tvtool::fmi::Source {
  public:
    explicit MemorySource(std::span<const char> bytes) : rest_(bytes) {}

    std::size_t read(std::span<char> buffer) override {
        const std::size_t count = std::min(buffer.size(), rest_.size());
        std::copy_n(rest_.begin(), count, buffer.begin());
        rest_ = rest_.subspan(count);
        return count;
    }

  private:
    std::span<const char> rest_;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    MemorySource source({reinterpret_cast<const char*>(data), size});
    try {
        const tvtool::model::Inspection inspection = tvtool::model::inspectSource(source, {});
        std::ostringstream os;
        tvtool::model::printText(inspection, true, os);
        tvtool::model::printJson(inspection, os);
        MemorySource again({reinterpret_cast<const char*>(data), size});
        const tvtool::model::Model model(again, {});
        const tvtool::model::MemoryMaps maps = tvtool::model::mapStructs(model, "");
        tvtool::model::printText(maps, true, os);
        tvtool::model::drawLayout(maps, os);
    } catch (const tvtool::files::ReadError&) {
        // No description: the reader has said so.
    }
    return 0;
}
