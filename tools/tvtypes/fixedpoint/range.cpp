#include "fixpt/range.h"

#include "fixpt/decimal.h"
#include "fixpt/record.h"

#include <fmt/format.h>

#include <limits>

namespace tvtool::fixpt {

namespace {

Exact powerOfTwo(int power) {
    const Integer two = Integer(1) << (power < 0 ? -power : power);
    return power < 0 ? Exact(1, two) : Exact(two);
}

/// " * 1.5 * 2^-4 + 0.25": what is done to a stored integer.
std::string scalingOf(const fxpDataTypeProp& record) {
    const bool isOne = record.SlopeAdjustmentFactor == 1.0 && record.FixedExponent == 0;
    std::string text = isOne ? "" : " * " + slopeFormula(record);
    if (record.Bias != 0.0) {
        const std::string bias = biasStr(record);
        text += record.Bias < 0.0 ? " - " + bias.substr(1) : " + " + bias;
    }
    return text;
}

bool isSmall(std::int32_t exponent) { return exponent <= mostBits && exponent >= -mostBits; }

/// A number in digits, or else its formula where those would be rounded and it is exact.
std::string digitsOrFormula(const std::optional<Exact>& number, std::string formula, bool isExact) {
    std::string digits = number ? textOf(*number) : "";
    const bool isRounded = digits.starts_with("about");
    return !number || (isRounded && isExact) ? std::move(formula) : std::move(digits);
}

std::string resolutionOf(const fxpDataTypeProp& record) {
    const bool isKnown = isSmall(record.FixedExponent);
    return digitsOrFormula(isKnown ? std::optional(exactSlopeOf(record)) : std::nullopt,
                           slopeFormula(record), record.SlopeAdjustmentFactor == 1.0);
}

/// The bounds of a type with a signedness.
report::FixptRange boundsOf(const fxpDataTypeProp& record) {
    const bool isSigned = record.Signedness == 1;
    const int bits = record.WordLength - (isSigned ? 1 : 0);
    const std::string scaling = scalingOf(record);
    const std::string lowest = isSigned ? fmt::format("-2^{}{}", bits, scaling) : biasStr(record);
    const std::string most = fmt::format("2^{} - 1", bits);
    const std::string highest = scaling.empty() ? most : fmt::format("({}){}", most, scaling);
    const std::optional<Grid> grid = gridOf(record);
    if (!grid) {
        return {lowest, highest, {}};
    }
    const bool isExact =
        record.SlopeAdjustmentFactor == 1.0 && exactOf(biasStr(record)) == Exact(record.Bias);
    return {digitsOrFormula(grid->valueOf(grid->least), lowest, isExact),
            digitsOrFormula(grid->valueOf(grid->greatest), highest, isExact),
            {}};
}

template <class Floating>
report::FixptRange rangeOfFormat() {
    using Limits = std::numeric_limits<Floating>;
    return {textOf(Exact(Limits::lowest())), textOf(Exact(Limits::max())),
            fmt::format("2^{} near 1", 1 - Limits::digits)};
}

} // namespace

std::optional<Grid> gridOf(const fxpDataTypeProp& record) {
    if (record.DataTypeMode != FXP_DT_FIXPT || isOpen(record) || record.WordLength > mostBits ||
        !isSmall(record.FixedExponent)) {
        return std::nullopt;
    }
    const auto bits = static_cast<unsigned>(record.WordLength);
    const Integer below = record.Signedness == 1 ? Integer(Integer(1) << (bits - 1)) : Integer(0);
    return Grid{-below, (Integer(1) << bits) - 1 - below, exactSlopeOf(record), Exact(record.Bias)};
}

Exact exactSlopeOf(const fxpDataTypeProp& record) {
    return Exact(record.SlopeAdjustmentFactor) * powerOfTwo(record.FixedExponent);
}

std::string slopeFormula(const fxpDataTypeProp& record) {
    const std::string exponent = fixedExponentStr(record);
    return record.SlopeAdjustmentFactor == 1.0
               ? fmt::format("2^{}", exponent)
               : fmt::format("{} * 2^{}", slopeAdjustmentFactorStr(record), exponent);
}

report::FixptRange rangeOf(const fxpDataTypeProp& record) {
    switch (record.DataTypeMode) {
    case FXP_DT_DOUBLE:
        return rangeOfFormat<double>();
    case FXP_DT_SINGLE:
        return rangeOfFormat<float>();
    case FXP_DT_BOOLEAN:
        return {"0", "1", {}};
    case FXP_DT_SCALED_DOUBLE:
        return {};
    case FXP_DT_FIXPT:
        break;
    }
    report::FixptRange range = isOpen(record) ? report::FixptRange{} : boundsOf(record);
    range.resolution = resolutionOf(record);
    return range;
}

} // namespace tvtool::fixpt
