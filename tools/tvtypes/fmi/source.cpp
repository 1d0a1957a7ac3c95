#include "fmi/source.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string_view>
#include <system_error>

namespace tvtool::fmi {

namespace {

std::string errorText(int errorNumber) { return std::generic_category().message(errorNumber); }

std::size_t readBytes(std::FILE* file, std::span<char> buffer) {
    const std::size_t count = std::fread(buffer.data(), 1, buffer.size(), file);
    if (count == 0 && std::ferror(file) != 0) {
        throw files::ReadError("cannot be read: " + errorText(errno));
    }
    return count;
}

} // namespace

Source openSource(const std::string& path, findings::Findings& findings) {
    std::error_code ignored;
    if (std::filesystem::is_directory(path, ignored)) {
        throw files::ReadError("is a directory, not a model description");
    }
    std::FILE* const opened = std::fopen(path.c_str(), "rb");
    if (opened == nullptr) {
        throw files::ReadError("cannot be opened: " + errorText(errno));
    }
    // The file was only read, so an error of fclose() loses nothing.
    const std::shared_ptr<std::FILE> file(opened, [](std::FILE* f) { std::fclose(f); });
    std::array<char, 4> first{};
    const std::size_t count = readBytes(opened, first);
    if (count == 0) {
        throw files::ReadError("is empty");
    }
    std::string head(first.data(), count);
    if (head.starts_with("PK")) {
        return openArchive(path, findings);
    }
    // The first bytes are kept, as a pipe cannot be rewound.
    return [file, head](std::span<char> buffer) mutable {
        if (head.empty()) {
            return readBytes(file.get(), buffer);
        }
        const std::size_t copied = head.copy(buffer.data(), buffer.size());
        head.erase(0, copied);
        return copied;
    };
}

} // namespace tvtool::fmi
