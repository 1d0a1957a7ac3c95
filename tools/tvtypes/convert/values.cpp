#include "convert/values.h"

#include <fmt/format.h>

#include <charconv>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <limits>
#include <string_view>
#include <system_error>
#include <type_traits>

namespace tvtool::convert {

namespace {

/// Calls a function with a value of the C++ type of `type`.
template <class Function>
void withTypeOf(Type type, const Function& function) {
    switch (type) {
    case Type::Double:
        return function(double());
    case Type::Single:
        return function(float());
    case Type::Int8:
        return function(std::int8_t());
    case Type::UInt8:
        return function(std::uint8_t());
    case Type::Int16:
        return function(std::int16_t());
    case Type::UInt16:
        return function(std::uint16_t());
    case Type::Int32:
        return function(std::int32_t());
    case Type::UInt32:
        return function(std::uint32_t());
    case Type::Boolean:
        return function(bool());
    }
}

bool parseBoolean(const std::string& word) {
    const bool isTrue = word == "1" || word == "true";
    if (!isTrue && word != "0" && word != "false") {
        throw Error("is not 0 or 1");
    }
    return isTrue;
}

template <class Floating>
Floating parseFloating(const std::string& word) {
    char* stop = nullptr;
    Floating value{};
    // strtof, because a single read as a double would be rounded twice.
    if constexpr (std::is_same_v<Floating, float>) {
        value = std::strtof(word.c_str(), &stop);
    } else {
        value = std::strtod(word.c_str(), &stop);
    }
    if (word.empty() || stop != word.c_str() + word.size()) {
        throw Error("is not a number");
    }
    return value;
}

template <class Integer>
Integer parseInteger(std::string_view digits) {
    using Limits = std::numeric_limits<Integer>;
    const bool isNegative = digits.starts_with('-');
    digits.remove_prefix(isNegative || digits.starts_with('+') ? 1 : 0);
    const bool isHexadecimal = digits.starts_with("0x") || digits.starts_with("0X");
    digits.remove_prefix(isHexadecimal ? 2 : 0);
    std::uint64_t magnitude = 0;
    const char* const end = digits.data() + digits.size();
    const auto [stop, error] =
        std::from_chars(digits.data(), end, magnitude, isHexadecimal ? 16 : 10);
    if (stop != end || error == std::errc::invalid_argument) {
        throw Error("is not an integer");
    }
    const auto most = isNegative ? -static_cast<std::int64_t>(Limits::min())
                                 : static_cast<std::int64_t>(Limits::max());
    if (error != std::errc() || magnitude > static_cast<std::uint64_t>(most)) {
        throw Error(
            fmt::format("is out of range, which is {} to {}", Limits::min(), Limits::max()));
    }
    const auto value = static_cast<std::int64_t>(magnitude);
    return static_cast<Integer>(isNegative ? -value : value);
}

void appendValue(std::string& text, Type type, const std::byte* bytes) {
    withTypeOf(type, [&](auto value) {
        if constexpr (std::is_same_v<decltype(value), bool>) {
            // Files may hold any byte for true.
            text += *bytes == std::byte() ? '0' : '1';
        } else {
            std::memcpy(&value, bytes, sizeof value);
            fmt::format_to(std::back_inserter(text), "{}", value);
        }
    });
}

} // namespace

void readValue(const std::string& word, Type type, std::byte* bytes) {
    withTypeOf(type, [&](auto value) {
        using Value = decltype(value);
        if constexpr (std::is_same_v<Value, bool>) {
            value = parseBoolean(word);
        } else if constexpr (std::is_floating_point_v<Value>) {
            value = parseFloating<Value>(word);
        } else {
            value = parseInteger<Value>(word);
        }
        std::memcpy(bytes, &value, sizeof value);
    });
}

void appendElement(std::string& text, Element element, const std::byte* value) {
    appendValue(text, element.type, value);
    if (element.isComplex) {
        std::string imaginary;
        appendValue(imaginary, element.type, value + sizeOf(element.type));
        text += (imaginary.starts_with('-') ? "" : "+") + imaginary + 'i';
    }
}

} // namespace tvtool::convert
