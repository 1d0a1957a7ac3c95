#include "fmi/source.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <new>
#include <string_view>
#include <system_error>
#include <vector>

namespace tvtool::fmi {

namespace {

constexpr std::size_t pieceOfArchive = 64 * 1024;
constexpr std::size_t largestPipedArchive = std::size_t{1} << 30;

std::string errorText(int errorNumber) { return std::generic_category().message(errorNumber); }

std::size_t readBytes(std::FILE* file, std::span<char> buffer) {
    const std::size_t count = std::fread(buffer.data(), 1, buffer.size(), file);
    if (count == 0 && std::ferror(file) != 0) {
        throw files::ReadError("cannot be read: " + errorText(errno));
    }
    return count;
}

/// Opens a file, or standard input for "-".
std::shared_ptr<std::FILE> openFile(const std::string& path) {
    if (path == "-") {
        return {stdin, [](std::FILE*) {}};
    }
    std::error_code ignored;
    if (std::filesystem::is_directory(path, ignored)) {
        throw files::ReadError("is a directory, not a model description");
    }
    std::FILE* const file = std::fopen(path.c_str(), "rb");
    if (file == nullptr) {
        throw files::ReadError("cannot be opened: " + errorText(errno));
    }
    // The file is only read, so an error of fclose() loses nothing.
    return {file, [](std::FILE* f) { std::fclose(f); }};
}

/// Reads the rest of an archive from a pipe into memory. Returns it as a file.
std::shared_ptr<std::FILE> readArchive(std::FILE* pipe, std::string_view head) {
    const auto bytes = std::make_shared<std::vector<char>>(head.begin(), head.end());
    for (bool isLast = false; !isLast;) {
        const std::size_t end = bytes->size();
        bytes->resize(end + std::max(pieceOfArchive, end / 2));
        const std::size_t count = readBytes(pipe, std::span(*bytes).subspan(end));
        bytes->resize(end + count);
        isLast = count == 0;
        if (bytes->size() > largestPipedArchive) {
            throw files::ReadError(
                fmt::format("is an archive of more than {} MiB, which is read from a file only",
                            largestPipedArchive >> 20));
        }
    }
    std::FILE* const file = fmemopen(bytes->data(), bytes->size(), "rb");
    if (file == nullptr) {
        throw std::bad_alloc();
    }
    return {file, [bytes](std::FILE* f) { std::fclose(f); }};
}

} // namespace

exchange::Source openSource(const std::string& path, findings::Findings& findings) {
    const std::shared_ptr<std::FILE> file = openFile(path);
    std::array<char, 4> first{};
    const std::size_t count = readBytes(file.get(), first);
    if (count == 0) {
        throw files::ReadError("is empty");
    }
    std::string head(first.data(), count);
    if (head.starts_with("PK")) {
        const bool isPipe = std::fseek(file.get(), 0, SEEK_SET) != 0;
        return openArchive(isPipe ? readArchive(file.get(), head) : file, findings);
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
