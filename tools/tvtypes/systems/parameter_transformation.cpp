#include "systems/parameter_transformation.h"

#include "exchange/values.h"
#include "systems/mapping_key.h"
#include "text/quote.h"

#include <fmt/format.h>

#include <cmath>
#include <optional>
#include <utility>

namespace tvtool::systems {

using exchange::BaseType;
using ssp::TransformationKind;

std::string shownText(const ParameterValue& value, bool isScaled) {
    return value.isNumber && isScaled ? shownText(value.number) : text::shortened(value.text);
}

ParameterTransformation::ParameterTransformation(BaseType base,
                                                 const std::vector<exchange::Item>* items,
                                                 const UnitConversion* conversion,
                                                 const ssp::Transformation* transformation)
    : base_(base), items_(items) {
    if (conversion != nullptr) {
        addScaling(conversion->factor, conversion->offset);
    }
    if (transformation == nullptr || !takes(transformation->kind, base)) {
        return;
    }
    if (transformation->kind == TransformationKind::Linear) {
        addScaling(transformation->factor, transformation->offset);
        return;
    }
    mapping_ = transformation->kind;
    for (const ssp::MapEntry& entry : transformation->entries) {
        if (auto key = mappingKey(entry.source, mapping_)) {
            mapped_.emplace(*std::move(key), entry.target);
        }
    }
}

void ParameterTransformation::addScaling(double factor, double offset) {
    if (std::isfinite(factor) && std::isfinite(offset)) {
        scalings_.push_back({decimalOf(factor), decimalOf(offset)});
    }
}

ParameterValue ParameterTransformation::apply(std::string_view text, ItemIndex& index) const {
    ParameterValue value{text, isReal(base_) || isInteger(base_), {}};
    std::string item;
    if (base_ == BaseType::Enumeration && mapping_ != TransformationKind::Enumeration) {
        const exchange::Item* const found =
            items_ == nullptr ? nullptr : index.named(*items_, text);
        value.isNumber = found != nullptr && found->value;
        item = value.isNumber ? fmt::format("{}", *found->value) : "";
    }
    std::string_view number = item.empty() ? exchange::trimmed(text) : item;
    if (const auto key = mappingKey(number, mapping_); key && !mapped_.empty()) {
        const auto mapped = mapped_.find(*key);
        if (mapped != mapped_.end()) {
            value.text = mapped->second;
            number = mapped->second;
        }
    }
    value.isNumber = value.isNumber && exchange::isValue(number, BaseType::Float64);
    if (!value.isNumber) {
        return value;
    }
    value.number = readExact(number);
    if (value.number.kind == ExactValue::Kind::Number) {
        for (const Scaling& scaling : scalings_) {
            value.number.number = value.number.number * scaling.factor + scaling.offset;
        }
    }
    return value;
}

} // namespace tvtool::systems
