#include "services/errors.h"
#include "services/own_messages.h"

#include <tvtypes/symbolicdims/services.h>
#include <tvtypes/symbolicdims/table.h>

#include <cstdint>
#include <optional>

namespace TVTypeSys::SymbolicDimsServices {

namespace {

constexpr int inherit = -1;
constexpr int noneUnknown = -10;

std::vector<int> dimensionIds(SymbolicDimsTable* table, int id) {
    const SymbolicDims dims(table, id);
    std::vector<int> dimensions(dims.getNumDimensions());
    for (std::size_t i = 0; i < dimensions.size(); ++i) {
        dimensions[i] = dims.getDimension(i).getId();
    }
    return dimensions;
}

/// Sum of the inputs along an axis. Inputs that lack it are ignored; no value if all do.
std::optional<SymbolicDims> sumAlong(SymbolicDimsTable* table, std::size_t axis,
                                     const std::vector<std::vector<int>>& inputs) {
    std::optional<SymbolicDims> sum;
    for (const std::vector<int>& input : inputs) {
        if (axis < input.size()) {
            const SymbolicDims size(table, input[axis]);
            sum = sum ? *sum + size : size;
        }
    }
    return sum;
}

} // namespace

void Const::ComputeOutput(SymbolicDimsTable* table, const std::vector<std::string>& dims,
                          int& outputId, bool vectorForm) {
    if (dims.empty()) {
        return;
    }
    if (!vectorForm) {
        outputId = table->registerSymbolicDims(dims);
        return;
    }
    if (dims.size() != 2 || (dims[0] != "1" && dims[1] != "1")) {
        throwError(dimensions::InvalidSymbolicDimensionSpec());
    }
    outputId = table->registerSymbolicDims(dims[dims[0] == "1" ? 1 : 0].c_str());
}

void Concat::ComputeOutput(SymbolicDimsTable*, const std::vector<int>&, int&, int, bool,
                           const TVBlock*) {}

void Concat::ComputeInput(SymbolicDimsTable* table, const std::vector<int>& inputIds,
                          const int& outputId, int& resultId, int& unknownIndex, int concatDim,
                          bool vectorForm, const TVBlock* block) {
    const std::vector<int> output = dimensionIds(table, outputId);
    std::vector<std::vector<int>> inputs(inputIds.size()); // empty for unknown inputs
    int unknown = noneUnknown;
    std::size_t unknowns = 0;
    for (std::size_t i = 0; i < inputIds.size(); ++i) {
        if (inputIds[i] == inherit) {
            unknown = static_cast<int>(i);
            ++unknowns;
        } else {
            inputs[i] = dimensionIds(table, inputIds[i]);
        }
    }
    const auto axis = static_cast<std::size_t>(concatDim);
    if (unknowns <= 1 && (concatDim < 0 || axis >= output.size())) {
        throwError(own::InvalidDimensionIndex(concatDim, static_cast<std::int64_t>(output.size())));
    }
    unknownIndex = unknown;
    if (unknowns > 1) {
        return;
    }
    std::vector<int> result = output;
    if (const std::optional<SymbolicDims> sum = sumAlong(table, axis, inputs)) {
        if (unknowns == 1) {
            result[axis] = (SymbolicDims(table, output[axis]) - *sum).getId();
        } else {
            table->addEqualRelation(output[axis], sum->getId(), block);
        }
    }
    for (std::size_t k = 0; k < output.size(); ++k) {
        for (const std::vector<int>& input : inputs) {
            if (k != axis && k < input.size()) {
                table->addEqualRelation(output[k], input[k], block);
            }
        }
    }
    if (unknowns == 1) {
        resultId = vectorForm ? result.front() : SymbolicDimsND(table, result).getId();
    }
}

} // namespace TVTypeSys::SymbolicDimsServices
