#include "convert/names.h"

#include "text/argument_error.h"

#include <algorithm>
#include <set>
#include <span>
#include <utility>

namespace tvtool::convert {

namespace {

struct TypeRow {
    const char* name;
    std::size_t size;
};

/// The built-in types in the order of their ids, then the wide ones.
constexpr std::array<TypeRow, 11> types{{{"double", 8},
                                         {"single", 4},
                                         {"int8", 1},
                                         {"uint8", 1},
                                         {"int16", 2},
                                         {"uint16", 2},
                                         {"int32", 4},
                                         {"uint32", 4},
                                         {"boolean", 1},
                                         {"int64", 8},
                                         {"uint64", 8}}};
constexpr std::size_t builtIns = 9;

/// Names that others have for the types.
constexpr std::array<std::pair<std::string_view, const char*>, 7> otherNames{
    {{"bool", "boolean"},
     {"logical", "boolean"},
     {"float", "single"},
     {"float32", "single"},
     {"float64", "double"},
     {"int", "int32"},
     {"uint", "uint32"}}};

std::string_view meantType(std::string_view name) {
    const auto* const other =
        std::ranges::find(otherNames, name, [](const auto& each) { return each.first; });
    return other == otherNames.end() ? "" : other->second;
}

/// Returns an iterator to the row with this name; throws a text::ArgumentError if there is none.
template <class Rows>
auto findNamed(const Rows& rows, std::string_view option, std::string_view name) {
    const auto row = std::ranges::find(rows, name, [](const auto& each) { return each.name; });
    if (row == rows.end()) {
        std::string list;
        std::set<std::string> names;
        for (const auto& each : rows) {
            list += (list.empty() ? "" : ", ") + std::string(each.name);
            names.insert(each.name);
        }
        throw text::choiceError(option, name, "one of " + list, names, meantType(name));
    }
    return row;
}

} // namespace

const std::array<Named<fxpModeRounding_tag>, 6> roundings{{{"zero", FXP_ROUND_ZERO},
                                                           {"near", FXP_ROUND_NEAR},
                                                           {"ceil", FXP_ROUND_CEIL},
                                                           {"floor", FXP_ROUND_FLOOR},
                                                           {"round", FXP_ROUND_ROUND},
                                                           {"convergent", FXP_ROUND_CONVERGENT}}};

const std::array<Named<fxpModeOverflow_tag>, 2> overflows{
    {{"wrap", FXP_OVERFLOW_WRAP}, {"saturate", FXP_OVERFLOW_SATURATE}}};

const char* typeName(Type type) { return types[static_cast<std::size_t>(type)].name; }

std::size_t sizeOf(Type type) { return types[static_cast<std::size_t>(type)].size; }

std::string elementName(Element element) {
    return std::string(element.isComplex ? "complex " : "") + typeName(element.type);
}

const char* typeName(StoredType type) {
    return type.wide == Wide::None ? typeName(type.type)
                                   : types[builtIns - 1 + static_cast<std::size_t>(type.wide)].name;
}

std::vector<std::string> typeNames() { return namesOf(std::span(types).first<builtIns>()); }

std::vector<std::string> storedTypeNames() { return namesOf(types); }

Type parseType(std::string_view option, std::string_view name) {
    const std::span builtInTypes = std::span(types).first<builtIns>();
    return static_cast<Type>(findNamed(builtInTypes, option, name) - builtInTypes.begin());
}

StoredType parseStoredType(std::string_view option, std::string_view name) {
    const auto index = static_cast<std::size_t>(findNamed(types, option, name) - types.begin());
    return index < builtIns ? StoredType{static_cast<Type>(index), Wide::None}
                            : StoredType{Type::Double, static_cast<Wide>(index - builtIns + 1)};
}

fxpModeRounding_tag parseRounding(std::string_view option, std::string_view name) {
    return findNamed(roundings, option, name)->value;
}

fxpModeOverflow_tag parseOverflow(std::string_view option, std::string_view name) {
    return findNamed(overflows, option, name)->value;
}

} // namespace tvtool::convert
