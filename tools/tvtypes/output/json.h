/// \file
/// Values of reports in JSON.
#pragma once

#include <boost/json.hpp>

#include <cmath>
#include <cstddef>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace tvtool::output {

template <class Type>
inline constexpr bool isOptionalType = false;
template <class Type>
inline constexpr bool isOptionalType<std::optional<Type>> = true;

template <class Type>
inline constexpr bool isNumeric = std::is_arithmetic_v<Type> && !std::is_same_v<Type, bool>;
template <class Type>
inline constexpr bool isNumeric<std::optional<Type>> = isNumeric<Type>;

/// Returns a JSON value. An empty text, an empty optional and a number that is not finite are null.
template <class Type>
boost::json::value jsonValue(Type&& value) {
    using Value = std::remove_cvref_t<Type>;
    if constexpr (isOptionalType<Value>) {
        return value ? jsonValue(*value) : boost::json::value(nullptr);
    } else if constexpr (std::is_convertible_v<Value, std::string_view>) {
        const std::string_view text(value);
        return text.empty() ? boost::json::value(nullptr) : boost::json::value(text);
    } else if constexpr (std::is_floating_point_v<Value>) {
        return std::isfinite(value) ? boost::json::value(value) : boost::json::value(nullptr);
    } else {
        return boost::json::value_from(std::forward<Type>(value));
    }
}

/// Returns a value as the text of a table's cell, safe to print: null as an empty text, a list with
/// commas, true and false as "yes" and "no". Texts longer than `longest` bytes are shortened.
std::string cellText(const boost::json::value& value, std::size_t longest);

/// Returns a value in one line. Escapes the control characters that JSON allows in texts, as they
/// would control a terminal.
std::string jsonText(const boost::json::value& value);

/// Prints an object in one line of its own.
void printJson(const boost::json::object& object, std::ostream& os);

/// Version of the JSON of all commands, which docs/schema/ describes. It is raised when a member is
/// removed or changes its meaning.
inline constexpr int schemaVersion = 1;

/// Returns the object that a command prints: "command" and "schemaVersion", then the members.
/// Without a command, "command" is null.
boost::json::object envelope(std::string_view command, boost::json::object members);

/// Prints the report of a command in one line: its envelope with the members, and an empty list
/// "findings" unless they contain one.
void printJson(std::string_view command, boost::json::object members, std::ostream& os);

} // namespace tvtool::output
