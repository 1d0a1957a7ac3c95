#include "fmi/source.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <utility>

namespace tvtool::fmi {

namespace {

struct CloseFile {
    void operator()(std::FILE* file) const noexcept {
        // It was only read, so there is nothing that closing could lose.
        static_cast<void>(std::fclose(file));
    }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

std::string reasonOf(int errorNumber) { return std::generic_category().message(errorNumber); }

std::size_t readSome(std::FILE* file, std::span<char> buffer) {
    const std::size_t count = std::fread(buffer.data(), 1, buffer.size(), file);
    if (count == 0 && std::ferror(file) != 0) {
        throw files::ReadError("cannot be read: " + reasonOf(errno));
    }
    return count;
}

/// A plain file, the first bytes of which have been looked at already. It is not rewound, so that a
/// pipe will do.
class FileSource : public Source {
  public:
    FileSource(File file, std::string head) : file_(std::move(file)), head_(std::move(head)) {}

    std::size_t read(std::span<char> buffer) override {
        if (head_.empty()) {
            return readSome(file_.get(), buffer);
        }
        const std::size_t count = head_.copy(buffer.data(), buffer.size());
        head_.erase(0, count);
        return count;
    }

  private:
    File file_;
    std::string head_;
};

} // namespace

std::unique_ptr<Source> openSource(const std::string& path, Remarks& remarks) {
    std::error_code ignored;
    if (std::filesystem::is_directory(path, ignored)) {
        throw files::ReadError("is a directory, not a model description");
    }
    File file(std::fopen(path.c_str(), "rb"));
    if (!file) {
        throw files::ReadError("cannot be opened: " + reasonOf(errno));
    }
    std::array<char, 4> head{};
    const std::size_t count = readSome(file.get(), head);
    if (count == 0) {
        throw files::ReadError("is empty");
    }
    const std::string_view beginning(head.data(), count);
    if (beginning.starts_with("PK")) {
        file.reset();
        return openArchive(path, remarks);
    }
    return std::make_unique<FileSource>(std::move(file), std::string(beginning));
}

} // namespace tvtool::fmi
