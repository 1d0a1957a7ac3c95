/// \file
/// The content of a model description as plain records.
///
/// Texts are views into Description::texts of the description that contains the record.
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
    None ///< missing in the description
};
inline constexpr std::size_t baseTypeCount = static_cast<std::size_t>(BaseType::None);

/// Returns the name of a base type in the given major version of FMI.
std::string_view baseTypeName(BaseType base, int fmiMajorVersion);

/// The name and the line of an element. The name is a constant or kept in Texts; line 0 means that
/// there is no line.
struct Place {
    std::string_view element;
    std::uint64_t line = 0;
};

/// "None" where a record refers to another by its index.
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

/// A value x of its unit is factor * x + offset in the display unit, and factor / x in an inverse
/// display unit.
struct DisplayUnit {
    std::string_view name;
    double factor = 1;
    double offset = 0;
    bool isInverse = false;
    Place place;
};

struct UnitDefinition {
    std::string_view name;
    std::optional<BaseUnit> base; ///< empty if it is missing or invalid
    std::vector<DisplayUnit> displayUnits;
    bool isDefined = true; ///< false for a unit that is used without a definition
    Place place;
};

/// The unit attributes of a variable or a type.
struct UnitUse {
    std::string_view unit;        ///< empty if missing
    std::string_view displayUnit; ///< empty if missing
};

/// One named value of an enumeration.
struct Item {
    std::string_view name;
    std::optional<std::int32_t> value; ///< empty if it is invalid
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
    std::uint64_t number = 0; ///< the size, or the value reference of the variable with the size
    bool isReference = false;
};

struct Variable {
    std::string_view name; ///< empty if it is missing
    std::optional<std::string_view> declaredType;
    Place place;
    std::uint32_t valueReference = 0;
    std::uint32_t type = noIndex;     ///< the declared type in Description::types, if it is valid
    std::uint32_t firstDimension = 0; ///< in Description::dimensions
    std::uint32_t dimensionCount = 0;
    std::uint32_t unitUse = noIndex; ///< in Description::unitUses
    std::uint32_t unit = noIndex;    ///< its own unit or that of its type, in Description::units
    std::uint64_t startCount = 0;    ///< number of start values; 0 if one of them is invalid
    BaseType base = BaseType::None;
    bool hasValueReference = false;
    bool isSize = false;          ///< whether dimensions may refer to it
    bool hasBadDimension = false; ///< an invalid dimension is not among its dimensions
};

/// A further name of a variable.
struct Alias {
    std::string_view name;
    Place place;
};

/// Memory for the texts of a description, at stable addresses.
class Texts {
  public:
    /// Returns a copy that lives as long as this object.
    std::string_view keep(std::string_view text);

    /// Returns a copy that equal texts share.
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
    bool hasStructuredNames = false; ///< whether names express a hierarchy of structs
    std::vector<UnitDefinition> units;
    std::vector<UnitUse> unitUses; ///< distinct
    std::vector<TypeDefinition> types;
    std::vector<Variable> variables;
    std::vector<Dimension> dimensions;
    /// The start values of the variables with Variable::isSize, by value reference.
    std::unordered_map<std::uint32_t, std::uint64_t> sizes;
    std::vector<Alias> aliases;
};

} // namespace tvtool::fmi
