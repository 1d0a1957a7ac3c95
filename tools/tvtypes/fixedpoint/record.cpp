#include "fixedpoint/record.h"

#include "text/number.h"
#include "text/quote.h"

#include <fmt/format.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <stdexcept>
#include <string_view>

namespace tvtool::fixedpoint {

namespace {

/// An option with its text and a description of the valid texts.
struct Option {
    const char* name;
    std::string_view text;
    const char* allowed;

    [[noreturn]] void fail() const {
        throw std::invalid_argument(
            fmt::format("{} cannot be {}, it is {}", name, text::quoted(text), allowed));
    }
};

template <class Value>
Value parseOption(const Option& option, bool (*isValid)(Value)) {
    const std::optional<Value> value = text::parseNumber<Value>(option.text);
    if (!value || !isValid(*value)) {
        option.fail();
    }
    return *value;
}

/// Parses a number, or a power of two such as 2^-4.
double parseSlope(const Option& option) {
    constexpr std::string_view base = "2^";
    if (!option.text.starts_with(base)) {
        return parseOption<double>(option, fxpDataTypeProp::preValidateTotalSlope);
    }
    const std::optional<int> exponent = text::parseNumber<int>(option.text.substr(base.size()));
    const double slope = exponent ? std::ldexp(1.0, *exponent) : 0.0;
    if (!fxpDataTypeProp::preValidateTotalSlope(slope)) {
        option.fail();
    }
    return slope;
}

void setScaling(const RecordTexts& texts, fxpDataTypeProp& record) {
    if (texts.slope) {
        setSlope(
            parseSlope({"--slope", *texts.slope,
                        "a number greater than 0 that a double holds, or a power such as 2^-4"}),
            record);
    }
    if (texts.factor) {
        record.SlopeAdjustmentFactor = parseOption<double>(
            {"--factor", *texts.factor, "a number that is at least 1 and less than 2"},
            fxpDataTypeProp::preValidateSlopeAdjustmentFactor);
    }
    if (texts.exponent) {
        record.FixedExponent = parseOption<std::int32_t>(
            {"--exponent", *texts.exponent, "a whole number from -2147483648 to 2147483647"},
            [](std::int32_t) { return true; });
    }
    if (texts.fractionLength) {
        record.FixedExponent = static_cast<std::int32_t>(-parseOption<std::int64_t>(
            {"--fraction-length", *texts.fractionLength,
             "a whole number from -2147483647 to 2147483648"},
            [](std::int64_t length) {
                constexpr std::int64_t most = std::numeric_limits<std::int32_t>::max();
                return length >= -most && length <= most + 1;
            }));
    }
    if (texts.bias) {
        record.Bias = parseOption<double>({"--bias", *texts.bias, "a number that a double holds"},
                                          fxpDataTypeProp::preValidateBias);
    }
}

} // namespace

fxpDataTypeProp makeRecord(const RecordTexts& texts) {
    fxpDataTypeProp record{FXP_DT_FIXPT, 1, 0, 0, 1.0, 0.0, 0};
    record.DataTypeMode = texts.isScaledDouble ? FXP_DT_SCALED_DOUBLE : FXP_DT_FIXPT;
    record.Signedness = openSignedness;
    if (texts.signedness != "open") {
        record.Signedness = static_cast<std::uint32_t>(
            parseOption<int>({"--signed", texts.signedness, "0, 1 or open"},
                             [](int signedness) { return signedness == 0 || signedness == 1; }));
    }
    record.WordLength = parseWordLength("--word-length", texts.wordLength);
    setScaling(texts, record);
    return record;
}

int parseWordLength(const char* option, const std::string& text) {
    return parseOption<int>({option, text, "a whole number from 1 to 2147483647"},
                            fxpDataTypeProp::preValidateWordLength);
}

void setSlope(double slope, fxpDataTypeProp& record) {
    int exponent = 0;
    record.SlopeAdjustmentFactor = 2 * std::frexp(slope, &exponent);
    record.FixedExponent = exponent - 1;
}

} // namespace tvtool::fixedpoint
