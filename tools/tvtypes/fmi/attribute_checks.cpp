#include "fmi/attribute_checks.h"

#include "exchange/values.h"
#include "text/quote.h"

namespace tvtool::fmi {

namespace {

using findings::Code;
using text::quoted;

/// Returns the number of values of an attribute; empty if one of them is invalid.
std::optional<std::uint64_t> countValues(const Element& element, Attribute attribute,
                                         std::string_view attributeName, BaseType base) {
    std::string_view rest = element[attribute];
    std::uint64_t count = 0;
    for (std::string_view word = exchange::takeWord(rest); !word.empty();
         word = exchange::takeWord(rest)) {
        ++count;
        if (!exchange::isValue(word, base)) {
            element.addForAttribute(Code::ValueInvalid, attributeName, "{} {} is no {} value",
                                    attributeName, quoted(word),
                                    exchange::baseTypeName(base, element.description.majorVersion));
            return std::nullopt;
        }
    }
    return count;
}

std::string_view readLimit(const Element& element, Attribute attribute,
                           std::string_view attributeName, BaseType base) {
    if (element[attribute] == nullptr || base == BaseType::String || base == BaseType::Binary) {
        return {};
    }
    const auto count = countValues(element, attribute, attributeName, base);
    if (!count) {
        return {};
    }
    if (*count != 1) {
        element.addForAttribute(Code::ValueInvalid, attributeName, "{} has {} values; it takes one",
                                attributeName, *count);
        return {};
    }
    return element.text(attribute);
}

/// Returns the value of an attribute with listed values, which end with `last`.
template <class Value>
Value readListed(const Element& element, Attribute attribute, std::string_view attributeName,
                 std::string_view (*valueName)(Value), Value last) {
    if (element[attribute] == nullptr) {
        return Value::None;
    }
    const std::string_view text = exchange::trimmed(element[attribute]);
    for (int value = static_cast<int>(Value::Invalid) + 1; value <= static_cast<int>(last);
         ++value) {
        if (text == valueName(static_cast<Value>(value))) {
            return static_cast<Value>(value);
        }
    }
    element.addForAttribute(Code::ValueInvalid, attributeName, "{} {} is not one of its values",
                            attributeName, quoted(text));
    return Value::Invalid;
}

} // namespace

std::uint64_t checkStart(const Element& element, BaseType base) {
    if (element[Attribute::Start] == nullptr || base == BaseType::String ||
        base == BaseType::Binary) {
        return 0;
    }
    const auto count = countValues(element, Attribute::Start, "start", base);
    const bool isList = element.description.majorVersion == 3;
    if (count && *count != 1 && (!isList || *count == 0)) {
        element.addForAttribute(Code::StartCount, "start", "start has {} values; it takes {}",
                                *count, isList ? "one for each element" : "one");
    }
    return count.value_or(0);
}

template <class Record>
void readRange(const Element& element, Record& record) {
    record.min = readLimit(element, Attribute::Min, "min", record.base);
    record.max = readLimit(element, Attribute::Max, "max", record.base);
    record.nominal = readLimit(element, Attribute::Nominal, "nominal", record.base);
}
template void readRange(const Element&, Variable&);
template void readRange(const Element&, TypeDefinition&);

Causality readCausality(const Element& element) {
    return readListed(element, Attribute::Causality, "causality", causalityName,
                      element.description.majorVersion == 2 ? Causality::Independent
                                                            : Causality::StructuralParameter);
}

Variability readVariability(const Element& element) {
    return readListed(element, Attribute::Variability, "variability", variabilityName,
                      Variability::Continuous);
}

Initial readInitial(const Element& element) {
    return readListed(element, Attribute::Initial, "initial", initialName, Initial::Calculated);
}

std::optional<std::uint32_t> readUnsigned(const Element& element, Attribute attribute,
                                          std::string_view attributeName) {
    const char* const text = element[attribute];
    if (text == nullptr) {
        return std::nullopt;
    }
    const auto number = exchange::parseNumber<std::uint32_t>(text);
    if (!number) {
        element.addForAttribute(Code::ValueInvalid, attributeName,
                                "{} {} is no unsigned 32-bit number", attributeName, quoted(text));
    }
    return number;
}

} // namespace tvtool::fmi
