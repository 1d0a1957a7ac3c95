/// \file
/// The hierarchy that structured names express.
///
/// Texts are views into those of the description. Names can be nested as deep as a text is long, so
/// code that walks the tree follows its links and does not recurse.
#pragma once

#include "findings/findings.h"
#include "fmi/description.h"

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace tvtool::model {

/// A name inside an instance: x, with the instances x, or x[1], x[2] and so on.
struct Member {
    std::string_view name;       ///< without indices
    std::uint32_t owner = 0;     ///< the instance that contains the member
    std::uint32_t instances = 0; ///< number of instances
    std::uint32_t firstInstance = exchange::noIndex;
    std::uint32_t lastInstance = exchange::noIndex;
    std::uint32_t nextMember = exchange::noIndex;
};

/// One element of a member: a variable, or a struct with members.
struct Instance {
    std::string_view text; ///< the name with its indices
    std::uint32_t member = exchange::noIndex;
    std::uint32_t firstIndex = 0; ///< in NameTree::indices
    std::uint32_t indexCount = 0;
    std::uint32_t firstVariable =
        exchange::noIndex; ///< the first variable that is or is in the instance
    std::uint32_t variable = exchange::noIndex; ///< the variable that the instance is
    std::uint32_t firstMember = exchange::noIndex;
    std::uint32_t lastMember = exchange::noIndex;
    std::uint32_t nextInstance = exchange::noIndex;
};

/// Members and instances are in the order of their first variables. Instance 0 is the model.
struct NameTree {
    std::vector<Member> members;
    std::vector<Instance> instances{Instance{}};
    std::vector<std::uint32_t> indices;

    std::span<const std::uint32_t> indicesOf(const Instance& instance) const {
        return std::span(indices).subspan(instance.firstIndex, instance.indexCount);
    }
};

/// Builds the tree of all variables. A name that is not structured, and a variable that has the
/// name of a struct, are findings and not in the tree. Derivatives and further names of variables
/// are not in the tree either. With too many names for the memory, which is a finding, the tree is
/// empty.
NameTree buildNameTree(const fmi::Description& description, findings::Findings& findings);

/// Returns the number of instances in each dimension if their indices count from 0 or from 1 in
/// each, without a gap or a repetition. Otherwise, and without indices, empty.
std::vector<int> arraySizes(const NameTree& tree, const Member& member);

/// Returns the instances of a member in the order of their indices, of which the last one varies
/// fastest, as in the values of an array in FMI.
std::vector<std::uint32_t> arrayOrder(const NameTree& tree, const Member& member);

/// Returns the instance with a name, the first one where indices are omitted; exchange::noIndex if
/// there is none.
std::uint32_t findInstance(const NameTree& tree, std::string_view name);

} // namespace tvtool::model
