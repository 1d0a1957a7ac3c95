#include "exchange/input.h"

#include "exchange/archive.h"

#include <array>
#include <cerrno>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

namespace tvtool::exchange {

namespace {

/// An archive in a pipe is read into memory.
constexpr Allowance pipedArchive{
    std::uint64_t{1} << 30, "is an archive of more than 1024 MiB, which is read from a file only"};

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

/// Returns the first bytes, at most four.
std::string readHead(const Source& source) {
    std::array<char, 4> first{};
    std::size_t count = 0;
    while (count < first.size()) {
        const std::size_t added = source(std::span(first).subspan(count));
        if (added == 0) {
            break;
        }
        count += added;
    }
    if (count == 0) {
        throw files::ReadError("is empty");
    }
    return {first.data(), count};
}

/// Returns a source of the first bytes and the rest, as neither a pipe nor an entry can be rewound.
Source withHead(std::string head, Source rest) {
    return [head = std::move(head), rest = std::move(rest)](std::span<char> buffer) mutable {
        if (head.empty()) {
            return rest(buffer);
        }
        const std::size_t copied = head.copy(buffer.data(), buffer.size());
        head.erase(0, copied);
        return copied;
    };
}

bool isArchive(std::string_view head) { return head.starts_with("PK"); }

} // namespace

Input openInput(const std::string& path) {
    const std::shared_ptr<std::FILE> file = openFile(path);
    const Source rest = [file](std::span<char> buffer) { return readBytes(file.get(), buffer); };
    const std::string head = readHead(rest);
    if (isArchive(head) && std::fseek(file.get(), 0, SEEK_SET) == 0) {
        return {file, nullptr};
    }
    Allowance allowance = pipedArchive;
    return isArchive(head)
               ? Input{readIntoMemory(counted(withHead(head, rest), allowance)), nullptr}
               : Input{nullptr, withHead(head, rest)};
}

Input openInput(Source source) {
    const std::string head = readHead(source);
    source = withHead(head, std::move(source));
    return isArchive(head) ? Input{readIntoMemory(source), nullptr}
                           : Input{nullptr, std::move(source)};
}

} // namespace tvtool::exchange
