#include "support/sections.h"

#include "support/folder.h"

#include <zip.h>

#include <algorithm>
#include <map>
#include <optional>
#include <utility>

namespace fuzzing {

namespace {

constexpr std::string_view mark = "--- ";

/// Removes what leads out of a folder, and empty parts, from a path.
std::string safePath(std::string_view path) {
    constexpr std::size_t mostParts = 6;
    constexpr std::size_t longestPart = 60;
    std::string safe;
    for (std::size_t part = 0; part < mostParts && !path.empty(); ++part) {
        const std::string_view name = path.substr(0, path.find('/'));
        path.remove_prefix(std::min(name.size() + 1, path.size()));
        if (!name.empty() && name.find_first_not_of('.') != std::string_view::npos) {
            safe += (safe.empty() ? "" : "/") + std::string(name.substr(0, longestPart));
        }
    }
    std::erase(safe, '\0');
    return safe;
}

/// Returns where the name of the outermost archive of a path ends, if the path is in one.
std::optional<std::size_t> archiveEnd(const std::string& path) {
    for (std::size_t slash = path.find('/'); slash != std::string::npos;
         slash = path.find('/', slash + 1)) {
        const std::string_view outer = std::string_view(path).substr(0, slash);
        if (outer.ends_with(".fmu") || outer.ends_with(".ssp")) {
            return slash;
        }
    }
    return std::nullopt;
}

/// Replaces the sections in archives by the archives. Paths have few parts, so this calls itself a
/// few times.
std::vector<Section> packed(const std::vector<Section>& sections) {
    std::vector<Section> all;
    std::map<std::string, std::vector<Section>> archives;
    for (const Section& section : sections) {
        if (const auto end = archiveEnd(section.name)) {
            archives[section.name.substr(0, *end)].push_back(
                {section.name.substr(*end + 1), section.content});
        } else {
            all.push_back(section);
        }
    }
    for (const auto& [name, entries] : archives) {
        all.push_back({name, archiveOf(entries)});
    }
    return all;
}

} // namespace

std::vector<Section> splitSections(std::string_view text) {
    std::vector<Section> sections(1);
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size() - 1) + 1;
        const std::string_view line = text.substr(0, end);
        text.remove_prefix(end);
        if (line.starts_with(mark)) {
            const std::string_view name = line.substr(mark.size());
            sections.push_back({safePath(name.substr(0, name.find_last_not_of('\n') + 1)), ""});
        } else {
            sections.back().content += line;
        }
    }
    return sections;
}

std::string archiveOf(const std::vector<Section>& sections) {
    const std::vector<Section> entries = packed(sections);
    zip_source_t* const bytes = zip_source_buffer_create(nullptr, 0, 0, nullptr);
    zip_source_keep(bytes);
    zip_t* const archive = zip_open_from_source(bytes, ZIP_TRUNCATE, nullptr);
    require(archive != nullptr);
    for (const auto& [name, content] : entries) {
        zip_source_t* const source = zip_source_buffer(archive, content.data(), content.size(), 0);
        const auto index =
            zip_file_add(archive, name.c_str(), source, ZIP_FL_ENC_UTF_8 | ZIP_FL_OVERWRITE);
        if (index < 0) {
            zip_source_free(source); // the name is no UTF-8
        } else {
            zip_set_file_compression(archive, static_cast<zip_uint64_t>(index), ZIP_CM_STORE, 0);
        }
    }
    std::string all;
    if (zip_close(archive) == 0 && zip_source_open(bytes) == 0) {
        zip_source_seek(bytes, 0, SEEK_END);
        all.resize(static_cast<std::size_t>(zip_source_tell(bytes)));
        zip_source_seek(bytes, 0, SEEK_SET);
        zip_source_read(bytes, all.data(), all.size());
        zip_source_close(bytes);
    }
    zip_source_free(bytes);
    return all;
}

void writeSections(const std::vector<Section>& sections, const std::filesystem::path& folder) {
    for (const auto& [name, content] : packed(sections)) {
        const std::filesystem::path path = folder / name;
        std::error_code error;
        std::filesystem::create_directories(path.parent_path(), error);
        if (!name.empty() && !error && !std::filesystem::is_directory(path)) {
            writeFile(path, content);
        }
    }
}

} // namespace fuzzing
