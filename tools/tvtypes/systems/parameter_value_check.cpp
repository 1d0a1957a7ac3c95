#include "systems/parameter_value_check.h"

#include "exchange/values.h"
#include "systems/mapping_key.h"
#include "text/quote.h"

#include <fmt/format.h>

#include <cmath>
#include <limits>
#include <unordered_set>
#include <utility>

namespace tvtool::systems {

namespace {

using exact::Number;
using exchange::BaseType;
using findings::Code;
using ssp::TransformationKind;
using text::quoted;

/// Converted values are rounded, as are the limits that authors write.
constexpr double tolerance = 1e-9;

/// The least and the greatest value of an integer type.
std::pair<Number, Number> boundsOf(BaseType base) {
    const auto index = static_cast<unsigned>(base) - static_cast<unsigned>(BaseType::Int8);
    const bool isUnsigned = index % 2 == 1;
    const unsigned bits = 8U << (index / 2);
    const exact::Integer end = exact::Integer(1) << (isUnsigned ? bits : bits - 1);
    return {isUnsigned ? Number(0) : Number(-end), Number(end - 1)};
}

/// Returns how the nearest value of a type is written if that is another integer, else nothing.
/// Decimals are rounded in any binary type, so digits that every value of the type keeps are none
/// that are lost.
std::string roundedText(const Number& number, BaseType base) {
    if (denominator(number) != 1) {
        return {};
    }
    const double nearest = exact::toDouble(number);
    const double rounded = base == BaseType::Float32 ? static_cast<float>(nearest) : nearest;
    const int digits = base == BaseType::Float32 ? std::numeric_limits<float>::digits10
                                                 : std::numeric_limits<double>::digits10;
    std::string significant = exact::Integer(abs(numerator(number))).str();
    significant.erase(significant.find_last_not_of('0') + 1);
    const bool isKept = static_cast<int>(significant.size()) <= digits;
    return isKept || Number(rounded) == number ? std::string()
                                               : exact::Integer(numerator(Number(rounded))).str();
}

std::optional<ExactValue> readLimit(std::string_view text) {
    return exchange::isValue(text, BaseType::Float64) ? std::optional(readExact(text))
                                                      : std::nullopt;
}

} // namespace

ValueCheck::ValueCheck(BaseType base, const TargetType& target,
                       const ParameterTransformation& transformation, ItemIndex& items)
    : base_(base),
      target_(target),
      transformation_(transformation),
      items_(items),
      min_(readLimit(target.range.min)),
      max_(readLimit(target.range.max)) {}

std::optional<ValueFault> ValueCheck::firstFault(std::span<const std::string_view> values) const {
    const bool isSame = target_.base == base_ &&
                        (target_.modelBase == BaseType::None || target_.modelBase == base_) &&
                        base_ != BaseType::Enumeration;
    if (isSame && !min_ && !max_ && !transformation_.changesValues()) {
        return std::nullopt;
    }
    for (const std::string_view text : values) {
        const ParameterValue value = transformation_.apply(text, items_);
        if (std::optional<Fault> fault = faultOf(value)) {
            return ValueFault{fault->code, std::move(fault->reason), text,
                              shownText(value, transformation_.isScaling())};
        }
    }
    return std::nullopt;
}

std::optional<ValueCheck::Fault> ValueCheck::faultOf(const ParameterValue& value) const {
    std::optional<Fault> fault = typeFault(target_.base, target_.typeName, value);
    if (!fault && target_.modelBase != BaseType::None && target_.modelBase != target_.base) {
        fault = typeFault(target_.modelBase, target_.modelTypeName, value);
    }
    return fault ? fault : limitFault(value);
}

std::optional<ValueCheck::Fault> ValueCheck::typeFault(BaseType base, std::string_view type,
                                                       const ParameterValue& value) const {
    if (base == BaseType::Enumeration) {
        return itemFault(value);
    }
    if (!value.isNumber || !(isReal(base) || isInteger(base))) {
        return std::nullopt;
    }
    const bool isFinite = value.number.kind == ExactValue::Kind::Number;
    const Number& number = value.number.number;
    if (isReal(base)) {
        const double nearest = isFinite ? exact::toDouble(number) : 0;
        if (std::isinf(base == BaseType::Float32 ? static_cast<float>(nearest) : nearest)) {
            return Fault{Code::ParameterRange, fmt::format("is outside the range of {}", type)};
        }
        const std::string rounded = isFinite && base != base_ ? roundedText(number, base) : "";
        return rounded.empty()
                   ? std::nullopt
                   : std::optional(Fault{Code::ParameterLossy,
                                         fmt::format("{} rounds to {}", type, rounded)});
    }
    const auto [least, greatest] = boundsOf(base);
    if (!isFinite || number < least || number > greatest) {
        return Fault{Code::ParameterRange, fmt::format("is outside the range of {}", type)};
    }
    if (denominator(number) != 1) {
        return Fault{Code::ParameterLossy, fmt::format("is no value of {}", type)};
    }
    return std::nullopt;
}

std::optional<ValueCheck::Fault> ValueCheck::itemFault(const ParameterValue& value) const {
    if (target_.items == nullptr) {
        return std::nullopt;
    }
    const std::string name =
        quoted(target_.base == BaseType::Enumeration ? target_.typeName : target_.modelTypeName);
    const bool isName = base_ == BaseType::Enumeration && !transformation_.mapsNumbers();
    if (isName) {
        return items_.named(*target_.items, value.text) != nullptr
                   ? std::nullopt
                   : std::optional(
                         Fault{Code::ParameterItem, fmt::format("is no item of {}", name)});
    }
    if (!value.isNumber) {
        return std::nullopt;
    }
    const Number& number = value.number.number;
    const auto [least, greatest] = boundsOf(BaseType::Int64);
    const bool isItem =
        value.number.kind == ExactValue::Kind::Number && denominator(number) == 1 &&
        number >= least && number <= greatest &&
        items_.withValue(*target_.items, static_cast<std::int64_t>(numerator(number))) != nullptr;
    return isItem ? std::nullopt
                  : std::optional(Fault{Code::ParameterItem,
                                        fmt::format("is the value of no item of {}", name)});
}

/// Compares a value with min and max. Converted values are rounded, as are the limits that
/// authors write.
std::optional<ValueCheck::Fault> ValueCheck::limitFault(const ParameterValue& value) const {
    // Those of an enumeration limit its values, and the values of the target are its items.
    if (!value.isNumber || value.number.kind == ExactValue::Kind::NotANumber ||
        target_.base == BaseType::Enumeration || target_.modelBase == BaseType::Enumeration) {
        return std::nullopt;
    }
    const auto isBelow = [&](const ExactValue& a, const ExactValue& b) {
        const auto rank = [](const ExactValue& x) {
            return x.kind == ExactValue::Kind::Infinite ? (x.isNegative ? -1 : 1) : 0;
        };
        if (rank(a) != 0 || rank(b) != 0) {
            return rank(a) < rank(b);
        }
        return a.number < b.number &&
               !(transformation_.isScaling() && exact::areClose(a.number, b.number, tolerance));
    };
    if (min_ && isBelow(value.number, *min_)) {
        return Fault{Code::ParameterRange,
                     fmt::format("is below min {}", text::shortened(target_.range.min))};
    }
    if (max_ && isBelow(*max_, value.number)) {
        return Fault{Code::ParameterRange,
                     fmt::format("is above max {}", text::shortened(target_.range.max))};
    }
    return std::nullopt;
}

std::vector<MappingFault>
mappingFaults(const ssp::Transformation& mapping,
              const std::function<bool(std::string_view value)>& isTarget) {
    std::vector<MappingFault> faults;
    if (mapping.kind == TransformationKind::Linear) {
        return faults;
    }
    std::unordered_set<std::string> sources;
    for (const ssp::MapEntry& entry : mapping.entries) {
        const std::string key =
            mappingKey(entry.source, mapping.kind).value_or(std::string(entry.source));
        if (!sources.insert(key).second) {
            faults.push_back({Code::MappingRepeated, &entry,
                              fmt::format("has a second entry for {}", quoted(entry.source))});
        }
        if (!isTarget(entry.target)) {
            faults.push_back(
                {Code::MappingTarget, &entry,
                 fmt::format("has the target {}, which is no value", quoted(entry.target))});
        }
    }
    return faults;
}

bool isMappingTarget(std::string_view value, TransformationKind kind, const TargetType& type,
                     ItemIndex& items) {
    if (type.base != BaseType::Enumeration) {
        return type.base == BaseType::None || exchange::isValue(value, type.base);
    }
    const auto number = exchange::parseNumber<std::int64_t>(value);
    if (kind == TransformationKind::Integer) {
        return number &&
               (type.items == nullptr || items.withValue(*type.items, *number) != nullptr);
    }
    return type.items == nullptr || items.named(*type.items, value) != nullptr;
}

} // namespace tvtool::systems
