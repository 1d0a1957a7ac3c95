// The description in a zip archive.
#include "fmi/source.h"
#include "text/quote.h"

#include <fmt/format.h>
#include <zip.h>

#include <cerrno>
#include <memory>
#include <new>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

namespace tvtool::fmi {

namespace {

constexpr std::string_view descriptionName = "modelDescription.xml";
constexpr std::string_view resourceForkFolder = "__MACOSX/";
const Place archivePlace{"archive", 0};

files::ReadError tooLarge(std::uint64_t maxSize) {
    return files::ReadError(fmt::format("{} in the archive unpacks to more than {} MiB",
                                        descriptionName, maxSize >> 20));
}

void throwIfOutOfMemory(const zip_error_t& error) {
    if (zip_error_code_zip(&error) == ZIP_ER_MEMORY) {
        throw std::bad_alloc();
    }
}

files::ReadError unreadable(const char* reason) {
    return files::ReadError(
        fmt::format("{} in the archive cannot be read: {}", descriptionName, reason));
}

files::ReadError unreadable(zip_error_t& error) {
    throwIfOutOfMemory(error);
    return unreadable(zip_error_strerror(&error));
}

files::ReadError notAnArchive(zip_error_t& error) {
    throwIfOutOfMemory(error);
    return files::ReadError(std::string("begins like an archive but cannot be opened as one: ") +
                            zip_error_strerror(&error));
}

/// The error of an operation that fails before there is an archive.
struct ZipError : zip_error_t {
    ZipError() { zip_error_init(this); }
    ~ZipError() { zip_error_fini(this); }
    ZipError(const ZipError&) = delete;
    ZipError& operator=(const ZipError&) = delete;
};

std::shared_ptr<zip_t> openZip(const std::string& path) {
    int code = 0;
    zip_t* const archive = zip_open(path.c_str(), ZIP_RDONLY, &code);
    if (archive == nullptr) {
        ZipError error;
        zip_error_set(&error, code, errno);
        throw notAnArchive(error);
    }
    return {archive, zip_discard};
}

std::shared_ptr<zip_t> openZip(std::vector<char> bytes) {
    const auto kept = std::make_shared<std::vector<char>>(std::move(bytes));
    ZipError error;
    zip_source_t* const source = zip_source_buffer_create(kept->data(), kept->size(), 0, &error);
    if (source == nullptr) {
        throw notAnArchive(error);
    }
    zip_t* const archive = zip_open_from_source(source, ZIP_RDONLY, &error);
    if (archive == nullptr) {
        zip_source_free(source);
        throw notAnArchive(error);
    }
    return {archive, [kept](zip_t* opened) { zip_discard(opened); }};
}

/// Returns whether the name is that of a description in a folder at the root.
bool isInFolder(std::string_view name) {
    const std::size_t slash = name.find('/');
    return slash != std::string_view::npos && name.substr(slash + 1) == descriptionName;
}

/// Returns the index of the description at the root, else of the only one in a folder.
zip_uint64_t findDescription(zip_t* archive, Remarks& remarks) {
    std::optional<zip_uint64_t> atRoot;
    std::optional<zip_uint64_t> inFolder;
    std::size_t folders = 0;
    const zip_int64_t count = zip_get_num_entries(archive, 0);
    for (zip_int64_t i = 0; i < count; ++i) {
        const zip_uint64_t index = static_cast<zip_uint64_t>(i);
        const char* const nameOrNull = zip_get_name(archive, index, 0);
        const std::string_view name = nameOrNull == nullptr ? "" : nameOrNull;
        if (name.starts_with(resourceForkFolder)) {
            if (name.ends_with(descriptionName)) {
                remarks.note(archivePlace, "entry {} is ignored", text::quoted(name));
            }
        } else if (name == descriptionName) {
            atRoot = atRoot.value_or(index);
        } else if (isInFolder(name)) {
            ++folders;
            inFolder = index;
        }
    }
    if (atRoot) {
        return *atRoot;
    }
    if (folders > 1) {
        throw files::ReadError(fmt::format("holds no {} at its root, and {} in its folders",
                                           descriptionName, folders));
    }
    if (!inFolder) {
        throw files::ReadError(fmt::format("is an archive without a {}", descriptionName));
    }
    remarks.note(archivePlace, "the description is read from {}; it belongs at the root",
                 text::quoted(zip_get_name(archive, *inFolder, 0)));
    return *inFolder;
}

Source openDescription(const std::shared_ptr<zip_t>& archive, Remarks& remarks,
                       std::uint64_t maxSize) {
    const zip_uint64_t index = findDescription(archive.get(), remarks);
    zip_stat_t facts;
    zip_stat_init(&facts);
    if (zip_stat_index(archive.get(), index, 0, &facts) != 0) {
        throw unreadable(*zip_get_error(archive.get()));
    }
    if ((facts.valid & ZIP_STAT_SIZE) != 0 && facts.size > maxSize) {
        throw tooLarge(maxSize);
    }
    if ((facts.valid & ZIP_STAT_SIZE) != 0 && facts.size == 0) {
        throw unreadable("it is empty");
    }
    zip_file_t* const opened = zip_fopen_index(archive.get(), index, 0);
    if (opened == nullptr) {
        throw unreadable(*zip_get_error(archive.get()));
    }
    // The entry is closed before the archive.
    const std::shared_ptr<zip_file_t> entry(opened,
                                            [archive](zip_file_t* file) { zip_fclose(file); });
    return [entry, maxSize, left = maxSize](std::span<char> buffer) mutable {
        const zip_int64_t count = zip_fread(entry.get(), buffer.data(), buffer.size());
        if (count < 0) {
            throw unreadable(*zip_file_get_error(entry.get()));
        }
        // The size that the archive states can be wrong.
        if (static_cast<std::uint64_t>(count) > left) {
            throw tooLarge(maxSize);
        }
        left -= static_cast<std::uint64_t>(count);
        return static_cast<std::size_t>(count);
    };
}

} // namespace

Source openArchive(const std::string& path, Remarks& remarks, std::uint64_t maxSize) {
    return openDescription(openZip(path), remarks, maxSize);
}

Source openArchive(std::vector<char> bytes, Remarks& remarks) {
    return openDescription(openZip(std::move(bytes)), remarks, largestDescription);
}

} // namespace tvtool::fmi
