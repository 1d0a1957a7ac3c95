#include "reader.h"

#include <fndi18n/ustring.h>
#include <oxd/file.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <filesystem>
#include <fstream>
#include <new>
#include <optional>
#include <string_view>
#include <system_error>
#include <utility>

struct oxdFile_tag {
    oxd::Value variables;
};

namespace {

constexpr std::uintmax_t maximumSize = std::uintmax_t{16} << 20;

/// Reason of the last failure in a thread, shortened if it is longer. No std::string: destructors
/// of static objects, which may open files, run after those of thread-local objects.
class LastError {
  public:
    void set(std::string_view reason) {
        size_ = reason.copy(text_.data(), text_.size());
        while (size_ < reason.size() && size_ > 0 && isContinuation(reason[size_])) {
            --size_; // not within a character
        }
    }
    std::string get() const { return std::string(text_.data(), size_); }

  private:
    static bool isContinuation(char byte) {
        return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
    }

    std::array<char, 1024> text_{};
    std::size_t size_ = 0;
};

thread_local constinit LastError lastError;

/// Returns the contents of a file; no value, with the reason, if it cannot be read.
std::optional<std::string> readFile(const std::filesystem::path& path, std::string& reason) {
    std::error_code failure;
    const std::filesystem::file_status status = std::filesystem::status(path, failure);
    if (failure) {
        reason = failure.message();
        return std::nullopt;
    }
    if (!is_regular_file(status)) {
        reason = is_directory(status) ? "it is a directory" : "it is not a regular file";
        return std::nullopt;
    }
    const std::uintmax_t size = std::filesystem::file_size(path, failure);
    if (failure || size > maximumSize) {
        reason = failure ? failure.message() : "it is larger than 16 MiB";
        return std::nullopt;
    }
    errno = 0;
    std::ifstream file(path, std::ios::binary);
    std::string content(static_cast<std::size_t>(size), '\0');
    if (!file || !file.read(content.data(), static_cast<std::streamsize>(size))) {
        reason = errno != 0 ? std::generic_category().message(errno) : "it cannot be read";
        return std::nullopt;
    }
    return content;
}

std::unique_ptr<oxdFile_tag> open(const std::basic_string<char16_t>& path, const char* mode,
                                  std::string& reason) {
    if (mode == nullptr || std::string_view(mode) != "r") {
        reason = "a file is opened with the mode \"r\" alone";
        return nullptr;
    }
    if (path.find(u'\0') != path.npos) {
        reason = "its path holds a null character";
        return nullptr;
    }
    const std::optional<std::string> content =
        readFile(ConvertUStringToStdString(path, true), reason);
    if (!content) {
        return nullptr;
    }
    oxd::Reading reading = oxd::read(*content);
    if (reading.variables == nullptr) {
        reason = std::move(reading.error);
        return nullptr;
    }
    return std::make_unique<oxdFile_tag>(oxdFile_tag{std::move(reading.variables)});
}

} // namespace

oxdFile_tag* oxdOpen(const std::basic_string<char16_t>& path, const char* mode) {
    try {
        std::string reason;
        std::unique_ptr<oxdFile_tag> file = open(path, mode, reason);
        lastError.set(reason);
        return file.release();
    } catch (const std::bad_alloc&) {
        lastError.set("memory ran out");
    } catch (const std::exception& exception) { // the path is too long
        lastError.set(exception.what());
    }
    return nullptr;
}

oxArray_tag* oxdGetVariable(oxdFile_tag* file, const char* name) {
    const oxArray_tag* variable =
        file == nullptr ? nullptr : oxGetField(file->variables.get(), 0, name);
    return variable == nullptr ? nullptr : const_cast<oxArray_tag*>(oxShareArray(variable));
}

void oxdClose(oxdFile_tag* file) { delete file; }

std::string oxdLastError() { return lastError.get(); }
