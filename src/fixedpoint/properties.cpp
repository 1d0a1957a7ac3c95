// Validation and order of records.
#include <tvtypes/fixedpoint/properties.h>

#include <cmath>

bool fxpDataTypeProp::preValidateWordLength(int wordLength) { return wordLength > 0; }

bool fxpDataTypeProp::preValidateWordLength(unsigned int wordLength) { return wordLength != 0; }

bool fxpDataTypeProp::preValidateSlopeAdjustmentFactor(double factor) {
    return 1.0 <= factor && factor < 2.0;
}

bool fxpDataTypeProp::preValidateTotalSlope(double slope) {
    return std::isfinite(slope) && slope > 0.0;
}

bool fxpDataTypeProp::preValidateBias(double bias) { return std::isfinite(bias); }

namespace {

template <class WordLength>
bool isValidCombination(fxpModeDataType mode, unsigned int signedness, WordLength wordLength,
                        double factor, int exponent, double bias) {
    const bool isUnscaled = exponent == 0 && factor == 1.0 && bias == 0.0;
    switch (mode) {
    case FXP_DT_FIXPT:
    case FXP_DT_SCALED_DOUBLE:
        return fxpDataTypeProp::preValidateWordLength(wordLength) &&
               fxpDataTypeProp::preValidateSlopeAdjustmentFactor(factor) &&
               fxpDataTypeProp::preValidateBias(bias);
    case FXP_DT_DOUBLE:
        return wordLength == 64 && signedness == 1 && isUnscaled;
    case FXP_DT_SINGLE:
        return wordLength == 32 && signedness == 1 && isUnscaled;
    case FXP_DT_BOOLEAN:
        return wordLength == 8 && signedness == 0 && isUnscaled;
    }
    return false;
}

} // namespace

bool fxpDataTypeProp::preValidateCombo(fxpModeDataType mode, unsigned int signedness,
                                       int wordLength, double slopeAdjustmentFactor,
                                       int fixedExponent, double bias) {
    return isValidCombination(mode, signedness, wordLength, slopeAdjustmentFactor, fixedExponent,
                              bias);
}

bool fxpDataTypeProp::preValidateCombo(fxpModeDataType mode, unsigned int signedness,
                                       unsigned int wordLength, double slopeAdjustmentFactor,
                                       int fixedExponent, double bias) {
    return isValidCombination(mode, signedness, wordLength, slopeAdjustmentFactor, fixedExponent,
                              bias);
}

bool fxpDataTypeProp::validateFxpDTProp() const {
    return preValidateCombo(DataTypeMode, Signedness, WordLength, SlopeAdjustmentFactor,
                            FixedExponent, Bias);
}

bool fxpDataTypeSortCompare::operator()(const fxpDataTypeProp& a, const fxpDataTypeProp& b) const {
    if (a.DataTypeMode != b.DataTypeMode) {
        return a.DataTypeMode < b.DataTypeMode;
    }
    if (a.DataTypeMode < FXP_DT_DOUBLE) {
        if (a.FixedExponent != b.FixedExponent) {
            return a.FixedExponent < b.FixedExponent;
        }
        if (a.SlopeAdjustmentFactor != b.SlopeAdjustmentFactor) {
            return a.SlopeAdjustmentFactor < b.SlopeAdjustmentFactor;
        }
        if (a.Bias != b.Bias) {
            return a.Bias < b.Bias;
        }
        if (a.WordLength != b.WordLength) {
            return static_cast<std::uint32_t>(a.WordLength) <
                   static_cast<std::uint32_t>(b.WordLength);
        }
        if (a.Signedness != b.Signedness) {
            return a.Signedness < b.Signedness;
        }
    }
    return a.DataTypeOverrideState < b.DataTypeOverrideState;
}
