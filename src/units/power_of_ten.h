/// \file
/// Powers of ten as doubles.
#pragma once

namespace TVTypeSys {

/// Returns the double nearest to 10^exponent, ties to even: 0 below -323, infinity above 308. The
/// same on every machine, unlike std::pow.
double powerOfTen(int exponent);

} // namespace TVTypeSys
