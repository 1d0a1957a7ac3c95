#include "fixpt/quantization.h"

#include "convert/names.h"
#include "fixpt/decimal.h"
#include "fixpt/error.h"
#include "fixpt/range.h"
#include "fixpt/record.h"

#include <fmt/format.h>

#include <map>
#include <utility>

namespace tvtool::fixpt {

namespace {

/// The integer below a number and what is left, which is at least 0 and less than 1.
struct Parts {
    Integer floor;
    Exact rest;
};

Parts partsOf(const Exact& number) {
    Parts parts;
    Integer remainder;
    divide_qr(numerator(number), denominator(number), parts.floor, remainder);
    if (remainder < 0) {
        --parts.floor;
    }
    parts.rest = number - parts.floor;
    return parts;
}

bool roundsUp(const Parts& parts, fxpModeRounding_tag rounding) {
    const int half = parts.rest.compare(Exact(1, 2));
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

    report::QuantizedValue operator()(const std::string& text) const {
        const Exact number = exactOf(text);
        const Parts parts = partsOf((number - grid_.bias) / grid_.slope);
        report::QuantizedValue value{text, {}};
        std::map<bool, report::QuantizedRow> rows;
        for (const auto& rounding : convert::roundings) {
            const bool isUp = roundsUp(parts, rounding.value);
            const auto [row, isNew] = rows.try_emplace(isUp);
            if (isNew) {
                row->second = rowOf(isUp ? Integer(parts.floor + 1) : parts.floor, number);
            }
            row->second.rounding = rounding.name;
            value.rows.push_back(row->second);
        }
        return value;
    }

  private:
    Integer wrapped(const Integer& integer) const {
        const Integer count = grid_.greatest - grid_.least + 1;
        Integer offset = (integer - grid_.least) % count;
        if (offset < 0) {
            offset += count;
        }
        return grid_.least + offset;
    }

    report::QuantizedRow rowOf(const Integer& integer, const Exact& number) const {
        const bool overflows = integer < grid_.least || integer > grid_.greatest;
        const bool wraps = overflow_ == FXP_OVERFLOW_WRAP;
        const Integer stored = !overflows              ? integer
                               : wraps                 ? wrapped(integer)
                               : integer < grid_.least ? grid_.least
                                                       : grid_.greatest;
        const Exact value = grid_.valueOf(stored);
        report::QuantizedRow row;
        row.stored = textOf(stored);
        row.value = textOf(value);
        row.error = textOf(value - number);
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
        throw Error(fmt::format("{} stores doubles and no integers; {} is the fixed-point type of "
                                "this scaling",
                                name, fxpDataTypeToIdentifierString(&record)));
    }
    if (record.DataTypeMode != FXP_DT_FIXPT) {
        throw Error(fmt::format("{} is no fixed-point type and stores no integers", name));
    }
    if (isOpen(record)) {
        throw Error("how values are stored depends on the signedness, which is open; --signed is "
                    "to be 0 or 1");
    }
    throw Error(fmt::format("{} is beyond what is computed, words of {} bits and exponents from "
                            "-{} to {}",
                            name, mostBits, mostBits, mostBits));
}

} // namespace

report::FixptQuantization quantized(const std::vector<std::string>& values,
                                    const fxpDataTypeProp& record, fxpModeOverflow_tag overflow) {
    const Quantizer quantize(gridFor(record), overflow);
    report::FixptQuantization result;
    result.identifier = fxpDataTypeToIdentifierString(&record);
    result.range = rangeOf(record);
    for (const std::string& text : values) {
        result.values.push_back(quantize(text));
    }
    return result;
}

} // namespace tvtool::fixpt
