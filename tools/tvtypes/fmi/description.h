/// \file
/// The content of a model description as plain records.
///
/// Texts are views into Description::texts of the description that contains the record.
#pragma once

#include "findings/findings.h"

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

using findings::Place;

/// The attributes with listed values. None is a missing attribute, Invalid one with another value.
enum class Causality : std::uint8_t {
    None,
    Invalid,
    Parameter,
    CalculatedParameter,
    Input,
    Output,
    Local,
    Independent,
    StructuralParameter
};
enum class Variability : std::uint8_t {
    None,
    Invalid,
    Constant,
    Fixed,
    Tunable,
    Discrete,
    Continuous
};
enum class Initial : std::uint8_t { None, Invalid, Exact, Approx, Calculated };

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
    std::optional<std::int64_t> value; ///< empty if it is invalid
    Place place;
};

struct TypeDefinition {
    std::string_view name;
    BaseType base = BaseType::None;
    std::vector<Item> items;
    std::uint32_t unitUse = noIndex; ///< in Description::unitUses
    std::string_view min;            ///< as written, without blanks around it, as those below
    std::string_view max;
    std::string_view nominal;
    std::string_view quantity;
    std::string_view description;
    Place place;
};

/// One dimension of an array variable.
struct Dimension {
    std::uint64_t number = 0; ///< the size, or the value reference of the variable with the size
    bool isReference = false;
};

struct Variable {
    std::string_view name;
    std::optional<std::string_view> declaredType;
    std::string_view
        start;            ///< as written, without blanks around it; of String and Binary the first
    std::string_view min; ///< its own, as are the others; see rangeOf()
    std::string_view max;
    std::string_view nominal;
    std::string_view description;
    Place place;
    std::uint32_t position = 0; ///< among the variables as they are written, from 1
    std::uint32_t valueReference = 0;
    std::uint32_t type = noIndex;     ///< the declared type in Description::types, if it is valid
    std::uint32_t firstDimension = 0; ///< in Description::dimensions
    std::uint32_t dimensionCount = 0;
    std::uint32_t unitUse = noIndex; ///< in Description::unitUses
    std::uint32_t unit = noIndex;    ///< its own unit or that of its type, in Description::units
    std::uint64_t startCount = 0;    ///< number of start values; 0 if one of them is invalid
    BaseType base = BaseType::None;
    Causality causality = Causality::None;
    Variability variability = Variability::None;
    Initial initial = Initial::None;
    bool hasStart = false;
    bool hasValueReference = false;
    bool isSize = false;          ///< whether dimensions may refer to it
    bool hasBadDimension = false; ///< an invalid dimension is not among its dimensions
};

/// A further name of a variable.
struct Alias {
    std::string_view name;
    std::string_view displayUnit;
    std::string_view description;
    std::uint32_t variable = noIndex; ///< in Description::variables
    Place place;
};

enum class ReferenceKind : std::uint8_t { Derivative, Previous, Clock };

/// A reference of a variable to another one: in FMI 2 its position, in FMI 3 its value reference.
struct Reference {
    std::uint32_t variable = 0; ///< in Description::variables
    std::uint32_t target = 0;
    ReferenceKind kind = ReferenceKind::Derivative;
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
    std::vector<Reference> references;
    std::uint32_t variableElements = 0; ///< number of variables, with and without a name
    /// The value references of the variables without a name, which are not among the variables.
    std::unordered_set<std::uint32_t> unnamedReferences;
};

/// The limits and the nominal value of a variable, as written; empty where there is none.
struct Range {
    std::string_view min;
    std::string_view max;
    std::string_view nominal;
};

/// Returns the attributes of a variable, or those of its declared type where it has none.
Range rangeOf(const Variable& variable, const Description& description);

/// Return the value of an attribute, or its default where it is missing or invalid.
Causality causalityOf(const Variable& variable);
Variability variabilityOf(const Variable& variable);

/// Return the attribute value of FMI; empty for None and Invalid.
std::string_view causalityName(Causality causality);
std::string_view variabilityName(Variability variability);
std::string_view initialName(Initial initial);

} // namespace tvtool::fmi
