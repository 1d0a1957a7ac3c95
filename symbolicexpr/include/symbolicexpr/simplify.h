/// \file
/// The simplest equal expression.
#pragma once

#include <fnd/export.h>
#include <symbolicexpr/table.h>

namespace TV {

/// Brings arithmetic into a canonical form: expressions that are equal as rational functions of
/// their names become one. The form is what these texts read as:
/// - Terms of a sum: those of higher degree first, then by their names spelled out and sorted
///   (`M*M`, `M*N`, `N*N`), the constant last. If that puts a negative term first and there is a
///   positive one, the first positive one moves to the front (`2-M`).
/// - In a term the number comes first, then the names in byte order, a power as repeated factors.
/// - With a number as denominator each term is divided on its own (`N/2+1`, `3*N/4`).
/// - Otherwise numerator over denominator without a common factor, the first term of the
///   denominator positive.
///
/// Entries of lists and sides of relations are simplified each on its own. An expression stays as
/// it is where it divides by what is identically zero, where a list or a relation stands inside
/// arithmetic, and where multiplying out gives more than 4,096 terms or a form beyond all bounds
/// (2^20 factors, 2^22 bits of numbers). So it does where a common factor would have to be found in
/// polynomials of a degree over 512 in several names.
class TV_PLATFORM_API SymbolicExprSimplify {
  public:
    /// The effort is for simplifiers that need many passes; this one needs one.
    explicit SymbolicExprSimplify(SymbolicExprTable& table, int /*effort*/ = 10) : table_(&table) {}

    /// The id of the simplified expression. `simplified` becomes 1, or 0 if it or an
    /// entry or side of it stays as it is.
    /// Refused: TorvaneTypes::general::InvalidDataTypeId (id minus one).
    unsigned long simplify(unsigned long id, unsigned long& simplified) const;

  private:
    SymbolicExprTable* table_;
};

} // namespace TV
