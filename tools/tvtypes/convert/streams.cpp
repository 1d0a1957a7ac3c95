#include "convert/streams.h"

#include "convert/values.h"
#include "files/output_file.h"
#include "files/stream_errors.h"

#include <fmt/format.h>

#include <algorithm>
#include <bit>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <iomanip>
#include <system_error>
#include <utility>

namespace tvtool::convert {

namespace {

namespace fs = std::filesystem;

static_assert(std::endian::native == std::endian::little,
              "raw files are little-endian, and are read and written as in memory");

/// Longer than any double with all its digits.
constexpr int maxWord = 4096;

class TextSource : public Source {
  public:
    TextSource(std::istream& is, Type type) : is_(is), type_(type) { files::throwOnFailure(is); }

    Element element() const override { return {type_}; }

    std::size_t read(std::byte* elements, std::size_t most) override {
        std::size_t count = 0;
        for (; count < most && nextWord(); ++count) {
            readWord(elements + count * sizeOf(type_));
            ++index_;
        }
        return count;
    }

  private:
    bool nextWord() {
        try {
            return static_cast<bool>(is_ >> std::setw(maxWord) >> word_);
        } catch (const std::ios_base::failure& failure) {
            throw Error("standard input " + files::failureText(failure));
        }
    }

    void readWord(std::byte* element) const {
        try {
            if (word_.size() + 1 >= maxWord) {
                throw Error("is too long");
            }
            readValue(word_, type_, element);
        } catch (const Error& error) {
            constexpr std::size_t shown = 40;
            throw Error(fmt::format("the value at index {}, \"{}{}\", {} (read as {}; the first "
                                    "index is 0)",
                                    index_, word_.substr(0, shown),
                                    word_.size() > shown ? "..." : "", error.what(),
                                    typeName(type_)));
        }
    }

    std::istream& is_;
    Type type_;
    std::uint64_t index_ = 0;
    std::string word_;
};

class FileSource : public Source {
  public:
    FileSource(const std::string& path, Format format, std::optional<Type> type)
        : path_(path), file_(path, std::ios::binary) {
        std::error_code ignored;
        if (fs::is_directory(path, ignored)) {
            fail("is a directory");
        }
        if (!file_) {
            fail("cannot be opened: " + std::generic_category().message(errno));
        }
        files::throwOnFailure(file_);
        if (format == Format::Npy) {
            readHeader(type);
        } else if (type) {
            element_ = {*type};
        } else {
            fail("a raw file needs --from, the type of its values");
        }
        if (fs::is_regular_file(path, ignored)) {
            checkLength(fs::file_size(path));
        }
    }

    Element element() const override { return element_; }
    std::optional<std::uint64_t> count() const override { return count_; }
    std::optional<Shape> shape() const override { return shape_; }

    std::size_t read(std::byte* elements, std::size_t most) override {
        const std::size_t size = sizeOf(element_);
        if (count_) {
            most = static_cast<std::size_t>(std::min<std::uint64_t>(most, *count_ - done_));
        }
        const std::size_t bytes = readBytes(elements, most * size);
        if (bytes % size != 0 || (count_ && bytes != most * size)) {
            fail("ends within its elements");
        }
        if (bigEndian_) {
            const std::size_t value = sizeOf(element_.type);
            for (std::byte* begin = elements; begin < elements + bytes; begin += value) {
                std::reverse(begin, begin + value);
            }
        }
        done_ += bytes / size;
        if (count_ == done_ && !isAtEnd()) {
            fail("goes on behind its last element");
        }
        return bytes / size;
    }

  private:
    [[noreturn]] void fail(const std::string& what) const { throw Error(path_ + ": " + what); }

    std::size_t readBytes(std::byte* bytes, std::size_t most) {
        try {
            file_.read(reinterpret_cast<char*>(bytes), static_cast<std::streamsize>(most));
            return static_cast<std::size_t>(file_.gcount());
        } catch (const std::ios_base::failure& failure) {
            fail(files::failureText(failure));
        }
    }

    bool isAtEnd() {
        try {
            return file_.peek() == std::ifstream::traits_type::eof();
        } catch (const std::ios_base::failure& failure) {
            fail(files::failureText(failure));
        }
    }

    void readHeader(std::optional<Type> type) {
        NpyHeader header;
        try {
            header = readNpyHeader(file_);
        } catch (const Error& error) {
            fail(error.what());
        } catch (const std::ios_base::failure& failure) {
            fail(files::failureText(failure));
        }
        element_ = header.element;
        if (type && *type != element_.type) {
            fail(fmt::format("holds {}, but --from says {}", elementName(element_),
                             typeName(*type)));
        }
        bigEndian_ = header.bigEndian;
        count_ = header.count;
        shape_ = std::move(header.shape);
    }

    /// Checks the size of a regular file before anything is converted.
    void checkLength(std::uint64_t length) {
        const std::size_t size = sizeOf(element_);
        const std::uint64_t bytes = length - static_cast<std::uint64_t>(file_.tellg());
        if (count_ && *count_ * size != bytes) {
            fail(fmt::format("its shape needs {} bytes of elements, there are {}", *count_ * size,
                             bytes));
        }
        if (bytes % size != 0) {
            fail(fmt::format("its size, {} bytes, is no multiple of the {} of a {}", bytes, size,
                             elementName(element_)));
        }
        count_ = bytes / size;
    }

    std::string path_;
    std::ifstream file_;
    Element element_;
    bool bigEndian_ = false;
    std::optional<std::uint64_t> count_;
    std::optional<Shape> shape_;
    std::uint64_t done_ = 0;
};

class TextSink : public Sink {
  public:
    TextSink(std::ostream& os, Element element) : os_(os), element_(element) {}

    void write(const std::byte* elements, std::size_t count) override {
        text_.clear();
        for (std::size_t i = 0; i < count; ++i) {
            appendElement(text_, element_, elements + i * sizeOf(element_));
            text_ += '\n';
        }
        check(os_ << text_);
    }

    void finish() override { check(os_.flush()); }

  private:
    static void check(const std::ostream& os) {
        if (!os) {
            throw Error("the output cannot be written");
        }
    }

    std::ostream& os_;
    Element element_;
    std::string text_;
};

class FileSink : public Sink {
  public:
    FileSink(const std::string& path, const std::string& input, Format format, Element element,
             const std::optional<Shape>& shape)
        : file_(path, input, files::InPlace::Allowed),
          element_(element),
          needsCount_(format == Format::Npy && !shape) {
        if (needsCount_) {
            // Throws here for a pipe, and not after all elements.
            file_.rewind();
        }
        if (format == Format::Npy) {
            writeHeader(shape ? *shape : Shape{{0}});
        }
    }

    void write(const std::byte* elements, std::size_t count) override {
        file_.write(elements, count * sizeOf(element_));
        count_ += count;
    }

    void finish() override {
        if (needsCount_) {
            file_.rewind();
            writeHeader({{count_}});
        }
        file_.commit();
    }

  private:
    void writeHeader(const Shape& shape) {
        const std::string header = npyHeader(element_, shape);
        file_.write(header.data(), header.size());
    }

    files::OutputFile file_;
    Element element_;
    bool needsCount_; ///< whether the header is to get the count, which is known at the end
    std::uint64_t count_ = 0;
};

} // namespace

Format formatOf(const std::string& path) {
    return path.ends_with(".npy") ? Format::Npy : Format::Raw;
}

std::unique_ptr<Source> readText(std::istream& is, Type type) {
    return std::make_unique<TextSource>(is, type);
}

std::unique_ptr<Source> openFile(const std::string& path, Format format, std::optional<Type> type) {
    return std::make_unique<FileSource>(path, format, type);
}

std::unique_ptr<Sink> writeText(std::ostream& os, Element element) {
    return std::make_unique<TextSink>(os, element);
}

std::unique_ptr<Sink> createFile(const std::string& path, const std::string& input, Format format,
                                 Element element, const std::optional<Shape>& shape) {
    return std::make_unique<FileSink>(path, input, format, element, shape);
}

} // namespace tvtool::convert
