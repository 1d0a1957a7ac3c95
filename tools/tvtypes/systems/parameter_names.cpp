#include "systems/parameter_names.h"

#include "model/path.h"

#include <algorithm>
#include <iterator>

namespace tvtool::systems {

namespace {

/// Returns the target in an element itself, without the elements below it.
ParameterTarget targetIn(std::uint32_t instance, const ssp::Element& element, std::string_view name,
                         NameIndex& index) {
    ParameterTarget target{instance, name, index.connector(element, name), nullptr};
    if (target.connector == nullptr && element.system != nullptr) {
        target.connector = index.connector(*element.system, name);
    }
    if (element.model != nullptr) {
        target.variable = index.variable(*element.model, name);
    }
    if (target.variable != nullptr) {
        target.name = target.variable->name;
    } else if (target.connector != nullptr) {
        target.name = target.connector->name;
    }
    return target;
}

/// Returns whether an element can have variables that are not known.
bool hasUnknownVariables(const ssp::Element& element) {
    return element.kind == ssp::ElementKind::Component && element.model == nullptr &&
           element.system == nullptr;
}

} // namespace

std::uint32_t ParameterNames::child(std::uint32_t instance, const ssp::Element& element) {
    const auto next = static_cast<std::uint32_t>(instances_.size());
    const auto [entry, isNew] = children_.try_emplace({instance, &element}, next);
    if (isNew) {
        instances_.push_back({&element, instance, instances_[instance].level + 1});
    }
    return entry->second;
}

std::string ParameterNames::path(std::uint32_t instance, std::string_view name) const {
    model::PathEnd end;
    bool hasRoom = name.empty() || end.prepend(name);
    for (; hasRoom && instance != 0; instance = instances_[instance].parent) {
        hasRoom = end.prepend(element(instance).name);
    }
    return end.text();
}

const std::vector<std::size_t>& ParameterNames::lengthsIn(const ssp::Element& system) {
    const auto [entry, isNew] = lengths_.try_emplace(&system);
    std::vector<std::size_t>& lengths = entry->second;
    if (isNew) {
        std::ranges::transform(system.elements, std::back_inserter(lengths),
                               [](const ssp::Element* element) { return element->name.size(); });
        std::ranges::sort(lengths);
        lengths.erase(std::unique(lengths.begin(), lengths.end()), lengths.end());
    }
    return lengths;
}

std::vector<ParameterTarget> ParameterNames::resolve(std::uint32_t instance,
                                                     std::string_view name) {
    std::vector<ParameterTarget> targets;
    std::vector<ParameterTarget> unknown;
    std::vector<std::pair<std::uint32_t, std::string_view>> open{{instance, name}};
    for (std::size_t step = 0;
         !open.empty() && step < mostSteps && targets.size() + unknown.size() < mostTargets;
         ++step) {
        const auto [current, rest] = open.back();
        open.pop_back();
        const ssp::Element& at = element(current);
        const ParameterTarget target = targetIn(current, at, rest, index_);
        if (!target.isUnknown()) {
            targets.push_back(target);
        } else if (hasUnknownVariables(at)) {
            unknown.push_back(target);
        }
        const ssp::Element& system = innerSystem(at);
        for (const std::size_t length : lengthsIn(system)) {
            if (length >= rest.size()) {
                break;
            }
            const ssp::Element* const next =
                rest[length] == '.' ? index_.element(system, rest.substr(0, length)) : nullptr;
            if (next != nullptr) {
                open.emplace_back(child(current, *next), rest.substr(length + 1));
            }
        }
    }
    return targets.empty() ? unknown : targets;
}

} // namespace tvtool::systems
