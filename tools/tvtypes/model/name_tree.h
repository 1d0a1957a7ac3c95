/// \file
/// The hierarchy that structured names tell of.
///
/// Texts are views into those of the description. Names may nest as deep as a text is long, so
/// whoever walks the tree follows its links instead of recurring.
#pragma once

#include "fmi/description.h"
#include "fmi/remarks.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace tvtool::model {

/// What goes by one name at one place: x, or x[1], x[2] and so on.
struct Member {
    std::string_view name;       ///< without indices
    std::uint32_t owner = 0;     ///< the instance of which it is a member
    std::uint32_t instances = 0; ///< how many there are
    std::uint32_t firstInstance = fmi::noIndex;
    std::uint32_t lastInstance = fmi::noIndex;
    std::uint32_t nextMember = fmi::noIndex;
};

/// One of the things that a member stands for: a variable, or a holder of members.
struct Instance {
    std::string_view text; ///< the name with its indices
    std::uint32_t member = fmi::noIndex;
    std::uint32_t firstIndex = 0; ///< in NameTree::indices
    std::uint32_t indexCount = 0;
    std::uint32_t bringer = fmi::noIndex;  ///< the first variable on whose way it lies
    std::uint32_t variable = fmi::noIndex; ///< the variable that it is
    std::uint32_t firstMember = fmi::noIndex;
    std::uint32_t lastMember = fmi::noIndex;
    std::uint32_t nextInstance = fmi::noIndex;
};

/// Members and instances stand in the order in which the description brings them, so what holds
/// another stands ahead of it. Instance 0 is the model.
struct NameTree {
    std::vector<Member> members;
    std::vector<Instance> instances{Instance{}};
    std::vector<std::uint32_t> indices;
};

/// The tree of all variables. Says which names are not structured, and which variables are to be
/// holders as well; these have no place in the tree, nor have derivatives and further names.
NameTree growNameTree(const fmi::Description& description, fmi::Remarks& remarks);

/// How many instances a member has in each dimension, if their indices count from 0 or from 1 in
/// each, without a gap and each once. Else, and without indices, empty.
std::vector<int> boxOf(const NameTree& tree, const Member& member);

/// The instance that a name leads to, the first one where indices are left out; fmi::noIndex if
/// none.
std::uint32_t findInstance(const NameTree& tree, std::string_view name);

} // namespace tvtool::model
