/// \file
/// The record of a numeric type, its checks and its order.
///
/// A real-world value V is held as a stored integer Q:
/// V = SlopeAdjustmentFactor * 2^FixedExponent * Q + Bias.
/// The product SlopeAdjustmentFactor * 2^FixedExponent is the total slope.
///
/// Nothing here refuses: a failed check is a false result. All functions are pure but for the
/// displays, which write to standard output.
#pragma once

#include <tvtypes/export.h>

#include <cstdint>

/// The kinds of numeric type.
enum fxpModeDataType : std::int32_t {
    FXP_DT_FIXPT = 0,         ///< true fixed point
    FXP_DT_SCALED_DOUBLE = 1, ///< a double that carries the scaling of a fixed-point type
    FXP_DT_DOUBLE = 2,        ///< 64-bit floating point
    FXP_DT_SINGLE = 3,        ///< 32-bit floating point
    FXP_DT_BOOLEAN = 4        ///< boolean
};

/// What becomes of a value outside the destination's range.
enum fxpModeOverflow_tag : std::int32_t {
    FXP_OVERFLOW_WRAP = 0,    ///< taken modulo the destination's range
    FXP_OVERFLOW_SATURATE = 1 ///< the nearer bound
};

/// How a floating-point value becomes an integer.
enum fxpModeRounding_tag : std::int32_t {
    FXP_ROUND_ZERO = 0,       ///< toward zero
    FXP_ROUND_NEAR = 1,       ///< to nearest, ties toward positive infinity
    FXP_ROUND_CEIL = 2,       ///< toward positive infinity
    FXP_ROUND_FLOOR = 3,      ///< toward negative infinity
    FXP_ROUND_ZERO_ALIAS = 4, ///< as FXP_ROUND_ZERO
    FXP_ROUND_ROUND = 5,      ///< to nearest, ties away from zero
    FXP_ROUND_CONVERGENT = 6  ///< to nearest, ties to even
};

/// All that is known about a numeric type. A plain record: copied by value, compared by field.
struct TVTYPES_API fxpDataTypeProp {
    fxpModeDataType DataTypeMode;
    std::uint32_t Signedness;     ///< 1 signed, 0 unsigned, any other value left open
    std::int32_t WordLength;      ///< bits
    std::int32_t FixedExponent;   ///< the negated fraction length
    double SlopeAdjustmentFactor; ///< in [1, 2) if valid; 1.0 outside fixed point
    double Bias;
    std::int32_t DataTypeOverrideState; ///< 1: data type override is off for this type

    /// Whether a value may be a word length: greater than 0, or not 0.
    static bool preValidateWordLength(int wordLength);
    static bool preValidateWordLength(unsigned int wordLength);

    /// Whether a value may be a slope adjustment factor: finite and in [1, 2).
    static bool preValidateSlopeAdjustmentFactor(double factor);

    /// Whether a value may be a total slope: finite and greater than 0.
    static bool preValidateTotalSlope(double slope);

    /// Whether a value may be a bias: finite.
    static bool preValidateBias(double bias);

    /// Whether the values together form a valid record. For the two fixed-point modes the word
    /// length, the factor and the bias must pass, and nothing else is looked at; for the others
    /// there is one valid record each, of word length 64, 32 or 8, no scaling and no bias.
    static bool preValidateCombo(fxpModeDataType mode, unsigned int signedness, int wordLength,
                                 double slopeAdjustmentFactor, int fixedExponent, double bias);
    static bool preValidateCombo(fxpModeDataType mode, unsigned int signedness,
                                 unsigned int wordLength, double slopeAdjustmentFactor,
                                 int fixedExponent, double bias);

    /// Whether this record is valid: preValidateCombo of its own fields.
    bool validateFxpDTProp() const;
};

static_assert(sizeof(fxpDataTypeProp) == 40, "records lie in memory that clients share");

/// The enumerator's name of the record's mode, or "UNKNOWN". A constant text.
TVTYPES_API const char* fxpDtpGetClassName(const fxpDataTypeProp* record);

/// Gives `condition` back; if it is false, first writes "Data Type Assertion" and the record.
TVTYPES_API bool fxpDtpPreAssert(bool condition, const fxpDataTypeProp* record);

/// Writes the record to standard output, a field a line or all in one.
TVTYPES_API void displayFxpDTP(const fxpDataTypeProp* record);
TVTYPES_API void displayFxpDTPFlat(const fxpDataTypeProp* record);

/// The order of records: by mode, then, for the two fixed-point modes, by exponent, factor, bias,
/// word length and signedness (both unsigned), and last by override state. A NaN in factor or
/// bias is equivalent to all that it meets there.
struct TVTYPES_API fxpDataTypeSortCompare {
    bool operator()(const fxpDataTypeProp& a, const fxpDataTypeProp& b) const;
};
