/// \file
/// Hierarchical names of connectors and variables.
#pragma once

#include "ssp/records.h"
#include "systems/name_index.h"

#include <boost/unordered/unordered_flat_map.hpp>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tvtool::systems {

/// What a name refers to: a connector, a variable, or both of the same name.
struct ParameterTarget {
    std::uint32_t instance = 0; ///< of the element that has it
    std::string_view name;      ///< in the element; of a variable, where the name is an alias
    const ssp::Connector* connector = nullptr;
    const fmi::Variable* variable = nullptr;

    /// Returns whether the element is one of which only the connectors are known, and has none with
    /// this name.
    bool isUnknown() const { return connector == nullptr && variable == nullptr; }
};

/// Resolves the hierarchical names below an element: Element.Element.variable. As names of elements
/// may have dots, a name can have several targets.
///
/// An instance is an element at one place below the root system. A component that is a system
/// itself is one instance together with the root of that system.
class ParameterNames {
  public:
    /// Limits of one name, far above those of real systems, in which names of elements without dots
    /// give one target and take as many steps as there are levels.
    static constexpr std::size_t mostTargets = 1'000;
    static constexpr std::size_t mostSteps = 10'000;

    ParameterNames(const ssp::Element& root, NameIndex& index) : index_(index) {
        instances_.push_back({&root, 0, 0});
    }

    /// Returns the instance of a child of an instance. That of the root system is 0.
    std::uint32_t child(std::uint32_t instance, const ssp::Element& element);

    const ssp::Element& element(std::uint32_t instance) const {
        return *instances_[instance].element;
    }
    /// Returns the number of instances around an instance.
    std::uint32_t level(std::uint32_t instance) const { return instances_[instance].level; }

    /// Returns the path below the root system: B.C, followed by a name unless that is empty.
    std::string path(std::uint32_t instance, std::string_view name = {}) const;

    /// Returns the targets of a name below an instance. One that is unknown has a view into the
    /// name, and is returned only if there is no other one.
    std::vector<ParameterTarget> resolve(std::uint32_t instance, std::string_view name);

  private:
    struct Instance {
        const ssp::Element* element = nullptr;
        std::uint32_t parent = 0;
        std::uint32_t level = 0;
    };

    /// Returns the different lengths of the names of the elements in a system, ascending.
    const std::vector<std::size_t>& lengthsIn(const ssp::Element& system);

    NameIndex& index_;
    std::vector<Instance> instances_;
    boost::unordered_flat_map<std::pair<std::uint32_t, const ssp::Element*>, std::uint32_t>
        children_;
    boost::unordered_flat_map<const ssp::Element*, std::vector<std::size_t>> lengths_;
};

/// Returns the system that contains the elements below an element: that of a component that is a
/// system, else the element itself.
inline const ssp::Element& innerSystem(const ssp::Element& element) {
    return element.system != nullptr ? *element.system : element;
}

} // namespace tvtool::systems
