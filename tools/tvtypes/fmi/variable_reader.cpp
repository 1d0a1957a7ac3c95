#include "fmi/variable_reader.h"

#include "exchange/bounds.h"
#include "exchange/values.h"
#include "fmi/attribute_checks.h"
#include "text/quote.h"

namespace tvtool::fmi {

using findings::Code;
using findings::Subject;
using findings::SubjectKind;
using text::quoted;

namespace {

bool isHexadecimal(std::string_view text) {
    return text.size() % 2 == 0 &&
           text.find_first_not_of("0123456789abcdefABCDEF") == std::string_view::npos;
}

} // namespace

void VariableReader::startVariable(BaseType base) {
    Description& description = element_.description;
    Variable& variable = description.variables.emplace_back();
    variable.position = ++description.variableElements;
    exchange::checkBound(description.variableElements, exchange::variableBound);
    variable.name = element_.requiredName();
    variable.place = element_.place;
    element_.subject = {SubjectKind::Variable, variable.name};
    variable.description = element_.text(Attribute::Description);
    variable.causality = readCausality(element_);
    variable.variability = readVariability(element_);
    variable.initial = readInitial(element_);
    const auto number = readUnsigned(element_, Attribute::ValueReference, "valueReference");
    variable.hasValueReference = number.has_value();
    variable.valueReference = number.value_or(0);
    if (element_[Attribute::ValueReference] == nullptr) {
        element_.addMissing("valueReference");
    }
    if (base != BaseType::None) {
        readBase(base);
    }
}

void VariableReader::readBase(BaseType base) {
    Variable& variable = this->variable();
    if (variable.base != BaseType::None) {
        element_.add(Code::BaseTypeRepeated, "variable {} has a second type",
                     quoted(variable.name));
        return;
    }
    variable.base = base;
    if (const char* const declaredType = element_[Attribute::DeclaredType]) {
        variable.declaredType = element_.description.texts.intern(declaredType);
    }
    variable.unitUse = units_.readUse();
    variable.startCount = checkStart(element_, base);
    variable.hasStart = element_[Attribute::Start] != nullptr;
    variable.start = element_.text(Attribute::Start);
    variable.isRelative = element_.isTrue(Attribute::RelativeQuantity);
    readRange(element_, variable);
    readReferences();
    readSize();
}

/// Keeps the references to other variables, which can follow.
void VariableReader::readReferences() {
    Description& description = element_.description;
    const auto index = static_cast<std::uint32_t>(description.variables.size() - 1);
    const auto keep = [&](ReferenceKind kind, std::uint32_t target) {
        description.references.push_back({index, target, kind});
        exchange::checkBound(description.references.size(), exchange::referenceBound);
    };
    if (const auto target = readUnsigned(element_, Attribute::Derivative, "derivative")) {
        keep(ReferenceKind::Derivative, *target);
    }
    if (const auto target = readUnsigned(element_, Attribute::Previous, "previous")) {
        keep(ReferenceKind::Previous, *target);
    }
    if (element_[Attribute::Clocks] == nullptr) {
        return;
    }
    std::string_view rest = element_[Attribute::Clocks];
    for (std::string_view word = exchange::takeWord(rest); !word.empty();
         word = exchange::takeWord(rest)) {
        const auto target = exchange::parseNumber<std::uint32_t>(word);
        if (!target) {
            element_.addForAttribute(Code::ValueInvalid, "clocks",
                                     "clocks {} is no unsigned 32-bit number", quoted(word));
            return;
        }
        keep(ReferenceKind::Clock, *target);
    }
}

/// The start value of a structural parameter or a constant can be the size of a dimension.
void VariableReader::readSize() {
    Variable& variable = this->variable();
    variable.isSize = variable.base == BaseType::UInt64 && variable.hasValueReference &&
                      (variable.causality == Causality::StructuralParameter ||
                       variable.variability == Variability::Constant);
    const auto size = exchange::parseNumber<std::uint64_t>(variable.start);
    if (variable.isSize && size) {
        element_.description.sizes.emplace(variable.valueReference, *size);
    }
}

void VariableReader::readDimension() {
    const char* const start = element_[Attribute::Start];
    const char* const reference = element_[Attribute::ValueReference];
    if ((start == nullptr) == (reference == nullptr)) {
        element_.add(Code::DimensionInvalid, "a dimension has either start or valueReference");
    }
    const auto size = exchange::parseNumber<std::uint64_t>(start == nullptr ? "" : start);
    if (start != nullptr && !size) {
        element_.addForAttribute(Code::ValueInvalid, "start", "start {} is no UInt64 value",
                                 quoted(start));
    }
    Variable& variable = this->variable();
    if (size && *size == 0) {
        element_.add(Code::DimensionZero, "variable {} has a dimension of 0",
                     quoted(variable.name));
    }
    const auto target = readUnsigned(element_, Attribute::ValueReference, "valueReference");
    if (size.has_value() == target.has_value()) {
        variable.hasBadDimension = true;
        return;
    }
    Description& description = element_.description;
    if (variable.dimensionCount++ == 0) {
        variable.firstDimension = static_cast<std::uint32_t>(description.dimensions.size());
    }
    description.dimensions.push_back(size ? Dimension{*size, false} : Dimension{*target, true});
    exchange::checkBound(description.dimensions.size(), exchange::dimensionBound);
}

void VariableReader::readStart() {
    Variable& variable = this->variable();
    if (variable.base != BaseType::String && variable.base != BaseType::Binary) {
        element_.addForAttribute(Code::ElementUnexpected, "Start",
                                 "variable {} is no String or Binary, whose start values are "
                                 "elements",
                                 quoted(variable.name));
        return;
    }
    const char* const value = element_[Attribute::Value];
    if (value != nullptr && variable.base == BaseType::Binary &&
        !isHexadecimal(exchange::trimmed(value))) {
        element_.addForAttribute(Code::ValueInvalid, "value", "value {} is not hexadecimal",
                                 quoted(value));
    }
    if (variable.startCount++ == 0) {
        variable.hasStart = true;
        variable.start = element_.text(Attribute::Value);
    }
}

void VariableReader::readAlias() {
    Description& description = element_.description;
    const std::string_view name = element_.requiredName();
    if (!name.empty()) {
        description.aliases.push_back(
            {name, element_.text(Attribute::DisplayUnit), element_.text(Attribute::Description),
             static_cast<std::uint32_t>(description.variables.size() - 1), element_.place});
        exchange::checkBound(description.aliases.size(), exchange::aliasBound);
    }
}

void VariableReader::endVariable() {
    Description& description = element_.description;
    const Variable& variable = this->variable();
    const Subject subject{SubjectKind::Variable, variable.name};
    if (variable.base == BaseType::None) {
        element_.findings.add(Code::BaseTypeMissing, variable.place, subject,
                              "variable {} has no type", quoted(variable.name));
    }
    if (description.majorVersion == 3 && variable.dimensionCount == 0 &&
        !variable.hasBadDimension && variable.startCount > 1) {
        element_.findings.add(Code::StartCount, variable.place, subject,
                              "variable {} has {} start values and is a scalar",
                              quoted(variable.name), variable.startCount);
    }
    if (!variable.name.empty()) {
        return;
    }
    // A variable without a name is not kept, but counts for indices and value references.
    const auto index = static_cast<std::uint32_t>(description.variables.size() - 1);
    while (!description.aliases.empty() && description.aliases.back().variable == index) {
        description.aliases.pop_back();
    }
    while (!description.references.empty() && description.references.back().variable == index) {
        description.references.pop_back();
    }
    if (variable.hasValueReference) {
        description.unnamedReferences.insert(variable.valueReference);
    }
    description.variables.pop_back();
}

} // namespace tvtool::fmi
