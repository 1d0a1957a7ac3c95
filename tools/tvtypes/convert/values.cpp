#include "convert/values.h"

#include "convert/error.h"

#include <fmt/format.h>

#include <charconv>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <limits>
#include <string_view>
#include <system_error>

namespace tvtool::convert {

namespace {

template <class Value>
void store(Value value, std::byte* bytes) {
    std::memcpy(bytes, &value, sizeof value);
}

template <class Value>
Value load(const std::byte* bytes) {
    Value value;
    std::memcpy(&value, bytes, sizeof value);
    return value;
}

// The nearest of the type itself: a single that went through a double could be rounded twice.
double nearest(const char* text, char** stop, double) { return std::strtod(text, stop); }
float nearest(const char* text, char** stop, float) { return std::strtof(text, stop); }

template <class Floating>
Floating readFloating(const std::string& word) {
    char* stop = nullptr;
    const Floating value = nearest(word.c_str(), &stop, Floating{});
    if (word.empty() || stop != word.c_str() + word.size()) {
        throw Error("is not a number");
    }
    return value;
}

template <class Integer>
Integer readInteger(const std::string& word) {
    using Limits = std::numeric_limits<Integer>;
    std::string_view digits = word;
    const bool negative = digits.starts_with('-');
    if (negative || digits.starts_with('+')) {
        digits.remove_prefix(1);
    }
    int base = 10;
    if (digits.starts_with("0x") || digits.starts_with("0X")) {
        digits.remove_prefix(2);
        base = 16;
    }
    std::uint64_t magnitude = 0;
    const char* const end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, magnitude, base);
    if (stop != end || error == std::errc::invalid_argument) {
        throw Error("is not an integer");
    }
    const auto most = negative ? -static_cast<std::int64_t>(Limits::min())
                               : static_cast<std::int64_t>(Limits::max());
    if (error != std::errc() || magnitude > static_cast<std::uint64_t>(most)) {
        throw Error(
            fmt::format("is out of range, which is {} to {}", Limits::min(), Limits::max()));
    }
    const auto value = static_cast<std::int64_t>(magnitude);
    return static_cast<Integer>(negative ? -value : value);
}

std::uint8_t readBoolean(const std::string& word) {
    const bool isTrue = word == "1" || word == "true";
    if (!isTrue && word != "0" && word != "false") {
        throw Error("is not 0 or 1");
    }
    return isTrue ? 1 : 0;
}

void appendPart(std::string& text, Type type, const std::byte* value) {
    const auto append = [&text](auto number) {
        fmt::format_to(std::back_inserter(text), "{}", number);
    };
    switch (type) {
    case Type::Double:
        return append(load<double>(value));
    case Type::Single:
        return append(load<float>(value));
    case Type::Int8:
        return append(int{load<std::int8_t>(value)});
    case Type::UInt8:
        return append(unsigned{load<std::uint8_t>(value)});
    case Type::Int16:
        return append(load<std::int16_t>(value));
    case Type::UInt16:
        return append(load<std::uint16_t>(value));
    case Type::Int32:
        return append(load<std::int32_t>(value));
    case Type::UInt32:
        return append(load<std::uint32_t>(value));
    case Type::Boolean:
        return append(load<std::uint8_t>(value) == 0 ? 0 : 1);
    }
}

} // namespace

void readValue(const std::string& word, Type type, std::byte* value) {
    switch (type) {
    case Type::Double:
        return store(readFloating<double>(word), value);
    case Type::Single:
        return store(readFloating<float>(word), value);
    case Type::Int8:
        return store(readInteger<std::int8_t>(word), value);
    case Type::UInt8:
        return store(readInteger<std::uint8_t>(word), value);
    case Type::Int16:
        return store(readInteger<std::int16_t>(word), value);
    case Type::UInt16:
        return store(readInteger<std::uint16_t>(word), value);
    case Type::Int32:
        return store(readInteger<std::int32_t>(word), value);
    case Type::UInt32:
        return store(readInteger<std::uint32_t>(word), value);
    case Type::Boolean:
        return store(readBoolean(word), value);
    }
}

void appendElement(std::string& text, Element element, const std::byte* value) {
    appendPart(text, element.type, value);
    if (element.isComplex) {
        std::string imaginary;
        appendPart(imaginary, element.type, value + sizeOf(element.type));
        text += (imaginary.starts_with('-') ? "" : "+") + imaginary + 'i';
    }
}

} // namespace tvtool::convert
