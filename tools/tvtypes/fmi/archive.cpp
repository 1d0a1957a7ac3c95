// The description in a zip archive.
#include "exchange/archive.h"
#include "exchange/zip_input.h"
#include "fmi/source.h"
#include "text/quote.h"

#include <fmt/format.h>
#include <zip.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>

namespace tvtool::fmi {

namespace {

using findings::Code;

constexpr std::string_view descriptionName = "modelDescription.xml";
constexpr std::string_view resourceForkFolder = "__MACOSX/";
const findings::Place archivePlace{"archive"};

/// Returns whether the name is that of a description in a folder at the root.
bool isInFolder(std::string_view name) {
    const std::size_t slash = name.find('/');
    return slash != std::string_view::npos && name.substr(slash + 1) == descriptionName;
}

/// Returns whether a path is not in one of the folders that an exporter can fill with any files.
bool isFreeFolder(std::string_view path) {
    constexpr std::string_view folders[] = {"documentation/", "extra/", "resources/", "sources/"};
    return std::ranges::none_of(folders,
                                [&](std::string_view folder) { return path.starts_with(folder); });
}

/// Returns the index of the description at the root, else of the only one in a folder.
zip_uint64_t findDescription(zip_t* archive, findings::Findings& findings) {
    std::optional<zip_uint64_t> atRoot;
    std::optional<zip_uint64_t> inFolder;
    std::size_t folders = 0;
    std::size_t others = 0;
    const zip_int64_t count = zip_get_num_entries(archive, 0);
    for (zip_int64_t i = 0; i < count; ++i) {
        const zip_uint64_t index = static_cast<zip_uint64_t>(i);
        const char* const nameOrNull = zip_get_name(archive, index, 0);
        const std::string_view name = nameOrNull == nullptr ? "" : nameOrNull;
        if (name.starts_with(resourceForkFolder)) {
            if (name.ends_with(descriptionName)) {
                findings.add(Code::ArchiveEntry, archivePlace, {}, "entry {} is ignored",
                             text::quoted(name));
            }
        } else if (name == descriptionName) {
            if (atRoot) {
                findings.add(Code::ArchiveDescriptions, archivePlace, {},
                             "a second {} at the root is ignored", descriptionName);
            }
            atRoot = atRoot.value_or(index);
        } else if (isInFolder(name)) {
            ++folders;
            inFolder = index;
            others += isFreeFolder(name) ? 1 : 0;
        }
    }
    if (atRoot) {
        if (others > 0) {
            findings.add(Code::ArchiveDescriptions, archivePlace, {},
                         "{} in folders {} ignored, as there is one at the root",
                         text::counted(others, "description", "descriptions"),
                         others == 1 ? "is" : "are");
        }
        return *atRoot;
    }
    if (folders > 1) {
        throw files::ReadError(fmt::format("holds no {} at its root, and {} in its folders",
                                           descriptionName, folders));
    }
    if (!inFolder) {
        throw files::ReadError(fmt::format("is an archive without a {}", descriptionName));
    }
    findings.add(Code::ArchiveFolder, archivePlace, {},
                 "the description is read from {}; it belongs at the root",
                 text::quoted(zip_get_name(archive, *inFolder, 0)));
    return *inFolder;
}

} // namespace

exchange::Source openArchive(std::shared_ptr<std::FILE> file, findings::Findings& findings,
                             std::uint64_t maxSize) {
    return openArchive(exchange::openZip(std::move(file), exchange::longestDirectory), findings,
                       maxSize);
}

exchange::Source openArchive(const std::shared_ptr<zip_t>& archive, findings::Findings& findings,
                             std::uint64_t maxSize) {
    return exchange::openEntry(archive, findDescription(archive.get(), findings), descriptionName,
                               maxSize);
}

} // namespace tvtool::fmi
