#include "fmi/variable_finder.h"

#include <fmt/format.h>

#include <algorithm>

namespace tvtool::fmi {

VariableFinder::VariableFinder(const Description& description) : description_(description) {
    indices_.reserve(description.variables.size());
    for (std::uint32_t i = 0; i < description.variables.size(); ++i) {
        const Variable& variable = description.variables[i];
        if (description.majorVersion == 2) {
            indices_.emplace_back(variable.position, i);
        } else if (variable.hasValueReference) {
            indices_.emplace_back(variable.valueReference, i);
        }
    }
    std::ranges::sort(indices_);
}

std::uint32_t VariableFinder::find(std::uint32_t target) const {
    const auto found = std::ranges::lower_bound(indices_, target, {},
                                                [](const auto& entry) { return entry.first; });
    return found != indices_.end() && found->first == target ? found->second : noIndex;
}

bool VariableFinder::exists(std::uint32_t target) const {
    if (description_.majorVersion == 2) {
        return target >= 1 && target <= description_.variableElements;
    }
    return find(target) != noIndex || description_.unnamedReferences.contains(target);
}

std::string VariableFinder::text(std::uint32_t target) const {
    return fmt::format("{} {}", description_.majorVersion == 2 ? "index" : "valueReference",
                       target);
}

} // namespace tvtool::fmi
