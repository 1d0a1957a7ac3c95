#include "fixedpoint/quantization.h"

#include "convert/names.h"
#include "exact/decimal.h"
#include "fixedpoint/range.h"
#include "fixedpoint/record.h"

#include <fmt/format.h>

#include <map>
#include <stdexcept>
#include <utility>

namespace tvtool::fixedpoint {

namespace {

/// The integer below a number and what is left, which is at least 0 and less than 1.
struct Parts {
    exact::Integer floor;
    exact::Number rest;
};

Parts partsOf(const exact::Number& number) {
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

class Quantizer {
  public:
    Quantizer(Grid grid, fxpModeOverflow_tag overflow)
        : grid_(std::move(grid)), overflow_(overflow) {}

    QuantizedValue operator()(const std::string& text) const {
        const exact::Number number = exact::parseDecimal(text);
        const Parts parts = partsOf((number - grid_.bias) / grid_.slope);
        QuantizedValue value{text, {}};
        std::map<bool, QuantizedRow> rows;
        for (const auto& rounding : convert::roundings) {
            const bool isUp = roundsUp(parts, rounding.value);
            const auto [row, isNew] = rows.try_emplace(isUp);
            if (isNew) {
                row->second = rowOf(isUp ? exact::Integer(parts.floor + 1) : parts.floor, number);
            }
            row->second.rounding = rounding.name;
            value.rows.push_back(row->second);
        }
        return value;
    }

  private:
    exact::Integer wrapped(const exact::Integer& integer) const {
        const exact::Integer count = grid_.greatest - grid_.least + 1;
        exact::Integer offset = (integer - grid_.least) % count;
        if (offset < 0) {
            offset += count;
        }
        return grid_.least + offset;
    }

    QuantizedRow rowOf(const exact::Integer& integer, const exact::Number& number) const {
        const bool overflows = integer < grid_.least || integer > grid_.greatest;
        const bool wraps = overflow_ == FXP_OVERFLOW_WRAP;
        const exact::Integer stored = !overflows              ? integer
                                      : wraps                 ? wrapped(integer)
                                      : integer < grid_.least ? grid_.least
                                                              : grid_.greatest;
        const exact::Number value = grid_.valueOf(stored);
        QuantizedRow row;
        row.stored = exact::decimalText(stored);
        row.value = exact::decimalText(value);
        row.error = exact::decimalText(value - number);
        row.overflow = !overflows ? "" : wraps ? "wrapped" : "saturated";
        return row;
    }

    Grid grid_;
    fxpModeOverflow_tag overflow_;
};

Grid gridFor(fxpDataTypeProp record) {
    const std::string name = fxpDataTypeToIdentifierString(&record);
    if (std::optional<Grid> grid = gridOf(record)) {
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
    const Quantizer quantizer(gridFor(record), overflow);
    Quantization result;
    result.identifier = fxpDataTypeToIdentifierString(&record);
    result.range = rangeOf(record);
    for (const std::string& text : values) {
        result.values.push_back(quantizer(text));
    }
    return result;
}

} // namespace tvtool::fixedpoint
