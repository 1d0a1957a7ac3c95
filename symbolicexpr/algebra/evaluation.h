/// \file
/// Evaluation of expressions as rational functions.
#pragma once

#include "algebra/fraction.h"
#include "algebra/normal_forms.h"

#include <cstdint>
#include <optional>

namespace TV {

struct Value {
    std::optional<Fraction> fraction;
    bool operandsHaveValues; ///< whether only the result itself has no value
    /// Whether no two operands of a sum have a term in common, so that none can be combined.
    bool hasDistinctOperands = false;
};

/// Evaluates arithmetic as a rational function of its names. There is no value where the expression
/// divides by zero, contains a list or relation, or exceeds the limits of limits.h, in itself or in
/// an operand. The values of names and numbers in it are memoised in `forms`.
///
/// Nested sums are flattened into one sum and nested products into one product. So whether there is
/// a value depends on their operands alone, and not on what was simplified before.
Value evaluate(std::uint32_t id, const SymbolicExprTable::Contents& contents, NormalForms& forms);

} // namespace TV
