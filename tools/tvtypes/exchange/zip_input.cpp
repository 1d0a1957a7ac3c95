#include "exchange/zip_input.h"

#include "files/read_error.h"

#include <fmt/format.h>
#include <zip.h>

#include <cerrno>
#include <new>
#include <utility>

namespace tvtool::exchange {

namespace {

/// An error of the zip library.
struct ZipError : zip_error_t {
    ZipError() { zip_error_init(this); }
    ~ZipError() { zip_error_fini(this); }
    ZipError(const ZipError&) = delete;
    ZipError& operator=(const ZipError&) = delete;
};

/// Executes the commands of the zip library on a file.
class ZipInput {
  public:
    ZipInput(std::shared_ptr<std::FILE> file, std::uint64_t maxDirectory)
        : file_(std::move(file)), left_(maxDirectory) {}

    static zip_int64_t execute(void* input, void* data, zip_uint64_t length,
                               zip_source_cmd_t command) {
        return static_cast<ZipInput*>(input)->execute(data, length, command);
    }

    void endOpening() { isOpening_ = false; }
    bool hasExceededLimit() const { return hasExceededLimit_; }

  private:
    zip_int64_t execute(void* data, zip_uint64_t length, zip_source_cmd_t command) {
        switch (command) {
        case ZIP_SOURCE_OPEN:
            return seek(0, SEEK_SET);
        case ZIP_SOURCE_READ:
            return read(data, length);
        case ZIP_SOURCE_CLOSE:
            return 0;
        case ZIP_SOURCE_STAT:
            return state(*static_cast<zip_stat_t*>(data));
        case ZIP_SOURCE_SEEK: {
            const auto* const target = ZIP_SOURCE_GET_ARGS(zip_source_args_seek_t, data, length,
                                                           static_cast<zip_error_t*>(&error_));
            return target == nullptr ? -1 : seek(target->offset, target->whence);
        }
        case ZIP_SOURCE_TELL:
            return ftello(file_.get());
        case ZIP_SOURCE_ERROR:
            return zip_error_to_data(&error_, data, length);
        case ZIP_SOURCE_FREE:
            delete this;
            return 0;
        case ZIP_SOURCE_SUPPORTS:
            return zip_source_make_command_bitmap(
                ZIP_SOURCE_OPEN, ZIP_SOURCE_READ, ZIP_SOURCE_CLOSE, ZIP_SOURCE_STAT,
                ZIP_SOURCE_SEEK, ZIP_SOURCE_TELL, ZIP_SOURCE_ERROR, ZIP_SOURCE_FREE, -1);
        default:
            return fail(ZIP_ER_OPNOTSUPP);
        }
    }

    zip_int64_t fail(int code) {
        zip_error_set(&error_, code, errno);
        return -1;
    }

    zip_int64_t seek(zip_int64_t offset, int whence) {
        return fseeko(file_.get(), offset, whence) == 0 ? 0 : fail(ZIP_ER_SEEK);
    }

    zip_int64_t state(zip_stat_t& facts) {
        const off_t position = ftello(file_.get());
        if (position < 0 || seek(0, SEEK_END) < 0) {
            return fail(ZIP_ER_SEEK);
        }
        zip_stat_init(&facts);
        facts.size = static_cast<zip_uint64_t>(ftello(file_.get()));
        facts.valid = ZIP_STAT_SIZE;
        return seek(position, SEEK_SET) < 0 ? -1 : zip_int64_t{sizeof facts};
    }

    zip_int64_t read(void* data, zip_uint64_t length) {
        const std::size_t count = std::fread(data, 1, length, file_.get());
        if (count == 0 && std::ferror(file_.get()) != 0) {
            return fail(ZIP_ER_READ);
        }
        hasExceededLimit_ = isOpening_ && count > left_;
        if (hasExceededLimit_) {
            return fail(ZIP_ER_NOZIP);
        }
        left_ -= isOpening_ ? count : 0;
        return static_cast<zip_int64_t>(count);
    }

    const std::shared_ptr<std::FILE> file_;
    std::uint64_t left_; ///< number of bytes that may be read until the archive is open
    bool isOpening_ = true;
    bool hasExceededLimit_ = false;
    ZipError error_;
};

files::ReadError cannotBeOpened(const std::string& reason) {
    return files::ReadError("begins like an archive but cannot be opened as one: " + reason);
}

files::ReadError cannotBeOpened(zip_error_t& error) {
    throwIfOutOfMemory(error);
    return cannotBeOpened(zip_error_strerror(&error));
}

} // namespace

void throwIfOutOfMemory(const zip_error& error) {
    if (zip_error_code_zip(&error) == ZIP_ER_MEMORY) {
        throw std::bad_alloc();
    }
}

std::shared_ptr<zip> openZip(std::shared_ptr<std::FILE> file, std::uint64_t maxDirectory) {
    ZipError error;
    auto input = std::make_unique<ZipInput>(std::move(file), maxDirectory);
    zip_source_t* const source = zip_source_function_create(ZipInput::execute, input.get(), &error);
    if (source == nullptr) {
        throw cannotBeOpened(error);
    }
    ZipInput& owned = *input.release(); // ZIP_SOURCE_FREE deletes it
    zip_t* const archive = zip_open_from_source(source, ZIP_RDONLY, &error);
    if (archive == nullptr) {
        const bool isTooLong = owned.hasExceededLimit();
        zip_source_free(source);
        throw isTooLong
            ? cannotBeOpened(fmt::format("its directory is longer than {} MiB", maxDirectory >> 20))
            : cannotBeOpened(error);
    }
    owned.endOpening();
    return {archive, zip_discard};
}

} // namespace tvtool::exchange
