#include "convert/npy.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <optional>
#include <string_view>
#include <system_error>

namespace tvtool::convert {

namespace {

constexpr std::size_t maxLength = std::size_t{64} << 10;
constexpr std::size_t maxDimensions = 64;
constexpr std::size_t alignment = 64;

struct Code {
    std::string_view code;
    Element element;
    Wide wide = Wide::None;
};

/// Type codes, which follow the byte order in a description of elements.
constexpr std::array<Code, 13> codes{{{"f8", {Type::Double}},
                                      {"f4", {Type::Single}},
                                      {"i1", {Type::Int8}},
                                      {"u1", {Type::UInt8}},
                                      {"i2", {Type::Int16}},
                                      {"u2", {Type::UInt16}},
                                      {"i4", {Type::Int32}},
                                      {"u4", {Type::UInt32}},
                                      {"b1", {Type::Boolean}},
                                      {"c16", {Type::Double, true}},
                                      {"c8", {Type::Single, true}},
                                      {"i8", {Type::Double}, Wide::Int64},
                                      {"u8", {Type::Double}, Wide::UInt64}}};

/// Returns the error of elements that are not converted, with what to do.
Error elementError(std::string_view description) {
    const bool areObjects = description.find('O') != std::string_view::npos;
    return Error(fmt::format("holds {} of type \"{}\", which cannot be converted; save them as "
                             "numbers, in Python by numpy.save(FILE, array.astype(\"float64\"))",
                             areObjects ? "Python objects" : "elements", description));
}

/// Parses the text of a header: a dictionary in the syntax of Python with three members.
class Parser {
  public:
    explicit Parser(std::string_view text) : rest_(text), size_(text.size()) {}

    NpyHeader parse() {
        expect("{");
        while (!take("}")) {
            parseMember();
            if (!take(",")) {
                expect("}");
                break;
            }
        }
        skipBlanks();
        if (!rest_.empty()) {
            fail("something behind the end");
        }
        if (!description_ || !fortranOrder_ || !sizes_) {
            fail("\"descr\", \"fortran_order\" or \"shape\" missing");
        }
        return header();
    }

  private:
    [[noreturn]] void fail(std::string_view what) const {
        throw Error(fmt::format("malformed header: {} at its character {}", what,
                                size_ - rest_.size() + 1));
    }

    void skipBlanks() {
        rest_.remove_prefix(std::min(rest_.find_first_not_of(" \t\r\n"), rest_.size()));
    }

    /// Skips blanks and, if it follows, the token; returns whether it followed.
    bool take(std::string_view token) {
        skipBlanks();
        const bool found = rest_.starts_with(token);
        rest_.remove_prefix(found ? token.size() : 0);
        return found;
    }

    void expect(std::string_view wanted) {
        if (!take(wanted)) {
            fail(fmt::format("no \"{}\"", wanted));
        }
    }

    std::string_view parseText() {
        skipBlanks();
        const char quote = rest_.empty() ? '\0' : rest_.front();
        const std::size_t end = rest_.find(quote, 1);
        if ((quote != '\'' && quote != '"') || end == std::string_view::npos) {
            fail("no text in quotes");
        }
        const std::string_view text = rest_.substr(1, end - 1);
        rest_.remove_prefix(end + 1);
        return text;
    }

    template <class Value>
    void assign(std::optional<Value>& member, Value value) {
        if (member) {
            fail("a member for the second time");
        }
        member = std::move(value);
    }

    void parseMember() {
        const std::string_view key = parseText();
        expect(":");
        if (key == "descr") {
            if (take("[")) {
                throw Error("holds records, which cannot be converted; save one of their fields, "
                            "in Python by numpy.save(FILE, array[\"FIELD\"])");
            }
            assign(description_, parseText());
        } else if (key == "fortran_order") {
            assign(fortranOrder_, parseBool());
        } else if (key == "shape") {
            assign(sizes_, parseSizes());
        } else {
            fail("a member that has no meaning");
        }
    }

    bool parseBool() {
        const bool isTrue = take("True");
        if (!isTrue && !take("False")) {
            fail("neither True nor False");
        }
        return isTrue;
    }

    std::uint64_t parseSize() {
        skipBlanks();
        if (rest_.starts_with('-')) {
            fail("a negative size");
        }
        std::uint64_t size = 0;
        const auto [stop, error] = std::from_chars(rest_.data(), rest_.data() + rest_.size(), size);
        if (error != std::errc()) {
            fail(error == std::errc::result_out_of_range ? "a size that is too large"
                                                         : "no number");
        }
        rest_.remove_prefix(static_cast<std::size_t>(stop - rest_.data()));
        return size;
    }

    /// Parses a tuple such as (3, 4), (3,) or (). One number needs its comma to be a tuple.
    std::vector<std::uint64_t> parseSizes() {
        std::vector<std::uint64_t> sizes;
        expect("(");
        while (!take(")")) {
            if (sizes.size() == maxDimensions) {
                fail(fmt::format("more than {} dimensions", maxDimensions));
            }
            sizes.push_back(parseSize());
            if (!take(",")) {
                if (sizes.size() == 1) {
                    fail("no \",\"");
                }
                expect(")");
                break;
            }
        }
        return sizes;
    }

    NpyHeader header() const {
        NpyHeader header;
        const char order = description_->empty() ? '\0' : description_->front();
        const std::string_view code = description_->substr(description_->empty() ? 0 : 1);
        const auto* const known = std::ranges::find(codes, code, &Code::code);
        const bool hasOrder = order == '<' || order == '>';
        if (known == codes.end() || !(hasOrder || (order == '|' && sizeOf(known->element) == 1))) {
            throw elementError(*description_);
        }
        header.element = known->element;
        header.wide = known->wide;
        header.bigEndian = order == '>';
        header.shape = {*sizes_, *fortranOrder_};
        header.count = checkedCount(header);
        return header;
    }

    /// Returns the number of elements; throws an Error if their size in bytes exceeds 64 bits.
    static std::uint64_t checkedCount(const NpyHeader& header) {
        const std::vector<std::uint64_t>& sizes = header.shape.sizes;
        if (std::ranges::find(sizes, 0U) != sizes.end()) {
            return 0;
        }
        std::uint64_t most = std::numeric_limits<std::uint64_t>::max() / sizeOf(header.element);
        std::uint64_t count = 1;
        for (const std::uint64_t size : sizes) {
            if (size > most) {
                throw Error("malformed header: its shape has more elements than any file");
            }
            most /= size;
            count *= size;
        }
        return count;
    }

    std::string_view rest_;
    std::size_t size_;
    std::optional<std::string_view> description_;
    std::optional<bool> fortranOrder_;
    std::optional<std::vector<std::uint64_t>> sizes_;
};

void readExactly(files::InputFile& file, char* bytes, std::size_t count) {
    if (file.read(bytes, count) != count) {
        throw Error("ends within the header");
    }
}

std::size_t readLength(files::InputFile& file, std::size_t bytes) {
    std::array<char, 4> field{};
    readExactly(file, field.data(), bytes);
    std::size_t length = 0;
    for (std::size_t i = bytes; i > 0; --i) {
        length = length << 8U | static_cast<unsigned char>(field[i - 1]);
    }
    return length;
}

} // namespace

NpyHeader readNpyHeader(files::InputFile& file) {
    std::array<char, npyMagic.size() + 2> head{};
    readExactly(file, head.data(), head.size());
    if (!std::string_view(head.data(), head.size()).starts_with(npyMagic)) {
        throw Error("is no .npy file: it does not begin like one");
    }
    const int major = static_cast<unsigned char>(head[npyMagic.size()]);
    const int minor = static_cast<unsigned char>(head[npyMagic.size() + 1]);
    if (major < 1 || major > 3 || minor != 0) {
        throw Error(fmt::format("is in version {}.{} of the format; read are 1.0, 2.0 and 3.0",
                                major, minor));
    }
    const std::size_t length = readLength(file, major == 1 ? 2 : 4);
    if (length > maxLength) {
        throw Error(fmt::format("has a header of {} bytes; the longest that is read has {}", length,
                                maxLength));
    }
    std::string text(length, '\0');
    readExactly(file, text.data(), length);
    return Parser(text).parse();
}

std::string npyHeader(Element element, const Shape& shape) {
    const auto* const code = std::ranges::find(codes, element, &Code::element);
    std::string sizes = fmt::format("{}", fmt::join(shape.sizes, ", "));
    const std::size_t width = std::numeric_limits<std::uint64_t>::digits10 + 1;
    const std::size_t growth = shape.sizes.size() == 1 ? width - sizes.size() : 0;
    if (shape.sizes.size() == 1) {
        sizes += ',';
    }
    std::string text = fmt::format("{{'descr': '{}{}', 'fortran_order': {}, 'shape': ({}), }}",
                                   sizeOf(element) == 1 ? '|' : '<', code->code,
                                   shape.fortranOrder ? "True" : "False", sizes);
    text.append(growth, ' ');
    const std::size_t before = npyMagic.size() + 4;
    const std::size_t unpadded = before + text.size() + 1;
    text.append((alignment - unpadded % alignment) % alignment, ' ');
    text += '\n';

    std::string header(npyMagic);
    header += {'\x01', '\x00', static_cast<char>(text.size() & 0xFFU),
               static_cast<char>(text.size() >> 8U)};
    return header + text;
}

} // namespace tvtool::convert
