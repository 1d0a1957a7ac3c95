#include "dims/fact_graph.h"

#include "dims/reading.h"

#include <algorithm>
#include <iterator>

namespace tvtool::dims {

FactGraph::Key FactGraph::keyOf(const Fact& fact) {
    const bool isReversed = fact.relation == Relation::Equal && fact.right < fact.left;
    return isReversed ? Key(fact.right, fact.relation, fact.left)
                      : Key(fact.left, fact.relation, fact.right);
}

void FactGraph::add(const Fact& fact, bool isDoubtful) {
    if (!isDoubtful) {
        facts_.insert(keyOf(fact));
    }
    const Fact& kept = edgeFacts_.emplace_back(fact);
    const std::size_t left = nodeOf(fact.left);
    const std::size_t right = nodeOf(fact.right);
    connect(left, right, kept, isDoubtful);
    if (fact.relation == Relation::Equal) {
        connect(right, left, kept, isDoubtful);
    }
}

std::size_t FactGraph::nodeOf(int id) {
    const auto [entry, isNew] = nodeOfId_.try_emplace(id, nodes_.size());
    if (isNew) {
        nodes_.push_back({id, {}, {}, false});
        if (const std::optional<exact::Number> number = numberOf(table_, id)) {
            nodes_.back().number = numbers_.emplace(*number, entry->second).first;
            nodes_.back().isReachable = true;
        }
    }
    return entry->second;
}

void FactGraph::connect(std::size_t from, std::size_t to, const Fact& fact, bool isDoubtful) {
    nodes_[from].edges.push_back({to, &fact, isDoubtful});
    nodes_[to].isReachable = true;
}

std::optional<Chain> FactGraph::find(int from, int to, Steps steps, bool isStrict) {
    const State begin = 2 * nodeOf(from);
    const std::size_t end = nodeOf(to);
    // Saves the search for most questions, whose sizes are in no fact.
    if (!nodes_[end].isReachable) {
        return std::nullopt;
    }
    ++searches_;
    arrivals_.resize(2 * nodes_.size());
    queue_.clear();
    visit(begin, begin, nullptr);
    for (std::size_t next = 0; next < queue_.size(); ++next) {
        const State state = queue_[next];
        if (state / 2 == end && (!isStrict || state % 2 == 1)) {
            return chainTo(state, begin);
        }
        visitNeighbours(state, steps, end);
    }
    return std::nullopt;
}

void FactGraph::visitNeighbours(State state, Steps steps, std::size_t end) {
    const Node& node = nodes_[state / 2];
    for (const Edge& edge : node.edges) {
        const bool isEqual = edge.fact->relation == Relation::Equal;
        if (steps == Steps::All ? !edge.isDoubtful : isEqual == (steps == Steps::Equal)) {
            visit(2 * edge.to + (isEqual ? state % 2 : 1), state, edge.fact);
        }
    }
    if (steps != Steps::All || !node.number) {
        return;
    }
    // Lesser numbers: the end, if it is one, and the next one below.
    const Numbers::const_iterator number = *node.number;
    const auto& endNumber = nodes_[end].number;
    if (endNumber && (*endNumber)->first < number->first) {
        visit(2 * end + 1, state, nullptr);
    }
    if (number != numbers_.begin()) {
        visit(2 * std::prev(number)->second + 1, state, nullptr);
    }
}

void FactGraph::visit(State state, State from, const Fact* fact) {
    if (stepsLeft_ == 0) {
        return;
    }
    --stepsLeft_;
    if (arrivals_[state].search != searches_) {
        arrivals_[state] = {searches_, from, fact};
        queue_.push_back(state);
    }
}

Chain FactGraph::chainTo(State state, State begin) const {
    Chain chain;
    while (state != begin) {
        const Arrival& arrival = arrivals_[state];
        const Step step{arrival.fact, nodes_[arrival.from / 2].id, nodes_[state / 2].id};
        // Steps between numbers are joined into one.
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
