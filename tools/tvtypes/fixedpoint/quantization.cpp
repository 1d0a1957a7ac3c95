#include "fixedpoint/quantization.h"

#include "convert/names.h"
#include "exact/number.h"
#include "fixedpoint/record.h"

#include <fmt/format.h>

#include <array>
#include <optional>
#include <stdexcept>
#include <utility>

namespace tvtool::fixedpoint {

namespace {

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

/// Stores a rounded integer; `number` is the value before rounding.
QuantizedRow store(const exact::Integer& integer, const exact::Number& number, const Grid& grid,
                   bool wraps) {
    const bool overflows = integer < grid.least || integer > grid.greatest;
    const exact::Integer stored = !overflows             ? integer
                                  : wraps                ? wrapped(integer, grid)
                                  : integer < grid.least ? grid.least
                                                         : grid.greatest;
    const exact::Number value = grid.value(stored);
    return {"", exact::decimalText(stored), exact::decimalText(value),
            exact::decimalText(value - number),
            !overflows ? ""
            : wraps    ? "wrapped"
                       : "saturated"};
}

QuantizedValue quantizeValue(const std::string& text, const Grid& grid, bool wraps) {
    const exact::Number number = exact::parseDecimal(text);
    const Parts parts = splitAtFloor((number - grid.bias) / grid.slope);
    // Six modes of rounding have at most two results: rounded down, and up.
    std::array<std::optional<QuantizedRow>, 2> rows;
    QuantizedValue value{text, {}};
    for (const auto& rounding : convert::roundings) {
        const bool isUp = roundsUp(parts, rounding.value);
        std::optional<QuantizedRow>& row = rows[isUp ? 1 : 0];
        if (!row) {
            row = store(parts.floor + (isUp ? 1 : 0), number, grid, wraps);
        }
        row->rounding = rounding.name;
        value.rows.push_back(*row);
    }
    return value;
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

} // namespace

Quantization quantize(const std::vector<std::string>& values, const fxpDataTypeProp& record,
                      fxpModeOverflow_tag overflow) {
    const Grid grid = requireGrid(record);
    Quantization result{fxpDataTypeToIdentifierString(&record), valueRange(record), {}};
    for (const std::string& text : values) {
        result.values.push_back(quantizeValue(text, grid, overflow == FXP_OVERFLOW_WRAP));
    }
    return result;
}

} // namespace tvtool::fixedpoint
