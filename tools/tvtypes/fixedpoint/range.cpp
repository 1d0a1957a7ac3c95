#include "fixedpoint/range.h"

#include "exact/number.h"
#include "fixedpoint/record.h"

#include <fmt/format.h>

#include <limits>

namespace tvtool::fixedpoint {

namespace {

/// Returns the operations on a stored integer: " * 1.5 * 2^-4 + 0.25".
std::string scalingFormula(const fxpDataTypeProp& record) {
    const bool isOne = record.SlopeAdjustmentFactor == 1.0 && record.FixedExponent == 0;
    std::string text = isOne ? "" : " * " + slopeFormula(record);
    if (record.Bias != 0.0) {
        const std::string bias = biasStr(record);
        text += record.Bias < 0.0 ? " - " + bias.substr(1) : " + " + bias;
    }
    return text;
}

bool isSmall(std::int32_t exponent) { return exponent <= mostBits && exponent >= -mostBits; }

/// Returns a number in digits; its formula if there is no number, or if the digits would be rounded
/// and the formula is exact.
std::string digitsOrFormula(const std::optional<exact::Number>& number, std::string formula,
                            bool isExact) {
    std::string digits = number ? exact::decimalText(*number) : "";
    const bool isRounded = digits.starts_with("about");
    return !number || (isRounded && isExact) ? std::move(formula) : std::move(digits);
}

std::string resolutionText(const fxpDataTypeProp& record) {
    const bool isKnown = isSmall(record.FixedExponent);
    return digitsOrFormula(isKnown ? std::optional(exactSlope(record)) : std::nullopt,
                           slopeFormula(record), record.SlopeAdjustmentFactor == 1.0);
}

/// Returns the bounds of a type whose signedness is not open.
Range bounds(const fxpDataTypeProp& record) {
    const bool isSigned = record.Signedness == 1;
    const int bits = record.WordLength - (isSigned ? 1 : 0);
    const std::string scaling = scalingFormula(record);
    const std::string lowest = isSigned ? fmt::format("-2^{}{}", bits, scaling) : biasStr(record);
    const std::string most = fmt::format("2^{} - 1", bits);
    const std::string highest = scaling.empty() ? most : fmt::format("({}){}", most, scaling);
    const std::optional<Grid> grid = makeGrid(record);
    if (!grid) {
        return {lowest, highest, {}};
    }
    const bool isExact = record.SlopeAdjustmentFactor == 1.0 &&
                         exact::parseDecimal(biasStr(record)) == exact::Number(record.Bias);
    return {digitsOrFormula(grid->value(grid->least), lowest, isExact),
            digitsOrFormula(grid->value(grid->greatest), highest, isExact),
            {}};
}

template <class Floating>
Range floatingPointRange() {
    using Limits = std::numeric_limits<Floating>;
    return {exact::decimalText(exact::Number(Limits::lowest())),
            exact::decimalText(exact::Number(Limits::max())),
            fmt::format("2^{} near 1", 1 - Limits::digits)};
}

} // namespace

std::optional<Grid> makeGrid(const fxpDataTypeProp& record) {
    if (record.DataTypeMode != FXP_DT_FIXPT || isOpen(record) || record.WordLength > mostBits ||
        !isSmall(record.FixedExponent)) {
        return std::nullopt;
    }
    const auto bits = static_cast<unsigned>(record.WordLength);
    const exact::Integer below = record.Signedness == 1
                                     ? exact::Integer(exact::Integer(1) << (bits - 1))
                                     : exact::Integer(0);
    return Grid{-below, (exact::Integer(1) << bits) - 1 - below, exactSlope(record),
                exact::Number(record.Bias)};
}

exact::Number exactSlope(const fxpDataTypeProp& record) {
    return exact::Number(record.SlopeAdjustmentFactor) *
           exact::power(2, record.FixedExponent).value();
}

std::string slopeFormula(const fxpDataTypeProp& record) {
    const std::string exponent = fixedExponentStr(record);
    return record.SlopeAdjustmentFactor == 1.0
               ? fmt::format("2^{}", exponent)
               : fmt::format("{} * 2^{}", slopeAdjustmentFactorStr(record), exponent);
}

Range valueRange(const fxpDataTypeProp& record) {
    switch (record.DataTypeMode) {
    case FXP_DT_DOUBLE:
        return floatingPointRange<double>();
    case FXP_DT_SINGLE:
        return floatingPointRange<float>();
    case FXP_DT_BOOLEAN:
        return {"0", "1", {}};
    case FXP_DT_SCALED_DOUBLE:
        return {};
    case FXP_DT_FIXPT:
        break;
    }
    Range range = isOpen(record) ? Range{} : bounds(record);
    range.resolution = resolutionText(record);
    return range;
}

std::string Range::text() const {
    return lowest.empty() ? "" : fmt::format("{} to {}", lowest, highest);
}

} // namespace tvtool::fixedpoint
