#include "text/utf16.h"

#include <unicode/unistr.h>

#include <cstdint>
#include <limits>
#include <stdexcept>

namespace tvtool::text {

namespace {

std::int32_t checkedLength(std::size_t size) {
    if (size > static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max()) / 4) {
        throw std::length_error("the text is too long");
    }
    return static_cast<std::int32_t>(size);
}

icu::UnicodeString unicodeString(std::string_view text) {
    return icu::UnicodeString::fromUTF8(icu::StringPiece(text.data(), checkedLength(text.size())));
}

} // namespace

std::u16string toUtf16(std::string_view text) {
    const icu::UnicodeString wide = unicodeString(text);
    return {wide.getBuffer(), static_cast<std::size_t>(wide.length())};
}

std::string toUtf8(std::u16string_view text) {
    std::string narrow;
    icu::UnicodeString(text.data(), checkedLength(text.size())).toUTF8String(narrow);
    return narrow;
}

std::string foldCase(std::string_view text) {
    std::string folded;
    unicodeString(text).foldCase().toUTF8String(folded);
    return folded;
}

} // namespace tvtool::text
