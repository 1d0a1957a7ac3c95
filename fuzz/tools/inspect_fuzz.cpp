// Inspects any bytes as a description, lays out its structs and prints all reports. Only a
// files::ReadError is allowed, the JSON is valid, and lines of text are safe to print.
#include "model/memory_map.h"
#include "page/page.h"
#include "report/inspection.h"
#include "support/output.h"

#include <cstdint>
#include <sstream>
#include <string_view>

namespace {

using namespace tvtool;
using namespace fuzzing;

void printReports(const model::Model& model) {
    report::Options options;
    options.variables = report::VariableChoice::All;
    options.order = report::VariableOrder::Type;
    options.showsIds = true;
    const report::Inspection inspection(model, "f", options);
    checkText(printed([&](std::ostream& os) { report::printText(inspection, false, os); }));
    checkJson(printed([&](std::ostream& os) { report::printJson(inspection, os); }));
    require(page::htmlPage(inspection).ends_with("</html>\n"));
}

void layOut(const model::Model& model) {
    const model::MemoryMaps maps = model::mapStructs(model, "f", "");
    checkText(printed([&](std::ostream& os) { model::printText(maps, false, os); }));
    checkJson(printed([&](std::ostream& os) { model::printJson(maps, os); }));
    checkText(printed([&](std::ostream& os) { model::drawLayout(maps, os); }));
    for (const model::StructMap& map : maps.structs) {
        for (const model::LayoutRow& row : map.rows) {
            require(row.offset >= 0 && row.size >= 0 && row.offset + row.size <= map.size);
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string_view rest(reinterpret_cast<const char*>(data), size);
    const auto source = [&](std::span<char> buffer) {
        const std::size_t count = rest.copy(buffer.data(), buffer.size());
        rest.remove_prefix(count);
        return count;
    };
    try {
        const model::Model model(source, {});
        printReports(model);
        layOut(model);
    } catch (const files::ReadError&) {
        // The bytes are no description.
    }
    return 0;
}
