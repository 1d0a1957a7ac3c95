/// \file
/// Values of reports as JSON, and JSON as text.
#pragma once

#include <boost/json.hpp>

#include <cstddef>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace tvtool::output {

template <class Type>
inline constexpr bool isNumeric = std::is_arithmetic_v<Type> && !std::is_same_v<Type, bool>;
template <class Type>
inline constexpr bool isNumeric<std::optional<Type>> = isNumeric<Type>;

/// Returns a JSON value. An empty text, an empty optional and a number that is not finite are null.
boost::json::value jsonValue(std::string_view text);
boost::json::value jsonValue(double number);
inline boost::json::value jsonValue(const std::string& text) {
    return jsonValue(std::string_view(text));
}
inline boost::json::value jsonValue(const char* text) { return jsonValue(std::string_view(text)); }
inline boost::json::value jsonValue(boost::json::value value) { return value; }
inline boost::json::value jsonValue(boost::json::array array) { return array; }
inline boost::json::value jsonValue(const std::vector<std::string>& texts) {
    return boost::json::value_from(texts);
}
template <class Integer>
requires std::is_integral_v<Integer> boost::json::value jsonValue(Integer number) {
    return boost::json::value(number);
}
template <class Type>
boost::json::value jsonValue(const std::optional<Type>& value) {
    return value ? jsonValue(*value) : boost::json::value(nullptr);
}

/// Returns a value as the text of a table's cell, safe to print: null as an empty text, a list with
/// commas, true and false as "yes" and "no". Texts longer than `longest` bytes are shortened.
std::string cellText(const boost::json::value& value, std::size_t longest);

/// Prints an object in one line. Control characters, which JSON allows in texts, are escaped,
/// because a terminal would obey them.
void printJson(const boost::json::object& object, std::ostream& os);

} // namespace tvtool::output
