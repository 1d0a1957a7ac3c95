#include "utf8.h"

#include <unicode/ustring.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <stdexcept>

namespace fnd::i18n {

namespace {

constexpr UChar32 replacement = 0xFFFD;

// Longest text that is converted in a buffer on the stack. Most texts are names.
constexpr std::size_t shortText = 128;

// UTF-8 bytes per 16-bit code unit. Code points of four bytes take two code units.
constexpr std::size_t maximumBytes = 3;

std::size_t convert(std::u16string_view text, char* bytes, std::size_t capacity) {
    UErrorCode status = U_ZERO_ERROR;
    int32_t length = 0;
    u_strToUTF8WithSub(bytes, static_cast<int32_t>(capacity), &length, text.data(),
                       static_cast<int32_t>(text.size()), replacement, nullptr, &status);
    return static_cast<std::size_t>(length);
}

/// \pre The buffer has as many code units as the text has bytes; no byte becomes more than one.
std::size_t convert(std::string_view text, char16_t* characters) {
    UErrorCode status = U_ZERO_ERROR;
    int32_t length = 0;
    const auto size = static_cast<int32_t>(text.size());
    u_strFromUTF8WithSub(characters, size, &length, text.data(), size, replacement, nullptr,
                         &status);
    return static_cast<std::size_t>(length);
}

/// ASCII texts, which are most, are copied without a converter. Eight bytes at a time.
bool isAscii(std::string_view text) {
    std::uint64_t bits = 0;
    for (; text.size() >= sizeof bits; text.remove_prefix(sizeof bits)) {
        std::uint64_t word = 0;
        std::memcpy(&word, text.data(), sizeof word);
        bits |= word;
    }
    for (const char byte : text) {
        bits |= static_cast<unsigned char>(byte);
    }
    return (bits & 0x8080808080808080U) == 0;
}

bool isAscii(std::u16string_view text) {
    unsigned bits = 0;
    for (const char16_t character : text) {
        bits |= character;
    }
    return bits < 0x80;
}

} // namespace

std::int32_t checkedLength(std::size_t length) {
    if (length > longestText) {
        throw std::length_error("a text to convert is longer than 2^27 characters");
    }
    return static_cast<std::int32_t>(length);
}

std::string toUtf8(std::u16string_view text) {
    checkedLength(text.size());
    if (isAscii(text)) {
        return {text.begin(), text.end()};
    }
    if (text.size() <= shortText) {
        std::array<char, maximumBytes * shortText> buffer;
        return std::string(buffer.data(), convert(text, buffer.data(), buffer.size()));
    }
    std::string result(maximumBytes * text.size(), '\0');
    result.resize(convert(text, result.data(), result.size()));
    return result;
}

fnd::ustring fromUtf8(std::string_view text) {
    checkedLength(text.size());
    if (isAscii(text)) {
        return {text.begin(), text.end()};
    }
    if (text.size() <= shortText) {
        std::array<char16_t, shortText> buffer;
        return fnd::ustring(buffer.data(), convert(text, buffer.data()));
    }
    fnd::ustring result(text.size(), u'\0');
    result.resize(convert(text, result.data()));
    return result;
}

} // namespace fnd::i18n
