#include "exchange/archive.h"

#include "exchange/zip_input.h"

#include <fmt/format.h>
#include <zip.h>

#include <algorithm>
#include <new>
#include <string>
#include <utility>
#include <vector>

namespace tvtool::exchange {

namespace {

files::ReadError tooLarge(std::string_view name, std::uint64_t maxSize) {
    return files::ReadError(
        fmt::format("{} in the archive unpacks to more than {} MiB", name, maxSize >> 20));
}

files::ReadError unreadable(std::string_view name, const char* reason) {
    return files::ReadError(fmt::format("{} in the archive cannot be read: {}", name, reason));
}

files::ReadError unreadable(std::string_view name, zip_error_t& error) {
    throwIfOutOfMemory(error);
    return unreadable(name, zip_error_strerror(&error));
}

} // namespace

Source openEntry(const std::shared_ptr<zip_t>& archive, std::uint64_t index, std::string_view name,
                 std::uint64_t maxSize) {
    zip_stat_t facts;
    zip_stat_init(&facts);
    if (zip_stat_index(archive.get(), index, 0, &facts) != 0) {
        throw unreadable(name, *zip_get_error(archive.get()));
    }
    if ((facts.valid & ZIP_STAT_SIZE) != 0 && facts.size > maxSize) {
        throw tooLarge(name, maxSize);
    }
    if ((facts.valid & ZIP_STAT_SIZE) != 0 && facts.size == 0) {
        throw unreadable(name, "it is empty");
    }
    zip_file_t* const opened = zip_fopen_index(archive.get(), index, 0);
    if (opened == nullptr) {
        throw unreadable(name, *zip_get_error(archive.get()));
    }
    // The entry is closed before the archive.
    const std::shared_ptr<zip_file_t> entry(opened,
                                            [archive](zip_file_t* file) { zip_fclose(file); });
    return
        [entry, maxSize, name = std::string(name), left = maxSize](std::span<char> buffer) mutable {
            const zip_int64_t count = zip_fread(entry.get(), buffer.data(), buffer.size());
            if (count < 0) {
                throw unreadable(name, *zip_file_get_error(entry.get()));
            }
            // The size that the archive states can be wrong.
            if (static_cast<std::uint64_t>(count) > left) {
                throw tooLarge(name, maxSize);
            }
            left -= static_cast<std::uint64_t>(count);
            return static_cast<std::size_t>(count);
        };
}

std::optional<std::uint64_t> findEntry(zip_t& archive, std::string_view name) {
    const zip_int64_t index = zip_name_locate(&archive, std::string(name).c_str(), 0);
    return index < 0 ? std::nullopt : std::optional(static_cast<std::uint64_t>(index));
}

Source counted(Source source, Allowance& allowance) {
    return [source = std::move(source), &allowance](std::span<char> buffer) {
        const std::size_t count = source(buffer);
        if (count > allowance.left) {
            throw files::ReadError(allowance.excess);
        }
        allowance.left -= count;
        return count;
    };
}

std::shared_ptr<std::FILE> readIntoMemory(const Source& source) {
    constexpr std::size_t piece = 64 * 1024;
    const auto bytes = std::make_shared<std::vector<char>>();
    for (bool isLast = false; !isLast;) {
        const std::size_t end = bytes->size();
        bytes->resize(end + std::max(piece, end / 2));
        const std::size_t count = source(std::span(*bytes).subspan(end));
        bytes->resize(end + count);
        isLast = count == 0;
    }
    // An empty buffer cannot be opened.
    bytes->reserve(1);
    std::FILE* const file = fmemopen(bytes->data(), std::max<std::size_t>(bytes->size(), 1), "rb");
    if (file == nullptr) {
        throw std::bad_alloc();
    }
    return {file, [bytes](std::FILE* f) { std::fclose(f); }};
}

} // namespace tvtool::exchange
