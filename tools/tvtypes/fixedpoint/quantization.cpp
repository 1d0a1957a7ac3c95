#include "fixedpoint/quantization.h"

#include "convert/names.h"
#include "exact/number.h"
#include "fixedpoint/record.h"

#include <fmt/format.h>

#include <array>
#include <limits>
#include <optional>
#include <stdexcept>
#include <utility>

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

/// A number as floor + rest, where 0 <= rest < 1.
struct Parts {
    exact::Integer floor;
    exact::Number rest;
};

Parts splitAtFloor(const exact::Number& number) {
    Parts parts;
    exact::Integer remainder;
    divide_qr(numerator(number), denominator(number), parts.floor, remainder);
    if (remainder < 0) {
        --parts.floor;
    }
    parts.rest = number - parts.floor;
    return parts;
}

bool roundsUp(const Parts& parts, fxpModeRounding_tag rounding) {
    const int half = parts.rest.compare(exact::Number(1, 2));
    switch (rounding) {
    case FXP_ROUND_ZERO:
    case FXP_ROUND_ZERO_ALIAS:
        return parts.rest != 0 && parts.floor < 0;
    case FXP_ROUND_NEAR:
        return half >= 0;
    case FXP_ROUND_CEIL:
        return parts.rest != 0;
    case FXP_ROUND_FLOOR:
        return false;
    case FXP_ROUND_ROUND:
        return half > 0 || (half == 0 && parts.floor >= 0);
    case FXP_ROUND_CONVERGENT:
        return half > 0 || (half == 0 && parts.floor % 2 != 0);
    }
    return false;
}

/// Returns an integer reduced to the range of the grid modulo its number of integers.
exact::Integer wrapped(const exact::Integer& integer, const Grid& grid) {
    const exact::Integer count = grid.greatest - grid.least + 1;
    const exact::Integer offset = (integer - grid.least) % count;
    return offset < 0 ? exact::Integer(grid.least + offset + count)
                      : exact::Integer(grid.least + offset);
}

bool overflows(const exact::Integer& integer, const Grid& grid) {
    return integer < grid.least || integer > grid.greatest;
}

/// Returns a rounded integer as the type stores it.
exact::Integer inRange(const exact::Integer& integer, const Grid& grid,
                       fxpModeOverflow_tag overflow) {
    return !overflows(integer, grid)       ? integer
           : overflow == FXP_OVERFLOW_WRAP ? wrapped(integer, grid)
           : integer < grid.least          ? grid.least
                                           : grid.greatest;
}

/// Stores a rounded integer; `number` is the value before rounding.
QuantizedRow store(const exact::Integer& integer, const exact::Number& number, const Grid& grid,
                   fxpModeOverflow_tag overflow) {
    const exact::Integer stored = inRange(integer, grid, overflow);
    const exact::Number value = grid.value(stored);
    return {"", exact::decimalText(stored), exact::decimalText(value),
            exact::decimalText(value - number),
            !overflows(integer, grid)       ? ""
            : overflow == FXP_OVERFLOW_WRAP ? "wrapped"
                                            : "saturated"};
}

/// Splits a number, in units of the slope, at the next lower integer.
Parts partsOf(const exact::Number& number, const Grid& grid) {
    return splitAtFloor((number - grid.bias) / grid.slope);
}

QuantizedValue quantizeValue(const std::string& text, const Grid& grid,
                             fxpModeOverflow_tag overflow) {
    const exact::Number number = exact::parseDecimal(text);
    const Parts parts = partsOf(number, grid);
    // Six modes of rounding have at most two results: rounded down, and up.
    std::array<std::optional<QuantizedRow>, 2> rows;
    QuantizedValue value{text, {}};
    for (const auto& rounding : convert::roundings) {
        const bool isUp = roundsUp(parts, rounding.value);
        std::optional<QuantizedRow>& row = rows[isUp ? 1 : 0];
        if (!row) {
            row = store(parts.floor + (isUp ? 1 : 0), number, grid, overflow);
        }
        row->rounding = rounding.name;
        value.rows.push_back(*row);
    }
    return value;
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

Grid requireGrid(fxpDataTypeProp record) {
    const std::string name = fxpDataTypeToIdentifierString(&record);
    if (std::optional<Grid> grid = makeGrid(record)) {
        return *std::move(grid);
    }
    if (record.DataTypeMode == FXP_DT_SCALED_DOUBLE) {
        record.DataTypeMode = FXP_DT_FIXPT;
        throw std::invalid_argument(
            fmt::format("{} stores doubles and no integers; {} is the fixed-point type of "
                        "this scaling",
                        name, fxpDataTypeToIdentifierString(&record)));
    }
    if (record.DataTypeMode != FXP_DT_FIXPT) {
        throw std::invalid_argument(
            fmt::format("{} is no fixed-point type and stores no integers", name));
    }
    if (isOpen(record)) {
        throw std::invalid_argument(
            "how values are stored depends on the signedness, which is open; --signed is "
            "to be 0 or 1");
    }
    throw std::invalid_argument(
        fmt::format("{} is beyond what is computed, words of {} bits and exponents from "
                    "-{} to {}",
                    name, mostBits, mostBits, mostBits));
}

exact::Integer storedInteger(const exact::Number& number, const Grid& grid,
                             fxpModeRounding_tag rounding, fxpModeOverflow_tag overflow) {
    const Parts parts = partsOf(number, grid);
    return inRange(parts.floor + (roundsUp(parts, rounding) ? 1 : 0), grid, overflow);
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

Quantization quantize(const std::vector<std::string>& values, const fxpDataTypeProp& record,
                      fxpModeOverflow_tag overflow) {
    const Grid grid = requireGrid(record);
    Quantization result{fxpDataTypeToIdentifierString(&record), valueRange(record), {}};
    for (const std::string& text : values) {
        result.values.push_back(quantizeValue(text, grid, overflow));
    }
    return result;
}

} // namespace tvtool::fixedpoint
