/// \file
/// Derivations: the facts that a result rests on.
#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <set>
#include <vector>

namespace tvtool::solver {

/// A fact, by a number of the caller's choice.
using FactIndex = std::uint32_t;

/// Stands for what the domain of the sizes states, as that they are not negative.
inline constexpr FactIndex domainFact = static_cast<FactIndex>(-1);

/// A node of a graph of derivations.
using Reason = std::uint32_t;

/// A directed acyclic graph: each node is a fact, or derived from other nodes. A derivation takes
/// constant space, however many facts it rests on.
class Reasons {
  public:
    Reason fact(FactIndex fact);
    Reason derived(Reason first, Reason second);
    Reason derived(const std::vector<Reason>& parents);

    /// Returns the facts that a result rests on.
    std::set<FactIndex> facts(Reason reason) const;

    std::size_t size() const { return nodes_.size(); }
    /// Removes the nodes beyond the first ones, which nothing may refer to any more.
    void shrink(std::size_t size) { nodes_.resize(size); }

  private:
    static constexpr Reason none = static_cast<Reason>(-1);
    struct Node {
        FactIndex fact = 0; ///< if there is no first parent
        Reason first = none;
        Reason second = none;
    };
    std::vector<Node> nodes_;
};

} // namespace tvtool::solver
