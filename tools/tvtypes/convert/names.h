/// \file
/// The built-in types and the modes of a conversion, with their names on the command line.
#pragma once

#include <tvtypes/fixedpoint.h>

#include <array>
#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace tvtool::convert {

/// Error of a value or an output. what() is a sentence for the user.
class Error : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// The built-in types; the values are the ids of the library.
enum class Type : int { Double, Single, Int8, UInt8, Int16, UInt16, Int32, UInt32, Boolean };

const char* typeName(Type type);
/// Returns the size of a value in bytes.
std::size_t sizeOf(Type type);
inline bool isFloating(Type type) { return type == Type::Double || type == Type::Single; }

/// The type of a vector's elements: one value, or two for real and imaginary part.
struct Element {
    Type type = Type::Double;
    bool isComplex = false;

    bool operator==(const Element&) const = default;
};
std::string elementName(Element element);
inline std::size_t sizeOf(Element element) {
    return sizeOf(element.type) * (element.isComplex ? 2 : 1);
}

/// Integers of 64 bits. Inputs may have them; the library has no such type.
enum class Wide { None, Int64, UInt64 };

/// The type of an input's values: a built-in type, or wide integers, which are read as doubles if
/// these have their values exactly.
struct StoredType {
    Type type = Type::Double;
    Wide wide = Wide::None;

    bool operator==(const StoredType&) const = default;
};
const char* typeName(StoredType type);

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

template <class Rows>
std::vector<std::string> namesOf(const Rows& rows) {
    std::vector<std::string> names;
    for (const auto& row : rows) {
        names.emplace_back(row.name);
    }
    return names;
}
/// Returns the names of the built-in types, and of those that inputs may have.
std::vector<std::string> typeNames();
std::vector<std::string> storedTypeNames();

/// Returns the type or mode with this name. Throws a text::ArgumentError that lists the valid
/// names.
Type parseType(std::string_view option, std::string_view name);
StoredType parseStoredType(std::string_view option, std::string_view name);
fxpModeRounding_tag parseRounding(std::string_view option, std::string_view name);
fxpModeOverflow_tag parseOverflow(std::string_view option, std::string_view name);

} // namespace tvtool::convert
