/// \file
/// Search for chains of facts between sizes.
#pragma once

#include "exact/number.h"

#include <tvtypes/symbolicdims.h>

#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <tuple>
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

/// A relation of two sizes, which are different ids of simplified dimensions.
struct Fact {
    int left = 0;
    Relation relation = Relation::Equal;
    int right = 0;
    const TVBlock* block = nullptr; ///< null for a question alone
    std::uint64_t line = 0;
};

/// A step of a chain: a fact, or the order of two numbers.
struct Step {
    const Fact* fact = nullptr; ///< null between numbers
    int greater = 0;            ///< id of the greater number
    int lesser = 0;
};
using Chain = std::vector<Step>;

/// The steps that a chain may have.
enum class Steps {
    Equal,
    Greater,
    All ///< equal and greater facts, and the order of numbers
};

/// A directed graph whose nodes are sizes and whose edges are facts. An equal fact leads both ways,
/// a greater one from the greater to the lesser size. The library only returns whether sizes
/// are related by facts of one kind; this finds the facts, and chains of both kinds.
class FactGraph {
  public:
    explicit FactGraph(const TVTypeSys::SymbolicDimsTable& table) : table_(table) {}

    /// Adds the edges of a fact. Searches for Steps::All skip a `doubtful` fact, so that one
    /// contradiction does not cause others.
    void add(const Fact& fact, bool isDoubtful);

    /// Returns whether the fact was added before, and not as a doubtful one.
    bool contains(const Fact& fact) const { return facts_.contains(keyOf(fact)); }

    /// Returns a shortest chain from one size to another, by breadth-first search; with `isStrict`
    /// one with a greater step. Empty if there is none.
    std::optional<Chain> find(int from, int to, Steps steps, bool isStrict = false);

    /// Returns whether the searches have used up their total of steps. Nothing is found after that.
    bool isExhausted() const { return stepsLeft_ == 0; }

  private:
    struct Edge {
        std::size_t to;
        const Fact* fact;
        bool isDoubtful;
    };
    using Numbers = std::map<exact::Number, std::size_t>; ///< to the node of each
    struct Node {
        int id;
        std::optional<Numbers::const_iterator> number;
        std::vector<Edge> edges;
        bool isReachable = false; ///< whether it has incoming edges or is a number
    };
    /// State of a search: twice the index of a node, plus 1 if the chain to it has a greater step.
    using State = std::size_t;
    /// The step by which a search first reached a state.
    struct Arrival {
        unsigned search = 0; ///< number of the last search that reached the state
        State from = 0;
        const Fact* fact = nullptr;
    };
    using Key = std::tuple<int, Relation, int>;

    static Key keyOf(const Fact& fact);
    std::size_t nodeOf(int id);
    void connect(std::size_t from, std::size_t to, const Fact& fact, bool isDoubtful);
    void visit(State state, State from, const Fact* fact);
    void visitNeighbours(State state, Steps steps, std::size_t end);
    Chain chainTo(State state, State begin) const;

    const TVTypeSys::SymbolicDimsTable& table_;
    std::deque<Fact> edgeFacts_; ///< with stable addresses
    std::set<Key> facts_;        ///< those that are not doubtful
    std::vector<Node> nodes_;
    std::unordered_map<int, std::size_t> nodeOfId_;
    Numbers numbers_;
    std::vector<State> queue_;
    std::vector<Arrival> arrivals_; ///< by state
    unsigned searches_ = 0;
    std::size_t stepsLeft_ = 50'000'000;
};

} // namespace tvtool::dims
