#include "convert/streams.h"

#include "convert/values.h"
#include "files/file_error.h"
#include "files/input_file.h"
#include "files/output_file.h"
#include "files/stream_errors.h"

#include <fmt/format.h>

#include <algorithm>
#include <bit>
#include <cstring>
#include <iomanip>
#include <utility>

namespace tvtool::convert {

namespace {

static_assert(std::endian::native == std::endian::little,
              "raw files are little-endian, and are read and written as in memory");

/// Longer than any double with all its digits.
constexpr int maxWord = 4096;

constexpr std::string_view archiveMagic = "PK\3\4";
constexpr const char* archiveError =
    "is a .npz archive of several arrays; save one of them as .npy, "
    "in Python by numpy.save(FILE, archive[\"NAME\"])";

class TextSource : public Source {
  public:
    TextSource(std::istream& is, StoredType type) : is_(is), type_(type) {
        files::throwOnFailure(is);
    }

    Element element() const override { return {type_.type}; }
    StoredType storedType() const override { return type_; }

    std::size_t read(std::byte* elements, std::size_t most) override {
        std::size_t count = 0;
        for (; count < most && nextWord(); ++count) {
            readWord(elements + count * sizeOf(type_.type));
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
        if (index_ == 0 && word_.starts_with(archiveMagic)) {
            throw Error(std::string("standard input ") + archiveError);
        }
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
    StoredType type_;
    std::uint64_t index_ = 0;
    std::string word_;
};

class FileSource : public Source {
  public:
    FileSource(const std::string& path, std::istream& standardInput, std::optional<Format> format,
               std::optional<StoredType> type)
        : file_(path, standardInput) {
        if (!format) {
            format = detectFormat(path);
        }
        if (*format == Format::Npy) {
            readHeader(type);
        } else if (type) {
            stored_ = *type;
            element_ = {stored_.type};
        } else {
            file_.fail("a raw file needs --from, the type of its values");
        }
        if (const auto bytes = file_.bytesLeft()) {
            checkLength(*bytes);
        }
    }

    Element element() const override { return element_; }
    StoredType storedType() const override { return stored_; }
    std::optional<std::uint64_t> count() const override { return count_; }
    std::optional<Shape> shape() const override { return shape_; }

    std::size_t read(std::byte* elements, std::size_t most) override {
        const std::size_t size = sizeOf(element_);
        if (count_) {
            most = static_cast<std::size_t>(std::min<std::uint64_t>(most, *count_ - done_));
        }
        const std::size_t bytes = file_.read(elements, most * size);
        if (bytes % size != 0 || (count_ && bytes != most * size)) {
            file_.fail("ends within its elements");
        }
        if (bigEndian_) {
            const std::size_t value = sizeOf(element_.type);
            for (std::byte* begin = elements; begin < elements + bytes; begin += value) {
                std::reverse(begin, begin + value);
            }
        }
        if (stored_.wide != Wide::None) {
            convertWide(elements, bytes / size);
        }
        done_ += bytes / size;
        if (count_ == done_ && !file_.isAtEnd()) {
            file_.fail("goes on behind its last element");
        }
        return bytes / size;
    }

  private:
    Format detectFormat(const std::string& path) {
        const bool isArchive = file_.peek(4) == archiveMagic || file_.peek(4) == "PK\5\6";
        if (file_.peek(npyMagic.size()) == npyMagic || (path.ends_with(".npy") && !isArchive)) {
            return Format::Npy;
        }
        if (isArchive) {
            file_.fail(std::string(archiveError) +
                       "; to read its bytes as values, add --format raw");
        }
        return Format::Raw;
    }

    void convertWide(std::byte* elements, std::size_t count) const {
        const std::size_t exact = toDoubles(stored_.wide, elements, count);
        if (exact < count) {
            const std::byte* const value = elements + exact * sizeof(std::int64_t);
            file_.fail(fmt::format("the value at index {}, {}, is no integer that a double has "
                                   "exactly (the first index is 0)",
                                   done_ + exact,
                                   stored_.wide == Wide::Int64
                                       ? std::to_string(loaded<std::int64_t>(value))
                                       : std::to_string(loaded<std::uint64_t>(value))));
        }
    }

    template <class Integer>
    static Integer loaded(const std::byte* bytes) {
        Integer integer{};
        std::memcpy(&integer, bytes, sizeof integer);
        return integer;
    }

    void readHeader(std::optional<StoredType> type) {
        NpyHeader header;
        try {
            header = readNpyHeader(file_);
        } catch (const Error& error) {
            file_.fail(error.what());
        }
        element_ = header.element;
        stored_ = {element_.type, header.wide};
        if (type && *type != stored_) {
            file_.fail(fmt::format("holds {}, but --from is {}",
                                   element_.isComplex ? elementName(element_) : typeName(stored_),
                                   typeName(*type)));
        }
        bigEndian_ = header.bigEndian;
        count_ = header.count;
        shape_ = std::move(header.shape);
    }

    /// Checks the size of a regular file before anything is converted.
    void checkLength(std::uint64_t bytes) {
        const std::size_t size = sizeOf(element_);
        if (count_ && *count_ * size != bytes) {
            file_.fail(fmt::format("its shape needs {} bytes of elements, there are {}",
                                   *count_ * size, bytes));
        }
        if (bytes % size != 0) {
            file_.fail(fmt::format("its size, {} bytes, is no multiple of the {} of a {}", bytes,
                                   size, elementName(element_)));
        }
        count_ = bytes / size;
    }

    files::InputFile file_;
    Element element_;
    StoredType stored_;
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
        if (needsCount_ && file_.isDirect()) {
            throw files::FileError(path, "a NumPy file begins with the number of its values, which "
                                         "is not known yet; write it to a plain file");
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

bool isNpyName(const std::string& path) { return path.ends_with(".npy"); }

std::unique_ptr<Source> readText(std::istream& is, StoredType type) {
    return std::make_unique<TextSource>(is, type);
}

std::unique_ptr<Source> openFile(const std::string& path, std::istream& standardInput,
                                 std::optional<Format> format, std::optional<StoredType> type) {
    return std::make_unique<FileSource>(path, standardInput, format, type);
}

std::unique_ptr<Sink> writeText(std::ostream& os, Element element) {
    return std::make_unique<TextSink>(os, element);
}

std::unique_ptr<Sink> createFile(const std::string& path, const std::string& input, Format format,
                                 Element element, const std::optional<Shape>& shape) {
    return std::make_unique<FileSink>(path, input, format, element, shape);
}

} // namespace tvtool::convert
