/// \file
/// Record of a numeric type, its validation and its order.
///
/// A real-world value V is represented by a stored integer Q:
/// V = SlopeAdjustmentFactor * 2^FixedExponent * Q + Bias.
/// The product SlopeAdjustmentFactor * 2^FixedExponent is the total slope.
///
/// Nothing here throws: a failed check is a false result. All functions are pure, except those that
/// write to standard output. No pointer to a record may be null; that is unchecked.
#pragma once

#include <tvtypes/export.h>

#include <cstdint>

/// \addtogroup fixedpoint
/// @{

/// The kinds of numeric type.
enum fxpModeDataType : std::int32_t {
    FXP_DT_FIXPT = 0,         ///< true fixed point
    FXP_DT_SCALED_DOUBLE = 1, ///< a double with the scaling of a fixed-point type
    FXP_DT_DOUBLE = 2,        ///< 64-bit floating point
    FXP_DT_SINGLE = 3,        ///< 32-bit floating point
    FXP_DT_BOOLEAN = 4        ///< boolean
};

/// Overflow modes: the result for a value outside the range of the destination.
enum fxpModeOverflow_tag : std::int32_t {
    FXP_OVERFLOW_WRAP = 0,    ///< the value modulo 2^N for a word length of N
    FXP_OVERFLOW_SATURATE = 1 ///< the nearer bound
};

/// Rounding modes of conversions from floating point to integers.
enum fxpModeRounding_tag : std::int32_t {
    FXP_ROUND_ZERO = 0,       ///< toward zero
    FXP_ROUND_NEAR = 1,       ///< to nearest, ties toward positive infinity
    FXP_ROUND_CEIL = 2,       ///< toward positive infinity
    FXP_ROUND_FLOOR = 3,      ///< toward negative infinity
    FXP_ROUND_ZERO_ALIAS = 4, ///< as FXP_ROUND_ZERO
    FXP_ROUND_ROUND = 5,      ///< to nearest, ties away from zero
    FXP_ROUND_CONVERGENT = 6  ///< to nearest, ties to even
};

/// A numeric type. A plain aggregate.
struct TVTYPES_API fxpDataTypeProp {
    fxpModeDataType DataTypeMode;       ///< the kind
    std::uint32_t Signedness;           ///< 1 signed, 0 unsigned, any other value unspecified
    std::int32_t WordLength;            ///< bits
    std::int32_t FixedExponent;         ///< the negated fraction length
    double SlopeAdjustmentFactor;       ///< in [1, 2) if valid; 1.0 outside fixed point
    double Bias;                        ///< added to the scaled integer
    std::int32_t DataTypeOverrideState; ///< 1: data type override is off for this type

    /// Returns whether a word length, in bits, is valid: greater than 0.
    static bool preValidateWordLength(int wordLength);

    /// Returns whether a word length, in bits, is valid: not 0.
    static bool preValidateWordLength(unsigned int wordLength);

    /// Returns whether a slope adjustment factor is valid: in [1, 2).
    static bool preValidateSlopeAdjustmentFactor(double factor);

    /// Returns whether a total slope is valid: finite and greater than 0.
    static bool preValidateTotalSlope(double slope);

    /// Returns whether a bias is valid: finite.
    static bool preValidateBias(double bias);

    /// Returns whether the values form a valid record. For the two fixed-point modes the word
    /// length, the factor and the bias must be valid, and nothing else matters. Each other mode has
    /// one valid record, without scaling and bias: double signed with 64 bits, single signed with
    /// 32, boolean unsigned with 8. A mode that is not an enumerator is invalid.
    static bool preValidateCombo(fxpModeDataType mode, unsigned int signedness, int wordLength,
                                 double slopeAdjustmentFactor, int fixedExponent, double bias);

    /// As above, for an unsigned word length.
    static bool preValidateCombo(fxpModeDataType mode, unsigned int signedness,
                                 unsigned int wordLength, double slopeAdjustmentFactor,
                                 int fixedExponent, double bias);

    /// Returns preValidateCombo of the fields of this record.
    bool validateFxpDTProp() const;
};

static_assert(sizeof(fxpDataTypeProp) == 40, "clients share records in memory");

/// Returns the name of the enumerator of the record's mode, or "UNKNOWN"; a constant string.
TVTYPES_API const char* fxpDtpGetClassName(const fxpDataTypeProp* record);

/// Returns `condition`; if it is false, first writes "Data Type Assertion" and the record to
/// standard output.
TVTYPES_API bool fxpDtpPreAssert(bool condition, const fxpDataTypeProp* record);

/// Writes the record to standard output, one field a line. Omits the override state.
TVTYPES_API void displayFxpDTP(const fxpDataTypeProp* record);

/// Writes the record to standard output in one line. Omits the override state.
TVTYPES_API void displayFxpDTPFlat(const fxpDataTypeProp* record);

/// Order of records: by mode, then, for the two fixed-point modes only, by exponent, factor, bias,
/// word length and signedness (both compared as unsigned), then by override state.
/// \pre No factor or bias is NaN; unchecked. A NaN compares equivalent to every value, so that the
/// order is not a strict weak one.
struct TVTYPES_API fxpDataTypeSortCompare {
    /// Returns whether `a` is ordered before `b`.
    bool operator()(const fxpDataTypeProp& a, const fxpDataTypeProp& b) const;
};

/// @}
