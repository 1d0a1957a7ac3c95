/// \file
/// What facts tell of each other.
#pragma once

#include "dims/block.h"
#include "dims/number.h"

#include <tvtypes/symbolicdims.h>

#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <optional>
#include <set>
#include <tuple>
#include <unordered_map>
#include <vector>

namespace tvtool::dims {

enum class Relation { Equal, Greater };

/// One size equals another, or is greater; they are ids of simplified sizes that differ.
struct Fact {
    int left = 0;
    Relation relation = Relation::Equal;
    int right = 0;
    const TVBlock* block = nullptr;
    std::uint64_t line = 0;
};

/// A fact on the way from one size to another, or that one number is greater than the next.
struct Step {
    const Fact* fact = nullptr; ///< null between numbers
    int greater = 0;            ///< between numbers
    int lesser = 0;
};
using Chain = std::vector<Step>;

/// Which ways there are. Greater leads from the greater to the lesser size only.
enum class Ways {
    Equal,
    Greater,
    All ///< both, and from greater to lesser numbers
};

/// The facts as ways between sizes. The library knows whether there is a way by facts of one kind;
/// this finds which one, and ways by facts of both kinds.
class FactGraph {
  public:
    explicit FactGraph(const TVTypeSys::SymbolicDimsTable& table) : table_(table) {}

    /// All does not lead over a `doubtful` fact, so that one contradiction does not give rise to
    /// others.
    void add(const Fact& fact, bool isDoubtful);

    /// Whether the fact was added before, and not as a doubtful one.
    bool isKnown(const Fact& fact) const { return known_.contains(keyOf(fact)); }

    /// A shortest way from one size to another one; with `isStrict` not by equal facts alone. Empty
    /// if there is none.
    std::optional<Chain> find(int from, int to, Ways ways, bool isStrict = false);

    /// Whether the searches have taken too many steps, so that they find nothing any more.
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
        bool isReached = false; ///< whether an edge leads here, or may by numbers
    };
    /// A node, and whether the way there is strict: the place in the two vectors below.
    using State = std::size_t;
    struct Arrival {
        unsigned search = 0; ///< the last one that came here
        State from = 0;
        const Fact* fact = nullptr;
    };
    class Search;
    using Key = std::tuple<int, Relation, int>;

    static Key keyOf(const Fact& fact);
    std::size_t nodeOf(int id);
    void connect(std::size_t from, std::size_t to, const Fact& fact, bool isDoubtful);
    Chain chainTo(State state, State begin) const;

    const TVTypeSys::SymbolicDimsTable& table_;
    std::deque<Fact> facts_;
    std::set<Key> known_;
    std::vector<Node> nodes_;
    std::unordered_map<int, std::size_t> nodeOfId_;
    Numbers numbers_;
    std::vector<Arrival> arrivals_; ///< by state
    unsigned searches_ = 0;
    std::size_t stepsLeft_ = 50'000'000;
};

} // namespace tvtool::dims
