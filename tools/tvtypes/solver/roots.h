/// \file
/// Roots of polynomials in one unknown.
#pragma once

#include "solver/linear_form.h"

#include <optional>
#include <vector>

namespace tvtool::solver {

struct Roots {
    std::vector<Number> fractions; ///< in ascending order
    bool hasPositiveIrrational = false;
    bool hasNegativeIrrational = false;
};

/// Returns the real roots of a polynomial, or nothing beyond degree 16 or coefficients of 1000
/// bits. \param coefficients in ascending order of the powers; the last one, whose power is at
/// least 1, is
///     not 0
std::optional<Roots> realRoots(const std::vector<Integer>& coefficients);

} // namespace tvtool::solver
