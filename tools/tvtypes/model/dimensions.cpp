#include "model/dimensions.h"

#include "dims/fact_records.h"
#include "dims/names.h"
#include "dims/reading.h"
#include "exchange/bounds.h"
#include "text/quote.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <limits>
#include <set>
#include <string>

namespace tvtool::model {

namespace {

using findings::Code;
using findings::Subject;
using text::quoted;

Subject subjectOf(const fmi::Variable& variable) {
    return {findings::SubjectKind::Variable, variable.name};
}

/// A product that is out of range, and so above any number of start values.
constexpr std::uint64_t tooMany = std::numeric_limits<std::uint64_t>::max();

std::uint64_t saturatedProduct(std::uint64_t a, std::uint64_t b) {
    return b != 0 && a > tooMany / b ? tooMany : a * b;
}

} // namespace

Dimensions::Dimensions(const fmi::Description& description, findings::Findings& findings)
    : description_(description), findings_(findings) {
    for (const fmi::Variable& variable : description.variables) {
        if (variable.hasValueReference) {
            const auto [entry, isNew] = variableOf_.try_emplace(variable.valueReference, &variable);
            if (!isNew && variable.isSize && !entry->second->isSize) {
                entry->second = &variable;
            }
        }
    }
    for (std::uint32_t i = 0; i < description.variables.size(); ++i) {
        if (description.variables[i].dimensionCount > 0) {
            add(i);
        }
    }
    if (!facts_.undecidedLines().empty()) {
        findings.add(Code::SizeLimit, {"ModelVariables"}, {},
                     "{} about sizes not decided, since that takes too much work",
                     text::counted(facts_.undecidedLines().size(), "fact is", "facts are"));
    }
}

std::vector<dims::DimsFact> Dimensions::facts() const { return facts_.statedBy(blocks_); }

void Dimensions::add(std::uint32_t index) {
    const fmi::Variable& variable = description_.variables[index];
    std::vector<Extent> extents;
    for (std::uint32_t d = 0; d < variable.dimensionCount; ++d) {
        const auto& [number, isReference] = description_.dimensions[variable.firstDimension + d];
        const auto extent = isReference
                                ? extentOfParameter(static_cast<std::uint32_t>(number), variable)
                                : Extent{registerNumber(number), number, nullptr};
        if (!extent) {
            return;
        }
        extents.push_back(*extent);
    }
    if (variable.hasBadDimension) {
        return;
    }
    const int id = registerExtents(extents);
    const auto [entry, isNew] = indices_.try_emplace(id, all_.size());
    if (isNew) {
        all_.push_back({id, {}});
        exchange::checkBound(all_.size() + parameters_.size(), exchange::sizeBound);
    }
    all_[entry->second].variables.push_back(index);
    // A single start value can be that of all elements.
    if (variable.startCount > 1 && checkStartCount(variable, id, extents)) {
        stateEqual(dims::sizeOf(table_, id), variable.startCount, variable);
    }
}

/// Returns nothing, with a problem, if there is no such parameter.
std::optional<Dimensions::Extent> Dimensions::extentOfParameter(std::uint32_t valueReference,
                                                                const fmi::Variable& variable) {
    if (const auto known = parameters_.find(valueReference); known != parameters_.end()) {
        return known->second;
    }
    const auto found = variableOf_.find(valueReference);
    if (found == variableOf_.end() && description_.unnamedReferences.contains(valueReference)) {
        return std::nullopt;
    }
    if (found == variableOf_.end()) {
        findings_.add(Code::DimensionUndefined, variable.place, subjectOf(variable),
                      "a dimension of variable {} refers to valueReference {}, which no "
                      "variable has",
                      quoted(variable.name), valueReference);
        return std::nullopt;
    }
    const fmi::Variable& parameter = *found->second;
    if (!parameter.isSize) {
        findings_.add(Code::DimensionParameter, variable.place, subjectOf(variable),
                      "a dimension of variable {} refers to {}, which is no UInt64 structural "
                      "parameter or constant",
                      quoted(variable.name), quoted(parameter.name));
        return std::nullopt;
    }
    Extent extent{table_.getSymbolicDims(dims::nameInExpression(parameter.name).c_str()).getId(),
                  {},
                  &parameter};
    if (const auto size = description_.sizes.find(valueReference);
        size != description_.sizes.end()) {
        extent.number = size->second;
        stateEqual(extent.id, size->second, parameter);
    }
    parameters_.emplace(valueReference, extent);
    return extent;
}

int Dimensions::registerNumber(std::uint64_t number) {
    return table_.registerSymbolicDimsExpr(std::to_string(number).c_str());
}

int Dimensions::registerExtents(const std::vector<Extent>& extents) {
    std::vector<int> ids;
    for (const Extent& extent : extents) {
        ids.push_back(extent.id);
    }
    return ids.size() == 1 ? ids.front() : TVTypeSys::SymbolicDimsND(table_, ids).getId();
}

/// Returns whether the number of elements equals that of the start values, or is unknown. A
/// difference is a problem. The number is computed here, as the library computes no numbers.
bool Dimensions::checkStartCount(const fmi::Variable& variable, int id,
                                 const std::vector<Extent>& extents) {
    std::uint64_t count = 1;
    bool isEmpty = false;
    std::set<std::string> parameters;
    for (const Extent& extent : extents) {
        if (!extent.number) {
            return true;
        }
        count = saturatedProduct(count, *extent.number);
        isEmpty = isEmpty || *extent.number == 0;
        if (extent.parameter != nullptr) {
            parameters.insert(fmt::format("{} is {} (line {})",
                                          text::shortened(extent.parameter->name), *extent.number,
                                          extent.parameter->place.line));
        }
    }
    count = isEmpty ? 0 : count;
    if (count == variable.startCount) {
        return true;
    }
    findings_.add(Code::StartCount, variable.place, subjectOf(variable),
                  "variable {} has {} start values and {} elements: its dimensions are {}{}",
                  quoted(variable.name), variable.startCount,
                  count == tooMany ? "too many" : std::to_string(count),
                  text::shortened(table_.getDisplayString(id)),
                  parameters.empty() ? "" : fmt::format(", where {}", fmt::join(parameters, ", ")));
    return false;
}

void Dimensions::stateEqual(int size, std::uint64_t number, const fmi::Variable& variable) {
    const TVBlock& block =
        blocks_.emplace_back(TVBlock{std::string(variable.name), variable.place.line});
    const auto objection = facts_.state(
        {size, dims::Relation::Equal, registerNumber(number), &block, variable.place.line});
    if (objection) {
        findings_.add(Code::SizeContradiction, variable.place, subjectOf(variable),
                      "by variable {} {} is {}, which cannot be: {}", quoted(variable.name),
                      text::shortened(table_.getDisplayString(size)), number,
                      objection->reason.text());
    }
}

} // namespace tvtool::model
