// Comparison of start values, limits and nominal values.
#include "exchange/values.h"
#include "fmi/description_checks.h"
#include "text/quote.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <vector>

namespace tvtool::fmi {

namespace {

using findings::Code;
using findings::Findings;
using findings::Subject;
using findings::SubjectKind;
using text::quoted;

/// A type or a variable with its limits.
struct Limited {
    const Place& place;
    Subject subject;
    const char* kind;
    Range range;
    bool hasOwn = true; ///< whether one of the limits is its own
    bool hasOwnNominal = true;
};

template <class Number>
std::optional<Number> limitOf(std::string_view text) {
    return text.empty() ? std::nullopt : exchange::parseNumber<Number>(text);
}

template <class Number>
void checkRange(const Limited& limited, Findings& findings) {
    const auto min = limitOf<Number>(limited.range.min);
    const auto max = limitOf<Number>(limited.range.max);
    if (min && max && *min > *max) {
        findings.add(Code::MinAboveMax, limited.place, limited.subject,
                     "{} {} has min {} above max {}", limited.kind, quoted(limited.subject.name),
                     limited.range.min, limited.range.max);
    }
}

void checkNominal(const Limited& limited, Findings& findings) {
    const auto nominal = limitOf<double>(limited.range.nominal);
    if (!nominal) {
        return;
    }
    if (*nominal <= 0) {
        if (!limited.hasOwnNominal) {
            return; // reported about the type
        }
        findings.add(Code::NominalSign, limited.place, limited.subject,
                     "{} {} has nominal {}, which is not above 0", limited.kind,
                     quoted(limited.subject.name), limited.range.nominal);
        return;
    }
    // The nominal value is a magnitude: the limits may be on the other side of 0.
    constexpr double infinity = std::numeric_limits<double>::infinity();
    const double min = limitOf<double>(limited.range.min).value_or(-infinity);
    const double max = limitOf<double>(limited.range.max).value_or(infinity);
    const bool isBelow = min > 0 && *nominal < min;
    const bool isAbove = max > 0 && *nominal > max && (min == -infinity || *nominal > -min);
    if (isBelow || isAbove) {
        findings.add(Code::NominalRange, limited.place, limited.subject,
                     "{} {} has nominal {} {} {}", limited.kind, quoted(limited.subject.name),
                     limited.range.nominal, isBelow ? "below min" : "above max",
                     isBelow ? limited.range.min : limited.range.max);
    }
}

/// Compares the start values of a variable with its limits; reports the first one outside them.
template <class Number>
void checkStart(const Variable& variable, const Limited& limited, Findings& findings) {
    const auto min = limitOf<Number>(limited.range.min);
    const auto max = limitOf<Number>(limited.range.max);
    if ((!min && !max) || variable.startCount == 0) {
        return;
    }
    std::string_view rest = variable.start;
    for (std::string_view word = exchange::takeWord(rest); !word.empty();
         word = exchange::takeWord(rest)) {
        const auto value = exchange::parseNumber<Number>(word);
        const bool isBelow = value && min && *value < *min;
        const bool isAbove = value && max && *value > *max;
        if (isBelow || isAbove) {
            findings.add(Code::StartRange, limited.place, limited.subject,
                         "variable {} has start {} {} {}", quoted(variable.name), quoted(word),
                         isBelow ? "below min" : "above max",
                         isBelow ? limited.range.min : limited.range.max);
            return;
        }
    }
}

template <class Number>
void checkVariable(const Variable& variable, const Limited& limited, Findings& findings) {
    if (limited.hasOwn) {
        checkRange<Number>(limited, findings);
    }
    checkStart<Number>(variable, limited, findings);
}

enum class Kind { Real, Signed, Unsigned, Other };

Kind kindOf(BaseType base) {
    switch (base) {
    case BaseType::Float64:
    case BaseType::Float32:
        return Kind::Real;
    case BaseType::Int8:
    case BaseType::Int16:
    case BaseType::Int32:
    case BaseType::Int64:
    case BaseType::Enumeration:
        return Kind::Signed;
    case BaseType::UInt8:
    case BaseType::UInt16:
    case BaseType::UInt32:
    case BaseType::UInt64:
        return Kind::Unsigned;
    default:
        return Kind::Other;
    }
}

void checkType(const TypeDefinition& type, Findings& findings) {
    const Limited limited{
        type.place, {SubjectKind::Type, type.name}, "type", {type.min, type.max, type.nominal}};
    switch (kindOf(type.base)) {
    case Kind::Real:
        checkRange<double>(limited, findings);
        return checkNominal(limited, findings);
    case Kind::Signed:
        return checkRange<std::int64_t>(limited, findings);
    case Kind::Unsigned:
        return checkRange<std::uint64_t>(limited, findings);
    case Kind::Other:
        return;
    }
}

void checkVariable(const Variable& variable, const Description& description, Findings& findings) {
    const Limited limited{variable.place,
                          {SubjectKind::Variable, variable.name},
                          "variable",
                          rangeOf(variable, description),
                          !variable.min.empty() || !variable.max.empty() ||
                              !variable.nominal.empty(),
                          !variable.nominal.empty()};
    switch (kindOf(variable.base)) {
    case Kind::Real:
        if (limited.hasOwn) {
            checkNominal(limited, findings);
        }
        return checkVariable<double>(variable, limited, findings);
    case Kind::Signed:
        return checkVariable<std::int64_t>(variable, limited, findings);
    case Kind::Unsigned:
        return checkVariable<std::uint64_t>(variable, limited, findings);
    case Kind::Other:
        return;
    }
}

/// The sorted values of the items of each type. A type with an invalid item has none.
std::vector<std::vector<std::int64_t>> itemValues(const Description& description) {
    std::vector<std::vector<std::int64_t>> all(description.types.size());
    for (std::size_t i = 0; i < all.size(); ++i) {
        const std::vector<exchange::Item>& items = description.types[i].items;
        if (std::ranges::all_of(
                items, [](const exchange::Item& item) { return item.value.has_value(); })) {
            std::ranges::transform(items, std::back_inserter(all[i]),
                                   [](const exchange::Item& item) { return *item.value; });
        }
        std::ranges::sort(all[i]);
    }
    return all;
}

/// Reports the first start value of an enumeration variable that is not one of its items.
void checkItems(const Variable& variable, const std::vector<std::int64_t>& items,
                std::string_view type, Findings& findings) {
    std::string_view rest = variable.start;
    for (std::string_view word = exchange::takeWord(rest); !word.empty() && variable.startCount > 0;
         word = exchange::takeWord(rest)) {
        const auto value = exchange::parseNumber<std::int64_t>(word);
        if (value && !items.empty() && !std::ranges::binary_search(items, *value)) {
            findings.addWithCause(Code::StartItem, variable.place,
                                  {SubjectKind::Variable, variable.name}, type,
                                  "variable {} has start {}, which is no item of type {}",
                                  quoted(variable.name), quoted(word), quoted(type));
            return;
        }
    }
}

} // namespace

void checkLimits(const Description& description, Findings& findings) {
    for (const TypeDefinition& type : description.types) {
        checkType(type, findings);
    }
    const auto items = itemValues(description);
    for (const Variable& variable : description.variables) {
        checkVariable(variable, description, findings);
        if (variable.base == BaseType::Enumeration && variable.type != noIndex) {
            checkItems(variable, items[variable.type], description.types[variable.type].name,
                       findings);
        }
    }
}

} // namespace tvtool::fmi
