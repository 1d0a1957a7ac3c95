// A system with the files that it refers to, in a folder or in an archive, or any bytes as an
// archive: only a files::ReadError is allowed, and the reports are safe to print.
//
// An input is SystemStructure.ssd and further files (support/sections.h). If its first line is
// `ssp` they are in an archive. An input that begins with PK is the archive itself.
#include "files/read_error.h"
#include "ssp/package.h"
#include "support/folder.h"
#include "support/output.h"
#include "support/sections.h"
#include "systemreport/graph.h"
#include "systemreport/report.h"
#include "systems/records.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace tvtool;
using namespace fuzzing;

/// Writes the files and returns the path of the system.
std::filesystem::path write(std::string_view text, const std::filesystem::path& folder) {
    const std::filesystem::path archive = folder / "s.ssp";
    if (text.starts_with("PK")) {
        writeFile(archive, text);
        return archive;
    }
    constexpr std::string_view archiveLine = "ssp\n";
    const bool isArchive = text.starts_with(archiveLine);
    text.remove_prefix(isArchive ? archiveLine.size() : 0);
    std::vector<Section> sections = splitSections(text);
    sections.front().name = "SystemStructure.ssd";
    if (isArchive) {
        writeFile(archive, archiveOf(sections));
        return archive;
    }
    writeSections(sections, folder);
    return folder;
}

void check(const std::string& path) {
    const auto checked = systems::checkSystem(path);
    const systemreport::Report report{*checked, "f", {}};
    checkText(printed([&](std::ostream& os) { systemreport::printText(report, false, os); }));
    checkJson(printed([&](std::ostream& os) { systemreport::printJson(report, os); }));
    require(systemreport::dotText(*checked).ends_with("}\n"));
    systemreport::dotText(*checked, systemreport::GraphDetail::Elements);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const TemporaryFolder folder;
    const std::filesystem::path path =
        write({reinterpret_cast<const char*>(data), size}, folder.path);
    try {
        check(path);
    } catch (const files::ReadError&) {
        // There is no system description.
    }
    folder.clear();
    return 0;
}
