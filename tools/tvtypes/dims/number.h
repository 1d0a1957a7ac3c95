/// \file
/// Dimensions that are numbers.
#pragma once

#include <tvtypes/symbolicdims.h>

#include <boost/multiprecision/cpp_int.hpp>

#include <optional>

namespace tvtool::dims {

using Number = boost::multiprecision::cpp_rational;

/// The number that a simplified dimension is. Empty if it is none, or one of more than some
/// thousand digits.
std::optional<Number> numberOf(const TVTypeSys::SymbolicDimsTable& table, int id);

/// What the first dimension is more than the second, whatever their names stand for. Empty if that
/// depends on them.
std::optional<Number> differenceOf(const TVTypeSys::SymbolicDimsTable& table, int a, int b);

} // namespace tvtool::dims
