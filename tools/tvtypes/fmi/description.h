/// \file
/// What a model's interface description says, as plain records.
///
/// Texts are views into the Texts of the description that holds the record.
#pragma once

#include <array>
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

/// Stands for "none" where a record refers to another by its index.
inline constexpr std::uint32_t noIndex = UINT32_MAX;

/// The base units, in the order of BaseUnit::powers. The radian is the last one.
inline constexpr std::array<std::string_view, 8> baseUnitNames{"kg", "m",   "s",  "A",
                                                               "K",  "mol", "cd", "rad"};

/// A value x of a unit is factor * x + offset in this product of base units.
struct BaseUnit {
    std::array<std::int32_t, baseUnitNames.size()> powers{};
    double factor = 1;
    double offset = 0;
};

/// A value x of the unit that it belongs to is factor * x + offset in the display unit, and
/// factor / x in an inverse one.
struct DisplayUnit {
    std::string_view name;
    double factor = 1;
    double offset = 0;
    bool isInverse = false;
    Place place;
};

struct UnitDefinition {
    std::string_view name;
    std::optional<BaseUnit> base; ///< empty if the description does not say, or not rightly
    std::vector<DisplayUnit> displayUnits;
    bool isDefined = true; ///< false for one that is only used
    Place place;
};

/// What variables and types say of the units of their values.
struct UnitUse {
    std::string_view unit;        ///< empty if they say nothing
    std::string_view displayUnit; ///< the same
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
    std::uint32_t unitUse = noIndex; ///< in Description::unitUses
    Place place;
};

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
    std::uint32_t unitUse = noIndex; ///< in Description::unitUses
    std::uint32_t unit = noIndex;    ///< its own unit or that of its type, in Description::units
    std::uint64_t startCount = 0;    ///< how many start values it has; 0 if they are no values
    BaseType base = BaseType::None;
    bool hasValueReference = false;
    bool isSize = false;          ///< whether dimensions may refer to it
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
    std::vector<UnitDefinition> units;
    std::vector<UnitUse> unitUses; ///< each once
    std::vector<TypeDefinition> types;
    std::vector<Variable> variables;
    std::vector<Dimension> dimensions;
    /// The values of what can be a dimension's size, by value reference.
    std::unordered_map<std::uint32_t, std::uint64_t> sizes;
    std::vector<Alias> aliases;
};

} // namespace tvtool::fmi
