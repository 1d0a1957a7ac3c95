#include "files/input_file.h"

#include "files/file_error.h"
#include "files/output_file.h"
#include "files/stream_errors.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <system_error>
#include <utility>

namespace tvtool::files {

namespace fs = std::filesystem;

InputFile::InputFile(std::string path, std::istream& standardInput)
    : path_(std::move(path)), is_(path_ == standardStream ? standardInput : file_) {
    std::error_code error;
    if (path_ != standardStream) {
        if (fs::is_directory(path_, error)) {
            fail("is a directory");
        }
        file_.open(path_, std::ios::binary);
        if (!file_) {
            fail("cannot be opened: " + std::generic_category().message(errno));
        }
        if (fs::is_regular_file(path_, error)) {
            size_ = fs::file_size(path_);
        }
    }
    throwOnFailure(is_);
}

void InputFile::fail(const std::string& sentence) const { throw FileError(path_, sentence); }

std::size_t InputFile::readStream(char* bytes, std::size_t most) {
    try {
        is_.read(bytes, static_cast<std::streamsize>(most));
        return static_cast<std::size_t>(is_.gcount());
    } catch (const std::ios_base::failure& failure) {
        fail(failureText(failure));
    }
}

std::string_view InputFile::peek(std::size_t count) {
    const std::size_t known = ahead_.size();
    if (known < count) {
        ahead_.resize(count);
        ahead_.resize(known + readStream(ahead_.data() + known, count - known));
    }
    return std::string_view(ahead_).substr(0, count);
}

std::size_t InputFile::read(void* bytes, std::size_t most) {
    const std::size_t known = ahead_.copy(static_cast<char*>(bytes), most);
    ahead_.erase(0, known);
    const std::size_t count =
        known + (known < most ? readStream(static_cast<char*>(bytes) + known, most - known) : 0);
    done_ += count;
    return count;
}

std::optional<std::uint64_t> InputFile::bytesLeft() const {
    return size_ ? std::optional(*size_ - done_) : std::nullopt;
}

} // namespace tvtool::files
