#include "model/name_tree.h"

#include "fmi/structured_name.h"
#include "text/excerpt.h"
#include "text/quote.h"

#include <boost/container_hash/hash.hpp>
#include <boost/unordered/unordered_flat_set.hpp>

#include <algorithm>
#include <functional>
#include <limits>
#include <utility>

namespace tvtool::model {

namespace {

using exchange::noIndex;
using findings::Code;
using findings::SubjectKind;
using fmi::NamePart;
using fmi::StructuredName;
using text::quoted;

// Limits of memory, far above the names of real models.
constexpr std::size_t longestPath = 64 * 1024;
constexpr std::size_t mostInstances = 1'500'000;

/// The owner and the text of a member or an instance.
using Key = std::pair<std::uint32_t, std::string_view>;

Key memberKey(const NameTree& tree, std::uint32_t index) {
    const Member& member = tree.members[index];
    return {member.owner, member.name};
}

Key instanceKey(const NameTree& tree, std::uint32_t index) {
    const Instance& instance = tree.instances[index];
    return {instance.member, instance.text.substr(tree.members[instance.member].name.size())};
}

/// A set of indices that are distinct by their keys, which are in the tree alone.
template <Key (*keyOf)(const NameTree&, std::uint32_t)>
class Index {
  public:
    explicit Index(const NameTree& tree) : set_(0, Hash{tree}, Equal{tree}) {}

    /// Returns the index with the same key, which is added if there is none.
    std::uint32_t findOrAdd(std::uint32_t index) { return *set_.insert(index).first; }

  private:
    struct Hash {
        const NameTree& tree;
        std::size_t operator()(std::uint32_t index) const {
            const Key key = keyOf(tree, index);
            std::size_t hash = std::hash<std::string_view>()(key.second);
            boost::hash_combine(hash, key.first);
            return hash;
        }
    };
    struct Equal {
        const NameTree& tree;
        bool operator()(std::uint32_t a, std::uint32_t b) const {
            return keyOf(tree, a) == keyOf(tree, b);
        }
    };
    boost::unordered_flat_set<std::uint32_t, Hash, Equal> set_;
};

std::uint32_t toIndex(std::size_t size) { return static_cast<std::uint32_t>(size); }

class TreeBuilder {
  public:
    void add(const StructuredName& name, std::uint32_t variable) {
        std::uint32_t instance = 0;
        for (const NamePart& part : name.parts) {
            instance = findOrAddInstance(findOrAddMember(instance, part.name), part,
                                         name.indicesOf(part), variable);
        }
        // The first variable of a name counts. The repetition is already a problem.
        std::uint32_t& own = tree_.instances[instance].variable;
        own = own == noIndex ? variable : own;
    }

    bool isFull() const { return tree_.instances.size() > mostInstances; }

    NameTree take() { return std::move(tree_); }

  private:
    std::uint32_t findOrAddMember(std::uint32_t owner, std::string_view name) {
        const std::uint32_t next = toIndex(tree_.members.size());
        tree_.members.push_back({.name = name, .owner = owner});
        if (const std::uint32_t known = members_.findOrAdd(next); known != next) {
            tree_.members.pop_back();
            return known;
        }
        Instance& instance = tree_.instances[owner];
        (instance.firstMember == noIndex ? instance.firstMember
                                         : tree_.members[instance.lastMember].nextMember) = next;
        instance.lastMember = next;
        return next;
    }

    std::uint32_t findOrAddInstance(std::uint32_t memberIndex, const NamePart& part,
                                    std::span<const std::uint32_t> indices,
                                    std::uint32_t variable) {
        const std::uint32_t next = toIndex(tree_.instances.size());
        tree_.instances.push_back({.text = part.text,
                                   .member = memberIndex,
                                   .firstIndex = toIndex(tree_.indices.size()),
                                   .indexCount = toIndex(indices.size()),
                                   .firstVariable = variable});
        if (const std::uint32_t known = instances_.findOrAdd(next); known != next) {
            tree_.instances.pop_back();
            return known;
        }
        tree_.indices.insert(tree_.indices.end(), indices.begin(), indices.end());
        Member& member = tree_.members[memberIndex];
        (member.firstInstance == noIndex ? member.firstInstance
                                         : tree_.instances[member.lastInstance].nextInstance) =
            next;
        member.lastInstance = next;
        ++member.instances;
        return next;
    }

    NameTree tree_;
    Index<memberKey> members_{tree_};
    Index<instanceKey> instances_{tree_};
};

/// Parses a name. Returns false, with a finding, if it is not structured.
bool parseStructured(std::string_view name, const exchange::Place& place, StructuredName& parsed,
                     findings::Findings& findings) {
    if (name.size() > longestPath) {
        findings.add(Code::StructLimit, place, {SubjectKind::Variable, name},
                     "name {} is longer than {} bytes, and is no element of a struct", quoted(name),
                     longestPath);
        return false;
    }
    const std::optional<fmi::NameFault> fault = parseName(name, parsed);
    if (fault) {
        findings.add(Code::NameSyntax, place, {SubjectKind::Variable, name},
                     "name {} is not structured: character {} should be {}", quoted(name),
                     text::columnOf(name, fault->position), fault->expected);
    }
    return !fault;
}

void removeVariablesNamedAsStructs(const fmi::Description& description, NameTree& tree,
                                   findings::Findings& findings) {
    for (Instance& instance : tree.instances) {
        if (instance.variable == noIndex || instance.firstMember == noIndex) {
            continue;
        }
        const Member& member = tree.members[instance.firstMember];
        const std::uint32_t inside = tree.instances[member.firstInstance].firstVariable;
        const fmi::Variable& variable = description.variables[instance.variable];
        findings.add(
            Code::NamePrefix, description.variables[std::max(instance.variable, inside)].place,
            {SubjectKind::Variable, variable.name},
            "{} is a variable on line {} and a struct on line {}; the variable is no "
            "element of a struct",
            quoted(variable.name), variable.place.line, description.variables[inside].place.line);
        instance.variable = noIndex;
    }
}

} // namespace

NameTree buildNameTree(const fmi::Description& description, findings::Findings& findings) {
    TreeBuilder builder;
    StructuredName parsed;
    for (std::size_t i = 0; i < description.variables.size(); ++i) {
        const fmi::Variable& variable = description.variables[i];
        if (!variable.name.empty() &&
            parseStructured(variable.name, variable.place, parsed, findings) &&
            !parsed.isDerivative) {
            builder.add(parsed, toIndex(i));
        }
        if (builder.isFull()) {
            findings.add(Code::StructLimit, variable.place, {},
                         "the names have more than {} parts, so no structs are read from them",
                         mostInstances);
            return {};
        }
    }
    for (const fmi::Alias& alias : description.aliases) {
        parseStructured(alias.name, alias.place, parsed, findings);
    }
    NameTree tree = builder.take();
    removeVariablesNamedAsStructs(description, tree, findings);
    return tree;
}

std::vector<int> arraySizes(const NameTree& tree, const Member& member) {
    const std::uint32_t dimensions = tree.instances[member.firstInstance].indexCount;
    std::vector<std::uint32_t> least(dimensions, std::numeric_limits<std::uint32_t>::max());
    std::vector<std::uint32_t> most(dimensions, 0);
    for (std::uint32_t i = member.firstInstance; i != noIndex; i = tree.instances[i].nextInstance) {
        const std::span<const std::uint32_t> indices = tree.indicesOf(tree.instances[i]);
        if (indices.size() != dimensions) {
            return {};
        }
        for (std::uint32_t d = 0; d < dimensions; ++d) {
            least[d] = std::min(least[d], indices[d]);
            most[d] = std::max(most[d], indices[d]);
        }
    }
    std::vector<int> sizes;
    std::uint64_t count = 1;
    for (std::uint32_t d = 0; d < dimensions; ++d) {
        const std::uint32_t size = most[d] - least[d] + 1;
        count *= size;
        if (least[d] > 1 || count > member.instances) {
            return {};
        }
        sizes.push_back(static_cast<int>(size));
    }
    if (count != member.instances) {
        return {};
    }
    // The count is right, but an element is repeated if it is written in two ways: [1] and [01].
    std::vector<bool> isPresent(count);
    for (std::uint32_t i = member.firstInstance; i != noIndex; i = tree.instances[i].nextInstance) {
        const std::span<const std::uint32_t> indices = tree.indicesOf(tree.instances[i]);
        std::size_t position = 0;
        for (std::uint32_t d = 0; d < dimensions; ++d) {
            position = position * static_cast<std::size_t>(sizes[d]) + (indices[d] - least[d]);
        }
        if (isPresent[position]) {
            return {};
        }
        isPresent[position] = true;
    }
    return sizes;
}

std::vector<std::uint32_t> arrayOrder(const NameTree& tree, const Member& member) {
    std::vector<std::uint32_t> order;
    order.reserve(member.instances);
    for (std::uint32_t i = member.firstInstance; i != noIndex; i = tree.instances[i].nextInstance) {
        order.push_back(i);
    }
    const auto indices = [&](std::uint32_t i) { return tree.indicesOf(tree.instances[i]); };
    std::ranges::sort(order, [&](std::uint32_t a, std::uint32_t b) {
        return std::ranges::lexicographical_compare(indices(a), indices(b));
    });
    return order;
}

std::uint32_t findInstance(const NameTree& tree, std::string_view name) {
    StructuredName parsed;
    if (parseName(name, parsed) || parsed.isDerivative) {
        return noIndex;
    }
    std::uint32_t instance = 0;
    for (const NamePart& part : parsed.parts) {
        std::uint32_t member = tree.instances[instance].firstMember;
        while (member != noIndex && tree.members[member].name != part.name) {
            member = tree.members[member].nextMember;
        }
        if (member == noIndex) {
            return noIndex;
        }
        instance = tree.members[member].firstInstance;
        while (
            instance != noIndex && part.indexCount > 0 &&
            !std::ranges::equal(tree.indicesOf(tree.instances[instance]), parsed.indicesOf(part))) {
            instance = tree.instances[instance].nextInstance;
        }
        if (instance == noIndex) {
            return noIndex;
        }
    }
    return instance;
}

} // namespace tvtool::model
