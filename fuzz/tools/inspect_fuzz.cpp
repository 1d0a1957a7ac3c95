// Inspects any bytes as a description and lays out its structs. Only a files::ReadError is allowed.
#include "model/inspection.h"
#include "model/memory_map.h"

#include <cstdint>
#include <sstream>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string_view rest(reinterpret_cast<const char*>(data), size);
    const auto source = [&](std::span<char> buffer) {
        const std::size_t count = rest.copy(buffer.data(), buffer.size());
        rest.remove_prefix(count);
        return count;
    };
    try {
        const tvtool::model::Model model(source, {});
        const tvtool::model::Inspection inspection = tvtool::model::inspect(model, "");
        std::ostringstream os;
        tvtool::model::printText(inspection, true, os);
        tvtool::model::printJson(inspection, os);
        const tvtool::model::MemoryMaps maps = tvtool::model::mapStructs(model, "", "");
        tvtool::model::printText(maps, true, os);
        tvtool::model::drawLayout(maps, os);
    } catch (const tvtool::files::ReadError&) {
        // The bytes are no description.
    }
    return 0;
}
