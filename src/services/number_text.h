/// \file
/// Conversion of numbers to decimal texts.
#pragma once

#include <string>

namespace TVTypeSys {

/// Returns the decimal text of a double that the host's numeric environment reads back as the same
/// double.
std::string evaluableText(double value);

/// Returns the decimal text of a double for names. Equal doubles give equal texts.
std::string decimalText(double value);

} // namespace TVTypeSys
