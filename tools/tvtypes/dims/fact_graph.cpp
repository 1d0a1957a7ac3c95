#include "dims/fact_graph.h"

#include <algorithm>
#include <iterator>

namespace tvtool::dims {

/// One search, breadth first.
class FactGraph::Search {
  public:
    Search(FactGraph& graph, Ways ways, std::size_t to) : graph_(graph), ways_(ways), to_(to) {
        ++graph_.searches_;
        graph_.arrivals_.resize(2 * graph_.nodes_.size());
    }

    /// The state in which the end is reached first.
    std::optional<State> run(State begin, bool isStrict) {
        enter(begin, begin, nullptr);
        for (std::size_t next = 0; next < queue_.size(); ++next) {
            const State state = queue_[next];
            if (state / 2 == to_ && (!isStrict || state % 2 == 1)) {
                return state;
            }
            leave(state);
        }
        return std::nullopt;
    }

  private:
    void leave(State state) {
        const Node& node = graph_.nodes_[state / 2];
        for (const Edge& edge : node.edges) {
            const bool isEqual = edge.fact->relation == Relation::Equal;
            if (ways_ == Ways::All ? !edge.isDoubtful : isEqual == (ways_ == Ways::Equal)) {
                enter(2 * edge.to + (isEqual ? state % 2 : 1), state, edge.fact);
            }
        }
        if (ways_ == Ways::All && node.number) {
            leaveNumber(*node.number, state);
        }
    }

    /// To the next lesser number, and to the end if this is one.
    void leaveNumber(Numbers::const_iterator number, State state) {
        const auto& end = graph_.nodes_[to_].number;
        if (end && (*end)->first < number->first) {
            enter(2 * to_ + 1, state, nullptr);
        }
        if (number != graph_.numbers_.begin()) {
            enter(2 * std::prev(number)->second + 1, state, nullptr);
        }
    }

    void enter(State state, State from, const Fact* fact) {
        Arrival& arrival = graph_.arrivals_[state];
        if (graph_.stepsLeft_ > 0) {
            --graph_.stepsLeft_;
            if (arrival.search != graph_.searches_) {
                arrival = {graph_.searches_, from, fact};
                queue_.push_back(state);
            }
        }
    }

    FactGraph& graph_;
    Ways ways_;
    std::size_t to_;
    std::vector<State> queue_;
};

FactGraph::Key FactGraph::keyOf(const Fact& fact) {
    const bool isTurned = fact.relation == Relation::Equal && fact.right < fact.left;
    return isTurned ? Key(fact.right, fact.relation, fact.left)
                    : Key(fact.left, fact.relation, fact.right);
}

void FactGraph::add(const Fact& fact, bool isDoubtful) {
    if (!isDoubtful) {
        known_.insert(keyOf(fact));
    }
    const Fact& kept = facts_.emplace_back(fact);
    const std::size_t left = nodeOf(fact.left);
    const std::size_t right = nodeOf(fact.right);
    connect(left, right, kept, isDoubtful);
    if (fact.relation == Relation::Equal) {
        connect(right, left, kept, isDoubtful);
    }
}

std::optional<Chain> FactGraph::find(int from, int to, Ways ways, bool isStrict) {
    const std::size_t begin = nodeOf(from);
    const std::size_t end = nodeOf(to);
    // Most sizes are new when they are asked for.
    if (!nodes_[end].isReached) {
        return std::nullopt;
    }
    const std::optional<State> state = Search(*this, ways, end).run(2 * begin, isStrict);
    return state ? std::optional(chainTo(*state, 2 * begin)) : std::nullopt;
}

std::size_t FactGraph::nodeOf(int id) {
    const auto [entry, isNew] = nodeOfId_.try_emplace(id, nodes_.size());
    if (isNew) {
        nodes_.push_back({id, {}, {}, false});
        if (const std::optional<exact::Number> number = numberOf(table_, id)) {
            nodes_.back().number = numbers_.emplace(*number, entry->second).first;
            nodes_.back().isReached = true;
        }
    }
    return entry->second;
}

void FactGraph::connect(std::size_t from, std::size_t to, const Fact& fact, bool isDoubtful) {
    nodes_[from].edges.push_back({to, &fact, isDoubtful});
    nodes_[to].isReached = true;
}

Chain FactGraph::chainTo(State state, State begin) const {
    Chain chain;
    while (state != begin) {
        const Arrival& arrival = arrivals_[state];
        const Step step{arrival.fact, nodes_[arrival.from / 2].id, nodes_[state / 2].id};
        if (step.fact == nullptr && !chain.empty() && chain.back().fact == nullptr) {
            chain.back().greater = step.greater;
        } else {
            chain.push_back(step);
        }
        state = arrival.from;
    }
    std::ranges::reverse(chain);
    return chain;
}

} // namespace tvtool::dims
