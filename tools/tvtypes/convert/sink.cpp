#include "convert/sink.h"

#include "convert/values.h"
#include "files/new_file.h"

#include <bit>
#include <cstdint>

namespace tvtool::convert {

namespace {

class TextSink : public Sink {
  public:
    TextSink(std::ostream& os, Element element) : os_(os), element_(element) {}

    void write(const std::byte* elements, std::size_t count) override {
        text_.clear();
        for (std::size_t i = 0; i < count; ++i) {
            appendElement(text_, element_, elements + i * sizeOf(element_));
            text_ += '\n';
        }
        if (!(os_ << text_)) {
            throw Error("the output cannot be written");
        }
    }

  private:
    std::ostream& os_;
    Element element_;
    std::string text_;
};

class FileSink : public Sink {
  public:
    FileSink(const std::string& path, Format format, Element element,
             const std::optional<Shape>& shape)
        : file_(path), element_(element), needsCount_(format == Format::Npy && !shape) {
        if (format == Format::Npy) {
            writeHeader(shape ? *shape : Shape{{0}});
        }
    }

    void write(const std::byte* elements, std::size_t count) override {
        static_assert(std::endian::native == std::endian::little,
                      "elements are written as in memory, and files are little-endian");
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

    files::NewFile file_;
    Element element_;
    bool needsCount_; ///< whether the header is to get the count, which is known at the end
    std::uint64_t count_ = 0;
};

} // namespace

std::unique_ptr<Sink> writeText(std::ostream& os, Element element) {
    return std::make_unique<TextSink>(os, element);
}

std::unique_ptr<Sink> createFile(const std::string& path, Format format, Element element,
                                 const std::optional<Shape>& shape) {
    return std::make_unique<FileSink>(path, format, element, shape);
}

} // namespace tvtool::convert
