/// \file
/// Records that the XML formats share: base types, units, and items of enumerations.
///
/// Texts are views into the Texts of the file that contains the record.
#pragma once

#include "findings/findings.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory_resource>
#include <optional>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace tvtool::exchange {

using findings::Place;

/// "None" where a record refers to another by its index.
inline constexpr std::uint32_t noIndex = UINT32_MAX;

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

/// One named value of an enumeration.
struct Item {
    std::string_view name;
    std::optional<std::int64_t> value; ///< empty if it is invalid
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

} // namespace tvtool::exchange
