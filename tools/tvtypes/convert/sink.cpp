#include "convert/sink.h"

#include "convert/error.h"
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

    void finish() override {}

  private:
    std::ostream& os_;
    Element element_;
    std::string text_;
};

class FileSink : public Sink {
  public:
    FileSink(const std::string& path, Format format, Element element,
             const std::optional<Shape>& shape)
        : file_(path),
          element_(element),
          hasHeader_(format == Format::Npy),
          needsCount_(hasHeader_ && !shape) {
        if (hasHeader_) {
            writeHeader(shape ? *shape : Shape{{0}});
        }
    }

    void write(const std::byte* elements, std::size_t count) override {
        static_assert(std::endian::native == std::endian::little,
                      "elements go to files as they lie in memory");
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
    bool hasHeader_;
    bool needsCount_; ///< which is known at the end only
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
