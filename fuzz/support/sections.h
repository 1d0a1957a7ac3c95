/// \file
/// Inputs that have several files.
///
/// A line `--- NAME` begins a file, whose content ends before the next such line. In a name such as
/// `m.fmu/modelDescription.xml`, what ends with .fmu or .ssp is an archive of the files in it.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace fuzzing {

struct Section {
    std::string name; ///< empty for what precedes the first name
    std::string content;
};

/// Splits an input. Names are relative paths inside a folder.
std::vector<Section> splitSections(std::string_view text);

/// Returns the bytes of an archive of the sections.
std::string archiveOf(const std::vector<Section>& sections);

/// Writes the sections that have a name as files and archives. A section whose name is already used
/// otherwise, as a file and a folder, is not written.
void writeSections(const std::vector<Section>& sections, const std::filesystem::path& folder);

} // namespace fuzzing
