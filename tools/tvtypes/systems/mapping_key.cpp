#include "systems/mapping_key.h"

#include "exchange/values.h"
#include "systems/parameter_value.h"
#include "systems/type_conversion.h"

#include <fmt/format.h>

#include <cstdint>

namespace tvtool::systems {

using exchange::BaseType;
using ssp::TransformationKind;

bool takes(TransformationKind transformation, BaseType base) {
    switch (transformation) {
    case TransformationKind::None:
        return true;
    case TransformationKind::Linear:
        return isReal(base);
    case TransformationKind::Boolean:
        return base == BaseType::Boolean;
    case TransformationKind::Integer:
        return isInteger(base) || base == BaseType::Enumeration;
    case TransformationKind::Enumeration:
        return base == BaseType::Enumeration;
    }
    return false;
}

std::optional<std::string> mappingKey(std::string_view value, TransformationKind kind) {
    if (kind == TransformationKind::Boolean) {
        return exchange::isValue(value, BaseType::Boolean)
                   ? std::optional<std::string>(readBoolean(value) ? "true" : "false")
                   : std::nullopt;
    }
    if (kind == TransformationKind::Integer) {
        const auto number = exchange::parseNumber<std::int64_t>(value);
        return number ? std::optional(fmt::format("{}", *number)) : std::nullopt;
    }
    return std::string(value);
}

} // namespace tvtool::systems
