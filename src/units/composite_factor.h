/// \file
/// Factors of composite units.
#pragma once

#include <tvtypes/units/database.h>

#include <boost/container/small_vector.hpp>

namespace TVTypeSys {

/// A power of a unit in an expression.
struct Term {
    UnitBase::Reference unit;
    int power;
};
using Terms = boost::container::small_vector<Term, 8>;

/// Multiplies `product` by the factors of the terms, as UnitBase::updateBaseScalingFactor does. If
/// a multiplication overflows 32 bits, `product` becomes the factor that the database lists for the
/// product of all terms; without such a factor the parts wrap. An output parameter, since a copied
/// Rational loses its flag. \pre The product is 1.
void multiplyFactors(const UnitDatabase& database, const Terms& terms, Rational& product);

} // namespace TVTypeSys
