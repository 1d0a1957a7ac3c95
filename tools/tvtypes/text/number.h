/// \file
/// Parsing of numbers.
#pragma once

#include <charconv>
#include <optional>
#include <string_view>
#include <system_error>

namespace tvtool::text {

/// Returns the value of a decimal number with an optional sign; empty if the text is anything else,
/// or is out of range.
template <class Number>
std::optional<Number> parseNumber(std::string_view text) {
    text.remove_prefix(text.starts_with('+') && !text.starts_with("+-") ? 1 : 0);
    Number value{};
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    return stop == end && error == std::errc() ? std::optional(value) : std::nullopt;
}

} // namespace tvtool::text
