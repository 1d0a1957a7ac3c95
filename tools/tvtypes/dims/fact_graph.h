/// \file
/// Search for chains of facts of one kind between sizes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

/// The library's opaque type of blocks, which state facts: here the block named in a line of facts,
/// the line itself if it names none, or a variable of a description.
class TVBlock {
  public:
    std::string name;       ///< empty for a line without a block
    std::uint64_t line = 0; ///< the first line with this block
};

namespace tvtool::dims {

enum class Relation { Equal, Greater };

/// A relation of two sizes, which are ids of simplified dimensions.
struct Fact {
    int left = 0;
    Relation relation = Relation::Equal;
    int right = 0;
    const TVBlock* block = nullptr; ///< null for a question alone
    std::uint64_t line = 0;
    bool isDoubtful = false; ///< whether it contradicts the facts before it
};

/// Facts that lead from one size to another.
using Chain = std::vector<const Fact*>;

/// A directed graph whose nodes are sizes and whose edges are the facts in the library. An equal
/// fact leads both ways, a greater one from the greater to the lesser size. The library only
/// returns whether sizes are related by facts of one kind; this finds the facts.
class FactGraph {
  public:
    /// Adds the edges of a fact, which must stay at its address.
    void add(const Fact& fact);

    /// Returns a shortest chain of facts of one kind, by breadth-first search. Doubtful facts are
    /// used only if there is none without them. Empty if there is none at all, or the total of
    /// steps for all searches is used up.
    std::optional<Chain> find(int from, int to, Relation relation);

  private:
    struct Edge {
        std::size_t to;
        const Fact* fact;
    };
    /// The step by which a search first reached a node.
    struct Arrival {
        unsigned search = 0; ///< number of the last search that reached the node
        std::size_t from = 0;
        const Fact* fact = nullptr;
    };

    std::size_t nodeOf(int id);
    std::optional<Chain> find(std::size_t from, std::size_t to, Relation relation,
                              bool withDoubtful);
    Chain chainTo(std::size_t node, std::size_t begin) const;

    std::vector<std::vector<Edge>> edges_; ///< by node
    std::unordered_map<int, std::size_t> nodeOfId_;
    std::vector<std::size_t> queue_;
    std::vector<Arrival> arrivals_; ///< by node
    unsigned searches_ = 0;
    std::size_t stepsLeft_ = 50'000'000;
};

} // namespace tvtool::dims
