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

std::string resolutionOf(const fxpDataTypeProp& record) {
    return isSmall(record.FixedExponent) ? textOf(exactSlopeOf(record)) : slopeFormula(record);
}

/// The bounds of a type with a signedness.
report::FixptRange boundsOf(const fxpDataTypeProp& record) {
    if (const std::optional<Grid> grid = gridOf(record)) {
        return {textOf(grid->valueOf(grid->least)), textOf(grid->valueOf(grid->greatest)), {}};
    }
    const std::string scaling = scalingOf(record);
    if (record.Signedness == 1) {
        const int bits = record.WordLength - 1;
        return {
            fmt::format("-2^{}{}", bits, scaling), fmt::format("(2^{} - 1){}", bits, scaling), {}};
    }
    return {biasStr(record), fmt::format("(2^{} - 1){}", record.WordLength, scaling), {}};
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
