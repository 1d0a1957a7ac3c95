/// \file
/// The built-in types and the modes, as they are named on the command line.
#pragma once

#include <tvtypes/fixedpoint.h>

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace tvtool::convert {

/// The built-in types, under the ids that the library knows them by.
enum class Type : int { Double, Single, Int8, UInt8, Int16, UInt16, Int32, UInt32, Boolean };

const char* nameOf(Type type);
/// Bytes of one value.
std::size_t sizeOf(Type type);
inline bool isFloating(Type type) { return type == Type::Double || type == Type::Single; }

/// What stands at one index of a vector: a value, or two of them, real then imaginary.
struct Element {
    Type type = Type::Double;
    bool isComplex = false;

    bool operator==(const Element&) const = default;
};
std::string nameOf(Element element);
inline std::size_t sizeOf(Element element) {
    return sizeOf(element.type) * (element.isComplex ? 2 : 1);
}

struct Modes {
    fxpModeOverflow_tag overflow = FXP_OVERFLOW_SATURATE;
    fxpModeRounding_tag rounding = FXP_ROUND_ZERO;
};

template <class Value>
struct Named {
    const char* name;
    Value value;
};
extern const std::array<Named<fxpModeRounding_tag>, 6> roundings;
extern const std::array<Named<fxpModeOverflow_tag>, 2> overflows;

/// The value of a name. Throws an Error that names the option and lists what is allowed.
Type typeNamed(std::string_view option, std::string_view name);
fxpModeRounding_tag roundingNamed(std::string_view option, std::string_view name);
fxpModeOverflow_tag overflowNamed(std::string_view option, std::string_view name);

} // namespace tvtool::convert
