#include "files/new_file.h"

#include <fmt/format.h>

#include <cerrno>
#include <stdexcept>
#include <system_error>

#include <unistd.h>

namespace tvtool::files {

namespace fs = std::filesystem;

NewFile::NewFile(const std::string& path) : path_(path), target_(path) {
    std::error_code error;
    const fs::file_status status = fs::status(target_, error);
    if (fs::exists(status) && !fs::is_regular_file(status)) {
        throw std::runtime_error(path_ + ": is no plain file, so it cannot be replaced");
    }
    // The target of a symbolic link is replaced, and not the link.
    if (fs::is_symlink(target_, error)) {
        target_ = fs::weakly_canonical(target_, error);
        if (error) {
            fail(error.value());
        }
    }
    temporary_ = target_;
    temporary_ += fmt::format(".{}.part", getpid());
    file_.reset(std::fopen(temporary_.c_str(), "wbx"));
    if (!file_) {
        temporary_.clear();
        fail(errno);
    }
    if (fs::exists(status)) {
        fs::permissions(temporary_, status.permissions(), error);
    }
}

NewFile::~NewFile() {
    if (!temporary_.empty()) {
        std::error_code ignored;
        fs::remove(temporary_, ignored);
    }
}

void NewFile::write(const void* bytes, std::size_t count) {
    if (std::fwrite(bytes, 1, count, file_.get()) != count) {
        fail(errno);
    }
}

void NewFile::rewind() {
    if (std::fseek(file_.get(), 0, SEEK_SET) != 0) {
        fail(errno);
    }
}

void NewFile::commit() {
    // fclose() writes the rest of the buffer, which can fail.
    if (std::fclose(file_.release()) != 0) {
        fail(errno);
    }
    std::error_code error;
    fs::rename(temporary_, target_, error);
    if (error) {
        fail(error.value());
    }
    temporary_.clear();
}

void NewFile::fail(int errorNumber) const {
    throw std::runtime_error(
        path_ + ": cannot be written: " + std::generic_category().message(errorNumber));
}

} // namespace tvtool::files
