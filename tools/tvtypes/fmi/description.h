/// \file
/// The content of a model description as plain records.
///
/// Texts are views into Description::texts of the description that contains the record.
#pragma once

#include "exchange/records.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace tvtool::fmi {

using exchange::BaseType;
using exchange::noIndex;
using exchange::Place;

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

/// The unit attributes of a variable or a type.
struct UnitUse {
    std::string_view unit;        ///< empty if missing
    std::string_view displayUnit; ///< empty if missing
};

struct TypeDefinition {
    std::string_view name;
    BaseType base = BaseType::None;
    std::vector<exchange::Item> items;
    std::uint32_t unitUse = noIndex; ///< in Description::unitUses
    std::string_view min;            ///< as written, without blanks around it, as those below
    std::string_view max;
    std::string_view nominal;
    std::string_view quantity;
    std::string_view description;
    Place place;
    bool isRelative = false; ///< whether the offset of the unit does not apply
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
    bool isRelative = false;      ///< its own relativeQuantity, without that of its type
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

struct Description {
    exchange::Texts texts;
    std::string_view fmiVersion;
    std::string_view modelName;
    std::vector<std::string_view> interfaces; ///< such as CoSimulation
    int majorVersion = 0;                     ///< 2 or 3; 1 where that is read
    bool hasStructuredNames = false;          ///< whether names express a hierarchy of structs
    std::vector<exchange::UnitDefinition> units;
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

/// Same for initial, whose default depends on the others; None if they cannot be combined or there
/// is no initial for them. For FMI 2 and 3.
Initial initialOf(const Variable& variable, int majorVersion);

/// Return the attribute value of FMI; empty for None and Invalid.
std::string_view causalityName(Causality causality);
std::string_view variabilityName(Variability variability);
std::string_view initialName(Initial initial);

} // namespace tvtool::fmi
