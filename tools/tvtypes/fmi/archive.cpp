// The description inside an archive.
#include "fmi/source.h"
#include "text/quote.h"

#include <fmt/format.h>
#include <zip.h>

#include <optional>
#include <string_view>
#include <utility>

namespace tvtool::fmi {

namespace {

constexpr std::string_view descriptionName = "modelDescription.xml";
constexpr std::string_view resourceForkFolder = "__MACOSX/";
const Place archivePlace{"archive", 0};

struct DiscardArchive {
    void operator()(zip_t* archive) const noexcept { zip_discard(archive); }
};
struct CloseEntry {
    void operator()(zip_file_t* entry) const noexcept { zip_fclose(entry); }
};
using Archive = std::unique_ptr<zip_t, DiscardArchive>;
using Entry = std::unique_ptr<zip_file_t, CloseEntry>;

files::ReadError tooLarge(std::uint64_t maxSize) {
    return files::ReadError(fmt::format("{} in the archive unpacks to more than {} MiB",
                                        descriptionName, maxSize >> 20));
}

files::ReadError unreadable(const char* reason) {
    return files::ReadError(
        fmt::format("{} in the archive cannot be read: {}", descriptionName, reason));
}

Archive openZip(const std::string& path) {
    int code = 0;
    Archive archive(zip_open(path.c_str(), ZIP_RDONLY, &code));
    if (!archive) {
        zip_error_t error;
        zip_error_init_with_code(&error, code);
        const std::string reason = zip_error_strerror(&error);
        zip_error_fini(&error);
        throw files::ReadError("begins like an archive but cannot be opened as one: " + reason);
    }
    return archive;
}

/// Whether a name is that of a description in a folder that lies at the root.
bool isInSingleFolder(std::string_view name) {
    const std::size_t slash = name.find('/');
    return slash != std::string_view::npos && name.substr(slash + 1) == descriptionName;
}

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
                remarks.note(archivePlace, fmt::format("entry {} is ignored", text::quoted(name)));
            }
        } else if (name == descriptionName) {
            atRoot = atRoot.value_or(index);
        } else if (isInSingleFolder(name)) {
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
    remarks.note(archivePlace,
                 fmt::format("the description is read from {}; it belongs at the root",
                             text::quoted(zip_get_name(archive, *inFolder, 0))));
    return *inFolder;
}

class ArchiveSource : public Source {
  public:
    ArchiveSource(Archive archive, Entry entry, std::uint64_t maxSize)
        : archive_(std::move(archive)),
          entry_(std::move(entry)),
          left_(maxSize),
          maxSize_(maxSize) {}

    std::size_t read(std::span<char> buffer) override {
        const zip_int64_t count = zip_fread(entry_.get(), buffer.data(), buffer.size());
        if (count < 0) {
            throw unreadable(zip_file_strerror(entry_.get()));
        }
        const auto bytes = static_cast<std::uint64_t>(count);
        // The size that the archive states need not be true.
        if (bytes > left_) {
            throw tooLarge(maxSize_);
        }
        left_ -= bytes;
        return static_cast<std::size_t>(bytes);
    }

  private:
    Archive archive_;
    Entry entry_; // after the archive, so that it is closed first
    std::uint64_t left_;
    std::uint64_t maxSize_;
};

} // namespace

std::unique_ptr<Source> openArchive(const std::string& path, Remarks& remarks,
                                    std::uint64_t maxSize) {
    Archive archive = openZip(path);
    const zip_uint64_t index = findDescription(archive.get(), remarks);
    zip_stat_t facts;
    zip_stat_init(&facts);
    if (zip_stat_index(archive.get(), index, 0, &facts) != 0) {
        throw unreadable(zip_strerror(archive.get()));
    }
    if ((facts.valid & ZIP_STAT_SIZE) != 0 && facts.size > maxSize) {
        throw tooLarge(maxSize);
    }
    if ((facts.valid & ZIP_STAT_SIZE) != 0 && facts.size == 0) {
        throw unreadable("it is empty");
    }
    Entry entry(zip_fopen_index(archive.get(), index, 0));
    if (!entry) {
        throw unreadable(zip_strerror(archive.get()));
    }
    return std::make_unique<ArchiveSource>(std::move(archive), std::move(entry), maxSize);
}

} // namespace tvtool::fmi
