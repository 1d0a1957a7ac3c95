#include "model/name_tree.h"

#include "fmi/structured_name.h"
#include "text/quote.h"

#include <fmt/format.h>

#include <algorithm>
#include <limits>
#include <unordered_map>
#include <utility>

namespace tvtool::model {

namespace {

using fmi::Alias;
using fmi::Description;
using fmi::NameFault;
using fmi::NamePart;
using fmi::noIndex;
using fmi::Place;
using fmi::Remarks;
using fmi::StructuredName;
using fmi::Variable;

struct Key {
    std::uint32_t owner = 0;
    std::string_view text;
    bool operator==(const Key&) const = default;
};
struct KeyHash {
    std::size_t operator()(const Key& key) const {
        return std::hash<std::string_view>()(key.text) ^
               (std::size_t{key.owner} * 0x9E3779B97F4A7C15U);
    }
};
using Index = std::unordered_map<Key, std::uint32_t, KeyHash>;

std::uint32_t asIndex(std::size_t size) { return static_cast<std::uint32_t>(size); }

std::string_view indicesOf(const NamePart& part) { return part.text.substr(part.name.size()); }

class Grower {
  public:
    void add(const StructuredName& name, std::uint32_t variable) {
        std::uint32_t at = 0;
        for (const NamePart& part : name.parts) {
            at = instanceOf(memberOf(at, part.name), part, name, variable);
        }
        // Of two variables with one name the first one counts; the name has been complained of.
        if (tree_.instances[at].variable == noIndex) {
            tree_.instances[at].variable = variable;
        }
    }

    NameTree take() { return std::move(tree_); }

  private:
    std::uint32_t memberOf(std::uint32_t owner, std::string_view name) {
        const std::uint32_t next = asIndex(tree_.members.size());
        const auto [entry, isNew] = members_.try_emplace({owner, name}, next);
        if (isNew) {
            tree_.members.push_back({.name = name, .owner = owner});
            Instance& holder = tree_.instances[owner];
            (holder.firstMember == noIndex ? holder.firstMember
                                           : tree_.members[holder.lastMember].nextMember) = next;
            holder.lastMember = next;
        }
        return entry->second;
    }

    std::uint32_t instanceOf(std::uint32_t memberIndex, const NamePart& part,
                             const StructuredName& name, std::uint32_t variable) {
        const std::uint32_t next = asIndex(tree_.instances.size());
        const auto [entry, isNew] = instances_.try_emplace({memberIndex, indicesOf(part)}, next);
        if (isNew) {
            tree_.instances.push_back({.text = part.text,
                                       .member = memberIndex,
                                       .firstIndex = asIndex(tree_.indices.size()),
                                       .indexCount = asIndex(part.indexCount),
                                       .bringer = variable});
            const auto first = name.indices.begin() + static_cast<std::ptrdiff_t>(part.firstIndex);
            tree_.indices.insert(tree_.indices.end(), first,
                                 first + static_cast<std::ptrdiff_t>(part.indexCount));
            Member& member = tree_.members[memberIndex];
            (member.firstInstance == noIndex ? member.firstInstance
                                             : tree_.instances[member.lastInstance].nextInstance) =
                next;
            member.lastInstance = next;
            ++member.instances;
        }
        return entry->second;
    }

    NameTree tree_;
    Index members_;   ///< by the instance that owns them
    Index instances_; ///< by their member
};

/// Parses a name into `parsed`; false, with the problem said, if it is not structured.
bool isStructured(std::string_view name, const Place& place, StructuredName& parsed,
                  Remarks& remarks) {
    const std::optional<NameFault> fault = parseName(name, parsed);
    if (fault) {
        const auto bytes = name.substr(0, fault->position);
        const auto before = std::ranges::count_if(
            bytes, [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U; });
        remarks.problem(place, fmt::format("name {} is not structured: character {} should be {}",
                                           text::quoted(name), before + 1, fault->expected));
    }
    return !fault;
}

void takeOutHolders(const Description& description, NameTree& tree, Remarks& remarks) {
    for (Instance& instance : tree.instances) {
        if (instance.variable == noIndex || instance.firstMember == noIndex) {
            continue;
        }
        const Member& member = tree.members[instance.firstMember];
        const std::uint32_t below = tree.instances[member.firstInstance].bringer;
        const Variable& variable = description.variables[instance.variable];
        const Place& place = description.variables[std::max(instance.variable, below)].place;
        remarks.problem(place, fmt::format("{} is a variable on line {} and a struct on line {}; "
                                           "the variable is no element of a struct",
                                           text::quoted(variable.name), variable.place.line,
                                           description.variables[below].place.line));
        instance.variable = noIndex;
    }
}

bool hasIndices(const NameTree& tree, const Instance& instance, const StructuredName& name,
                const NamePart& part) {
    const auto given = name.indices.begin() + static_cast<std::ptrdiff_t>(part.firstIndex);
    const auto own = tree.indices.begin() + instance.firstIndex;
    return std::equal(given, given + static_cast<std::ptrdiff_t>(part.indexCount), own,
                      own + instance.indexCount);
}

} // namespace

NameTree growNameTree(const Description& description, Remarks& remarks) {
    Grower grower;
    StructuredName parsed;
    for (std::size_t i = 0; i < description.variables.size(); ++i) {
        const Variable& variable = description.variables[i];
        if (!variable.name.empty() &&
            isStructured(variable.name, variable.place, parsed, remarks) && !parsed.isDerivative) {
            grower.add(parsed, asIndex(i));
        }
    }
    for (const Alias& alias : description.aliases) {
        isStructured(alias.name, alias.place, parsed, remarks);
    }
    NameTree tree = grower.take();
    takeOutHolders(description, tree, remarks);
    return tree;
}

std::vector<int> boxOf(const NameTree& tree, const Member& member) {
    const std::uint32_t dimensions = tree.instances[member.firstInstance].indexCount;
    std::vector<std::uint32_t> least(dimensions, std::numeric_limits<std::uint32_t>::max());
    std::vector<std::uint32_t> most(dimensions, 0);
    for (std::uint32_t i = member.firstInstance; i != noIndex; i = tree.instances[i].nextInstance) {
        const Instance& instance = tree.instances[i];
        if (instance.indexCount != dimensions) {
            return {};
        }
        for (std::uint32_t d = 0; d < dimensions; ++d) {
            const std::uint32_t index = tree.indices[instance.firstIndex + d];
            least[d] = std::min(least[d], index);
            most[d] = std::max(most[d], index);
        }
    }
    std::vector<int> sizes;
    std::uint64_t places = 1;
    for (std::uint32_t d = 0; d < dimensions; ++d) {
        const std::uint32_t size = most[d] - least[d] + 1;
        places *= size;
        if (least[d] > 1 || places > member.instances) {
            return {};
        }
        sizes.push_back(static_cast<int>(size));
    }
    if (places != member.instances) {
        return {};
    }
    // As many as there are places: each once, unless one is written in two ways, as [1] and [01].
    std::vector<bool> isTaken(places);
    for (std::uint32_t i = member.firstInstance; i != noIndex; i = tree.instances[i].nextInstance) {
        std::size_t place = 0;
        for (std::uint32_t d = 0; d < dimensions; ++d) {
            place = place * static_cast<std::size_t>(sizes[d]) +
                    (tree.indices[tree.instances[i].firstIndex + d] - least[d]);
        }
        if (isTaken[place]) {
            return {};
        }
        isTaken[place] = true;
    }
    return sizes;
}

std::uint32_t findInstance(const NameTree& tree, std::string_view name) {
    StructuredName parsed;
    if (parseName(name, parsed) || parsed.isDerivative) {
        return noIndex;
    }
    std::uint32_t at = 0;
    for (const NamePart& part : parsed.parts) {
        std::uint32_t member = tree.instances[at].firstMember;
        while (member != noIndex && tree.members[member].name != part.name) {
            member = tree.members[member].nextMember;
        }
        if (member == noIndex) {
            return noIndex;
        }
        at = tree.members[member].firstInstance;
        while (at != noIndex && part.indexCount > 0 &&
               !hasIndices(tree, tree.instances[at], parsed, part)) {
            at = tree.instances[at].nextInstance;
        }
        if (at == noIndex) {
            return noIndex;
        }
    }
    return at;
}

} // namespace tvtool::model
