/// \file
/// What expressions mean.
#pragma once

#include "algebra/fraction.h"
#include "algebra/normal_forms.h"

#include <cstdint>
#include <optional>

namespace TV {

struct Value {
    std::optional<Fraction> fraction;
    bool hasParts; ///< what it is a sum, product or quotient of has values
};

/// The rational function that an expression of arithmetic is. None where it divides by what is
/// zero, where something else stands in it, and where it or a part is beyond all bounds. Names and
/// numbers in it are remembered.
///
/// A sum of sums is taken as one, and so is a product of products: it depends on their parts alone
/// whether there is a value, and not on what was simplified before.
Value evaluate(std::uint32_t id, const SymbolicExprTable::Contents& contents, NormalForms& forms);

} // namespace TV
