/// \file
/// Parser of unit expressions: names joined by * and /, with integer powers.
///
/// | Text            | Names and powers | Rule                                                   |
/// |-----------------|------------------|--------------------------------------------------------|
/// | `kg*m/s^2`      | kg^1 m^1 s^-2    | * and / are left-associative, ^ binds tighter          |
/// | `m^2^-3`        | m^-6             | ^ is left-associative, on a name or a group            |
/// | `1/(m*s)`       | m^-1 s^-1        | an integer before the first / is a placeholder         |
/// | `5*kg`          | 5^1 kg^1         | anywhere else digits are a name                        |
/// | `m/m`, `m^0*s`  | m^0; s^1         | a sum of powers may be 0; an exponent 0 removes a name |
///
/// A name consists of letters, digits and "_" as the current locale classifies them. Parentheses
/// enclose an expression or an exponent. A group that begins in the first position of another group
/// must be all of it: `((m)*s)` is not an expression, `(m)*s` is.
#pragma once

#include <tvtypes/export.h>

#include <cstdint>
#include <string>
#include <vector>

/// \addtogroup units
/// @{

/// A product of powers of names.
struct TVTYPES_API Monomial {
    std::vector<std::u16string> names; ///< in order of first appearance
    std::vector<std::int32_t> powers;  ///< power of the name at the same position
    std::int32_t value = 1; ///< the exponent if this is an argument of power(); else not read

    /// Creates an empty product.
    Monomial() = default;

    /// Creates one name with the power 1. Each character is truncated to its low 16 bits.
    explicit Monomial(const std::vector<wchar_t>& name);

    /// Returns this to the power n: each power times n, wrapping. The power 0 returns no names.
    Monomial power(int n) const;

    /// Returns this to the power exponent.value.
    Monomial power(const Monomial& exponent) const;

    /// \name Products
    /// @{

    /// Adds, or subtracts, the powers of names that this has already, wrapping, and appends the
    /// other names. A power that becomes 0 stays. Linear in the number of names.
    Monomial& operator*=(const Monomial& other);
    Monomial& operator/=(const Monomial& other);
    /// @}
};

/// Parses a unit expression into the names and powers of `result`. Returns false, with `result`
/// unchanged, if the text is not an expression or nests more than 1000 parentheses. Throws
/// std::out_of_range for an unpaired surrogate. Linear in the length of any text.
TVTYPES_API bool parseUnitExpr(const std::u16string& expression, Monomial& result);

/// @}
