/// \file
/// Simplification of expressions.
#pragma once

#include <fnd/export.h>
#include <symbolicexpr/table.h>

namespace TV {

/// Brings arithmetic into a canonical form: expressions that are equal as rational functions of
/// their names get one id. The form is the parse of a text that follows these rules:
/// - The terms of a sum are in descending order of degree, then in lexicographic order of their
/// names,
///   powers written as repeated names (`M*M`, `M*N`, `N*N`); the constant is last. If that puts a
///   negative term first and there is a positive one, the first positive one moves to the front
///   (`2-M`).
/// - In a term the integer comes first, then the names in byte order, a power as repeated factors.
/// - Over an integer denominator each term is divided separately (`N/2+1`, `3*N/4`).
/// - Any other quotient is in lowest terms, the first term of the denominator positive.
///
/// Entries of lists and sides of relations are simplified separately. An expression is left as it
/// is if it divides by what is identically zero, if arithmetic contains a list or relation, if
/// expansion gives more than 4,096 terms, 2^20 factors or 2^22 bits of coefficients, or if a common
/// factor of polynomials in several names of degree over 512 would have to be computed.
///
/// Beyond these limits equal operands of sums, products and quotients are still combined, and
/// cancel, without being multiplied out: for an X with more than 4,096 terms too, `X-X` is 0, `X/X`
/// is 1 and `(X+1)-1` is `X`. Operands are equal if their simplified forms are; nested sums have
/// one list of operands, and so have nested products and quotients. This is left out where a
/// divisor is not known to differ from zero. It takes a time proportional to n log n for n
/// operators; the operands of at most 100 expressions beyond the limits are simplified on their
/// own.
///
/// Polynomials and large integers are computed by FLINT and GMP, which end the process if they
/// cannot allocate memory. So as much as a computation may need is allocated and released before it
/// starts, and simplification throws std::bad_alloc, with nothing added, if that fails. The process
/// still ends if other threads take the memory in between. The memory functions of both libraries,
/// which the whole process shares, are not replaced.
class TV_PLATFORM_API SymbolicExprSimplify {
  public:
    /// Refers to the table, which must outlive the simplifier and memoises the results.
    /// \param effort not used: one pass suffices. For simplifiers that need several.
    explicit SymbolicExprSimplify(SymbolicExprTable& table, [[maybe_unused]] int effort = 10)
        : table_(&table) {}

    /// Returns the id of the simplified expression. Sets `simplified` to 1, or to 0 if the
    /// expression or an entry or side of it is left as it is. Throws
    /// TorvaneTypes::general::InvalidDataTypeId (id minus one) if the table has no such id.
    unsigned long simplify(unsigned long id, unsigned long& simplified) const;

  private:
    SymbolicExprTable* table_;
};

} // namespace TV
