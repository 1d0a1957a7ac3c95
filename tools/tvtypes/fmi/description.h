/// \file
/// What a model's interface description says, as plain records.
///
/// Texts are views into the Texts of the description that holds the record.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory_resource>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace tvtool::fmi {

/// The base types of FMI 3. Real and Integer of FMI 2 are Float64 and Int32.
enum class BaseType : std::uint8_t {
    Float64,
    Float32,
    Int8,
    UInt8,
    Int16,
    UInt16,
    Int32,
    UInt32,
    Int64,
    UInt64,
    Boolean,
    String,
    Binary,
    Clock,
    Enumeration,
    None ///< the description does not say
};
inline constexpr std::size_t baseTypeCount = static_cast<std::size_t>(BaseType::None);

/// The name of a base type in the given major version of FMI.
std::string_view nameOf(BaseType base, int fmiMajorVersion);

/// Where in the description something stands. The element's name is a constant or lives in Texts;
/// line 0 means that it has no line.
struct Place {
    std::string_view element;
    std::uint64_t line = 0;
};

/// One named value of an enumeration.
struct Item {
    std::string_view name;
    std::optional<std::int32_t> value; ///< empty if it was refused
    Place place;
};

struct TypeDefinition {
    std::string_view name;
    BaseType base = BaseType::None;
    std::vector<Item> items;
    Place place;
};

/// Stands for "none" where a record refers to another by its index.
inline constexpr std::uint32_t noIndex = UINT32_MAX;

/// One dimension of an array variable.
struct Dimension {
    std::uint64_t number = 0; ///< its size, or the value reference of the variable that says it
    bool isReference = false;
};

struct Variable {
    std::string_view name; ///< empty if it is missing
    std::optional<std::string_view> declaredType;
    Place place;
    std::uint32_t valueReference = 0;
    std::uint32_t type = noIndex;     ///< the declared type in Description::types, if it agrees
    std::uint32_t firstDimension = 0; ///< in Description::dimensions
    std::uint32_t dimensionCount = 0;
    BaseType base = BaseType::None;
    bool hasValueReference = false;
    bool hasBadDimension = false; ///< one that could not be read is not among its dimensions
};

/// A further name of a variable.
struct Alias {
    std::string_view name;
    Place place;
};

/// Keeps the texts of a description together and in place.
class Texts {
  public:
    /// A copy that lives as long as this object.
    std::string_view keep(std::string_view text);

    /// The same for texts that come again and again: equal ones share one copy.
    std::string_view intern(std::string_view text);

  private:
    std::pmr::monotonic_buffer_resource memory_;
    std::unordered_set<std::string_view> interned_;
};

struct Description {
    Texts texts;
    std::string_view fmiVersion;
    std::string_view modelName;
    int majorVersion = 0;            ///< 2 or 3
    bool hasStructuredNames = false; ///< whether names tell which variables belong together
    std::vector<TypeDefinition> types;
    std::vector<Variable> variables;
    std::vector<Dimension> dimensions;
    /// The values of what can be a dimension's size, by value reference.
    std::unordered_map<std::uint32_t, std::uint64_t> sizes;
    std::vector<Alias> aliases;
};

} // namespace tvtool::fmi
