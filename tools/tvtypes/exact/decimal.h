/// \file
/// Exact numbers and their decimal texts.
#pragma once

#include "exact.h"

#include <string>
#include <string_view>

namespace tvtool::fixpt {

/// The number that a decimal text is, as -12.5e-3, without loss. Throws an Error for another text,
/// and for one of more than some thousand digits.
Exact exactOf(std::string_view text);

/// A number as a decimal: exactly if it has at most 24 digits, else "about" and the nearest of 17.
std::string textOf(const Exact& number);

} // namespace tvtool::fixpt
