#include "model/dimensions.h"

#include "dims/fact_records.h"
#include "dims/reading.h"
#include "model/path.h"
#include "text/quote.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <limits>
#include <set>
#include <string>

namespace tvtool::model {

namespace {

using text::quoted;

/// More than any number of start values.
constexpr std::uint64_t countless = std::numeric_limits<std::uint64_t>::max();

std::uint64_t product(std::uint64_t a, std::uint64_t b) {
    return b != 0 && a > countless / b ? countless : a * b;
}

} // namespace

Dimensions::Dimensions(const fmi::Description& description, fmi::Remarks& remarks)
    : description_(description), remarks_(remarks) {
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
            enter(i);
        }
    }
    if (facts_.isExhausted()) {
        remarks.note({"ModelVariables", 0}, "there are more facts about sizes than are compared");
    }
}

std::vector<dims::DimsFact> Dimensions::facts() const { return facts_.statedBy(blocks_); }

void Dimensions::enter(std::uint32_t index) {
    const fmi::Variable& variable = description_.variables[index];
    std::vector<Extent> extents;
    for (std::uint32_t d = 0; d < variable.dimensionCount; ++d) {
        const auto extent =
            extentOf(description_.dimensions[variable.firstDimension + d], variable);
        if (!extent) {
            return;
        }
        extents.push_back(*extent);
    }
    if (variable.hasBadDimension) {
        return;
    }
    const int id = idOf(extents);
    const auto [place, isNew] = placeOfId_.try_emplace(id, all_.size());
    if (isNew) {
        all_.push_back({id, {}});
    }
    all_[place->second].variables.push_back(index);
    // One value may stand for all elements.
    if (variable.startCount > 1 && canHold(variable, id, extents)) {
        stateEqual(dims::sizeOf(table_, id), variable.startCount, variable);
    }
}

std::optional<Dimensions::Extent> Dimensions::extentOf(const fmi::Dimension& dimension,
                                                       const fmi::Variable& variable) {
    if (dimension.isReference) {
        return extentOfParameter(static_cast<std::uint32_t>(dimension.number), variable);
    }
    return Extent{idOf(dimension.number), dimension.number, nullptr};
}

std::optional<Dimensions::Extent> Dimensions::extentOfParameter(std::uint32_t valueReference,
                                                                const fmi::Variable& variable) {
    if (const auto known = parameters_.find(valueReference); known != parameters_.end()) {
        return known->second;
    }
    const auto found = variableOf_.find(valueReference);
    if (found == variableOf_.end() || !found->second->isSize) {
        const std::string what =
            found == variableOf_.end()
                ? fmt::format("valueReference {}, which no variable has", valueReference)
                : fmt::format("{}, which is no UInt64 structural parameter or constant",
                              text::quoted(found->second->name));
        remarks_.problem(variable.place, fmt::format("a dimension of variable {} refers to {}",
                                                     text::quoted(variable.name), what));
        return std::nullopt;
    }
    const fmi::Variable& parameter = *found->second;
    if (parameter.name.empty()) {
        return std::nullopt;
    }
    Extent extent{
        table_.getSymbolicDims(std::string(parameter.name).c_str()).getId(), {}, &parameter};
    if (const auto size = description_.sizes.find(valueReference);
        size != description_.sizes.end()) {
        extent.number = size->second;
        stateEqual(extent.id, size->second, parameter);
    }
    parameters_.emplace(valueReference, extent);
    return extent;
}

int Dimensions::idOf(std::uint64_t number) {
    return table_.registerSymbolicDimsExpr(std::to_string(number).c_str());
}

int Dimensions::idOf(const std::vector<Extent>& extents) {
    if (extents.size() == 1) {
        return extents.front().id;
    }
    std::vector<int> ids;
    for (const Extent& extent : extents) {
        ids.push_back(extent.id);
    }
    return TVTypeSys::SymbolicDimsND(table_, ids).getId();
}

/// Whether the array has as many elements as start values, or the description does not say how many
/// there are. The library computes no numbers.
bool Dimensions::canHold(const fmi::Variable& variable, int id,
                         const std::vector<Extent>& extents) {
    std::uint64_t count = 1;
    std::set<std::string> parameters;
    for (const Extent& extent : extents) {
        if (!extent.number) {
            return true;
        }
        count = product(count, *extent.number);
        if (extent.parameter != nullptr) {
            parameters.insert(fmt::format("{} is {} (line {})",
                                          text::shortened(extent.parameter->name), *extent.number,
                                          extent.parameter->place.line));
        }
    }
    if (std::ranges::any_of(extents, [](const Extent& extent) { return extent.number == 0; })) {
        count = 0;
    }
    if (count == variable.startCount) {
        return true;
    }
    const std::string many = count == countless ? "too many" : std::to_string(count);
    remarks_.problem(
        variable.place,
        fmt::format(
            "variable {} has {} start values and {} elements: its dimensions are {}{}",
            text::quoted(variable.name), variable.startCount, many,
            text::shortened(table_.getDisplayString(id)),
            parameters.empty() ? "" : ", where " + fmt::format("{}", fmt::join(parameters, ", "))));
    return false;
}

void Dimensions::stateEqual(int size, std::uint64_t number, const fmi::Variable& variable) {
    const TVBlock& block =
        blocks_.emplace_back(TVBlock{std::string(variable.name), variable.place.line});
    const auto objection =
        facts_.state({size, dims::Relation::Equal, idOf(number), &block, variable.place.line});
    if (objection) {
        remarks_.problem(variable.place, fmt::format("by variable {} {} is {}, which cannot be: {}",
                                                     text::quoted(variable.name),
                                                     text::shortened(table_.getDisplayString(size)),
                                                     number, objection->reason.text()));
    }
}

} // namespace tvtool::model
