#include "files/output_file.h"

#include "files/file_error.h"
#include "files/temporary_file.h"

#include <cerrno>
#include <charconv>
#include <filesystem>
#include <stdexcept>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tvtool::files {

namespace fs = std::filesystem;

namespace {

/// Returns the number of the open descriptor that a link in /dev/fd or /proc/self/fd names.
std::optional<int> descriptorNumber(const fs::path& link) {
    std::error_code error;
    const fs::path descriptors = fs::canonical("/proc/self/fd", error);
    if (error || fs::canonical(link.parent_path(), error) != descriptors) {
        return std::nullopt;
    }
    const std::string name = link.filename();
    int number = 0;
    const auto [stop, code] = std::from_chars(name.data(), name.data() + name.size(), number);
    return code == std::errc() ? std::optional(number) : std::nullopt;
}

/// What a path refers to: a file that may be missing, or an open descriptor.
struct Target {
    fs::path path; ///< without a symbolic link at its end
    std::optional<int> descriptor;
    std::optional<struct stat> status; ///< empty if there is no file

    bool isRegular() const { return status && S_ISREG(status->st_mode); }
    /// Returns whether the target is written directly, because a rename would detach it from its
    /// readers.
    bool isStream() const {
        return descriptor || (status && (S_ISCHR(status->st_mode) || S_ISFIFO(status->st_mode)));
    }
    /// Returns a new descriptor of a stream, or -1 with errno set.
    int openStream() const {
        return descriptor ? dup(*descriptor) : open(path.c_str(), O_WRONLY | O_NOCTTY | O_CLOEXEC);
    }
};

/// Follows the chain of symbolic links that begins at a path. Throws a std::system_error.
Target followLinks(const std::string& path) {
    constexpr int mostLinks = 40;
    Target target{path, std::nullopt, std::nullopt};
    if (path == standardStream) {
        target.descriptor = STDOUT_FILENO;
    }
    std::error_code error;
    for (int links = 0; !target.descriptor && fs::is_symlink(target.path, error); ++links) {
        if (links == mostLinks) {
            throw std::system_error(ELOOP, std::generic_category());
        }
        target.descriptor = descriptorNumber(target.path);
        target.path = target.path.parent_path() / fs::read_symlink(target.path);
    }
    struct stat status {};
    if ((target.descriptor ? fstat(*target.descriptor, &status)
                           : stat(target.path.c_str(), &status)) == 0) {
        target.status = status;
    } else if (target.descriptor || errno != ENOENT) {
        throw std::system_error(errno, std::generic_category());
    }
    return target;
}

bool isSameFile(const struct stat& file, const std::string& path) {
    struct stat other {};
    return stat(path.c_str(), &other) == 0 && other.st_dev == file.st_dev &&
           other.st_ino == file.st_ino;
}

} // namespace

OutputFile::Descriptor::~Descriptor() { close(number); }

OutputFile::OutputFile(const std::string& path, const std::string& input, InPlace inPlace)
    : path_(path) {
    try {
        const Target target = followLinks(path);
        if (target.status && !target.isRegular() && !target.isStream()) {
            throw FileError(path_, "is no plain file, so it cannot be replaced");
        }
        if (target.isRegular() && (inPlace == InPlace::Refused || target.isStream()) &&
            isSameFile(*target.status, input)) {
            throw FileError(path_, "is the input, so it is not overwritten");
        }
        if (target.isStream()) {
            openStream(target.openStream());
        } else {
            createTemporary(target.path, target.status ? &*target.status : nullptr);
        }
    } catch (const std::system_error& error) {
        fail(error.code().value());
    }
}

OutputFile::~OutputFile() = default;

void OutputFile::createTemporary(const fs::path& target, const struct stat* replaced) {
    name_ = target.filename();
    if (name_.empty()) {
        fail(ENOENT);
    }
    const fs::path folder = target.parent_path();
    folder_.emplace(open(folder.empty() ? "." : folder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    if (folder_->number < 0) {
        fail(errno);
    }
    temporary_ = std::make_unique<TemporaryFile>(folder_->number);
    const int descriptor = temporary_->descriptor();
    openStream(descriptor);
    if (replaced != nullptr) {
        // Only the superuser can give a file away; a file of another user gets a new owner.
        [[maybe_unused]] const int ignored = fchown(descriptor, replaced->st_uid, replaced->st_gid);
        if (fchmod(descriptor, replaced->st_mode & ALLPERMS) != 0) {
            fail(errno);
        }
    }
}

void OutputFile::openStream(int descriptor) {
    file_.reset(descriptor < 0 ? nullptr : fdopen(descriptor, "wb"));
    if (!file_) {
        const int error = errno;
        if (descriptor >= 0) {
            close(descriptor);
        }
        fail(error);
    }
}

void OutputFile::write(const void* bytes, std::size_t count) {
    if (std::fwrite(bytes, 1, count, file_.get()) != count) {
        fail(errno);
    }
}

void OutputFile::rewind() {
    if (std::fseek(file_.get(), 0, SEEK_SET) != 0) {
        fail(errno);
    }
}

void OutputFile::commit() {
    // fclose() writes the rest of the buffer, which can fail.
    if (std::fclose(file_.release()) != 0) {
        fail(errno);
    }
    if (temporary_) {
        try {
            temporary_->rename(name_);
        } catch (const std::system_error& error) {
            fail(error.code().value());
        }
    }
}

void OutputFile::fail(int errorNumber) const {
    throw FileError(path_, "cannot be written: " + std::generic_category().message(errorNumber));
}

} // namespace tvtool::files
