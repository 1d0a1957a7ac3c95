/// \file
/// Comparison of units with their names.
#pragma once

#include "findings/findings.h"
#include "fmi/description.h"
#include "units/expansion.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tvtool::model {

/// The unit that a name expresses.
struct NamedMeaning {
    std::optional<units::Expansion> meaning; ///< empty if the name is not known
    bool isAsWritten = false;                ///< whether the name is an expression of the library
    std::vector<std::string> reasons;        ///< of a reading that is a guess, or why there is none
    /// The expression of the library; empty if the name contains a number, which an expression
    /// cannot.
    std::string expression;
};

/// Reads a name in any usual spelling.
NamedMeaning meaningOfName(std::string_view name);

/// Returns "is not known", or why a name is not read.
std::string unknownText(const NamedMeaning& named);

/// Returns the powers of the base units except the radian, which is 1 in the database.
std::map<std::string, std::int64_t> powersOf(const exchange::BaseUnit& base);

/// Returns a base unit in one line, with the radian: 0.1 * rad/s, K + 273.15.
std::string baseUnitText(const exchange::BaseUnit& base);

/// Returns whether the base units, factor and offset of a definition agree with its name, or one of
/// the two is missing; a difference is a problem. Numbers in descriptions are rounded, so relative
/// differences up to a millionth are ignored, and those of rounding to six digits or more. If they
/// agree with another meaning of an ambiguous name, `named` becomes that meaning, and there is a
/// note.
bool checkUnit(const exchange::UnitDefinition& unit, NamedMeaning& named,
               findings::Findings& findings);

/// Same for the display units of a definition.
void checkDisplayUnits(const exchange::UnitDefinition& unit, const NamedMeaning& named,
                       findings::Findings& findings);

} // namespace tvtool::model
