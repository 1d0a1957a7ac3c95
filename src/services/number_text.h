/// \file
/// Decimal texts of numbers.
#pragma once

#include <string>

namespace TVTypeSys {

/// The decimal text of a double; equal doubles give equal texts.
std::string decimalText(double value);

} // namespace TVTypeSys
