/// \file
/// The grammar of unit expressions: names joined by * and /, with whole-number powers.
///
/// | Text            | Names and powers | Why                                                    |
/// |-----------------|------------------|--------------------------------------------------------|
/// | `kg*m/s^2`      | kg^1 m^1 s^-2    | * and / go from left to right, ^ binds tighter         |
/// | `m^2^-3`        | m^-6             | ^ repeats to the left, on a name or a group            |
/// | `1/(m*s)`       | m^-1 s^-1        | ahead of the first / an integer is only a place holder |
/// | `5*kg`          | 5^1 kg^1         | anywhere else a run of digits is a name                |
/// | `m/m`, `m^0*s`  | m^0; s^1         | a power may add up to 0; the power 0 removes           |
///
/// A name is made of letters, digits and "_" as the current locale classifies them. Parentheses
/// may enclose an expression or an exponent. What encloses a group directly encloses it alone:
/// `((m)*s)` is no expression, `(m)*s` is.
#pragma once

#include <tvtypes/export.h>

#include <cstdint>
#include <string>
#include <vector>

/// A product of powers of names.
struct TVTYPES_API Monomial {
    std::vector<std::u16string> names; ///< in order of first appearance
    std::vector<std::int32_t> powers;  ///< the power of the name at the same position
    std::int32_t value = 1;            ///< what an exponent counts as in power(); else no meaning

    Monomial() = default;

    /// One name to the power 1. Of each character the low 16 bits are kept.
    explicit Monomial(const std::vector<wchar_t>& name);

    /// This to the power n: each power times n, wrapping; the power 0 leaves no names.
    Monomial power(int n) const;

    /// This to the power exponent.value.
    Monomial power(const Monomial& exponent) const;

    /// Adds the powers of names that this holds already, wrapping, and appends the others. A power
    /// that becomes 0 stays.
    Monomial& operator*=(const Monomial& other);
    Monomial& operator/=(const Monomial& other);
};

/// Reads a unit expression into the names and powers of `result`. False, with `result` as it was,
/// if the text is none, also if it nests more than 1000 parentheses. Throws std::out_of_range at a
/// misplaced surrogate. The time is proportional to the length of the text, whatever it is.
TVTYPES_API bool parseUnitExpr(const std::u16string& expression, Monomial& result);
