#include "convert/values.h"

#include <fmt/format.h>

#include <charconv>
#include <cmath>
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
        throw Error(word.find(',') == std::string::npos
                        ? "is not a number"
                        : "is not a number; blanks separate values, and decimals have a point");
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
    const std::uint64_t most = !isNegative         ? std::uint64_t{Limits::max()}
                               : Limits::is_signed ? std::uint64_t{Limits::max()} + 1
                                                   : std::uint64_t{0};
    if (error != std::errc() || magnitude > most) {
        throw Error(
            fmt::format("is out of range, which is {} to {}", Limits::min(), Limits::max()));
    }
    return static_cast<Integer>(isNegative ? 0 - magnitude : magnitude);
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

/// Returns whether a double has the value of an integer, which it then stores.
template <class Integer>
bool toDouble(Integer integer, std::byte* bytes) {
    const auto value = static_cast<double>(integer);
    // The largest integers are rounded up to a power of two, which is out of their range.
    const double limit = std::ldexp(1.0, std::numeric_limits<Integer>::digits);
    std::memcpy(bytes, &value, sizeof value);
    return value < limit && static_cast<Integer>(value) == integer;
}

template <class Integer>
std::size_t integersToDoubles(std::byte* values, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        Integer integer{};
        std::memcpy(&integer, values + i * sizeof integer, sizeof integer);
        if (!toDouble(integer, values + i * sizeof integer)) {
            std::memcpy(values + i * sizeof integer, &integer, sizeof integer);
            return i;
        }
    }
    return count;
}

template <class Integer>
void readWide(const std::string& word, std::byte* bytes) {
    if (!toDouble(parseInteger<Integer>(word), bytes)) {
        throw Error("is no integer that a double has exactly");
    }
}

} // namespace

std::size_t toDoubles(Wide wide, std::byte* values, std::size_t count) {
    return wide == Wide::Int64 ? integersToDoubles<std::int64_t>(values, count)
                               : integersToDoubles<std::uint64_t>(values, count);
}

double valueOf(Type type, const std::byte* bytes) {
    double result = 0;
    withTypeOf(type, [&](auto value) {
        if constexpr (std::is_same_v<decltype(value), bool>) {
            result = *bytes == std::byte() ? 0 : 1;
        } else {
            std::memcpy(&value, bytes, sizeof value);
            result = static_cast<double>(value);
        }
    });
    return result;
}

void readValue(const std::string& word, StoredType stored, std::byte* bytes) {
    if (stored.wide != Wide::None) {
        return stored.wide == Wide::Int64 ? readWide<std::int64_t>(word, bytes)
                                          : readWide<std::uint64_t>(word, bytes);
    }
    withTypeOf(stored.type, [&](auto value) {
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
