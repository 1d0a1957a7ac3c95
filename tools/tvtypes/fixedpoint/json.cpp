#include "fixedpoint/json.h"

#include "text/safe_text.h"

#include <boost/json.hpp>

#include <string_view>

namespace tvtool::fixedpoint {

namespace {

namespace json = boost::json;

json::value textOrNull(std::string_view text) {
    return text.empty() ? json::value(nullptr) : json::value(text);
}

json::object objectOf(const FixptSheet& sheet) {
    const fxpDataTypeProp& record = sheet.record;
    json::array constructors;
    for (const FixptConstructor& constructor : sheet.constructors) {
        constructors.push_back(json::object{{"function", constructor.base},
                                            {"scaling", constructor.scaling},
                                            {"text", constructor.text}});
    }
    const bool isStored = !sheet.storage.empty();
    return {{"text", textOrNull(sheet.text)},
            {"identifier", sheet.identifier},
            {"fixedPointName", textOrNull(sheet.fixedPointName)},
            {"kind", sheet.kind},
            {"mode", fxpDtpGetClassName(&record)},
            {"signedness",
             record.Signedness > 1 ? json::value(nullptr) : json::value(record.Signedness)},
            {"wordLength", record.WordLength},
            {"fixedExponent", record.FixedExponent},
            {"slopeAdjustmentFactor", record.SlopeAdjustmentFactor},
            {"bias", record.Bias},
            {"overrideState", record.DataTypeOverrideState},
            {"slope", textOrNull(sheet.slope)},
            {"resolution", textOrNull(sheet.range.resolution)},
            {"lowest", textOrNull(sheet.range.lowest)},
            {"highest", textOrNull(sheet.range.highest)},
            {"storage", textOrNull(sheet.storage)},
            {"storageSize", isStored ? json::value(sheet.storageSize) : json::value(nullptr)},
            {"atomic", sheet.isAtomic},
            {"constructors", std::move(constructors)},
            {"notes", json::value_from(sheet.notes)}};
}

json::array resultsOf(const QuantizedValue& value) {
    json::array results;
    for (const QuantizedRow& row : value.rows) {
        results.push_back(json::object{{"rounding", row.rounding},
                                       {"stored", row.stored},
                                       {"value", row.value},
                                       {"error", row.error},
                                       {"overflow", textOrNull(row.overflow)}});
    }
    return results;
}

void print(const json::object& object, std::ostream& os) {
    os << text::safeText(json::serialize(object)) << '\n';
}

} // namespace

void printJson(const std::vector<FixptSheet>& sheets, std::ostream& os) {
    json::array types;
    for (const FixptSheet& sheet : sheets) {
        types.push_back(objectOf(sheet));
    }
    print({{"types", std::move(types)}}, os);
}

void printJson(const FixptQuantization& quantization, std::ostream& os) {
    json::array values;
    for (const QuantizedValue& value : quantization.values) {
        values.push_back(json::object{{"text", value.text}, {"results", resultsOf(value)}});
    }
    print({{"identifier", quantization.identifier},
           {"resolution", textOrNull(quantization.range.resolution)},
           {"lowest", textOrNull(quantization.range.lowest)},
           {"highest", textOrNull(quantization.range.highest)},
           {"values", std::move(values)}},
          os);
}

} // namespace tvtool::fixedpoint
