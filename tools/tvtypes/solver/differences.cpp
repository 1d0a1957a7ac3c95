#include "solver/differences.h"

#include <algorithm>
#include <queue>
#include <utility>

namespace tvtool::solver {

void Differences::reserve(Node node) {
    if (node >= potentials_.size()) {
        potentials_.resize(node + 1);
        edgesOf_[Up].resize(node + 1);
        edgesOf_[Down].resize(node + 1);
    }
}

std::optional<std::vector<Reason>> Differences::add(Node greater, Node lesser, const Value& weight,
                                                    Reason reason) {
    reserve(std::max(greater, lesser));
    edges_.push_back({{lesser, greater}, weight, reason});
    edgesOf_[Up][lesser].push_back(edges_.size() - 1);
    edgesOf_[Down][greater].push_back(edges_.size() - 1);
    constexpr std::size_t firstLimit = 16;
    for (std::size_t limit = firstLimit; !work_.isExhausted(); limit *= 2) {
        for (const Direction direction : {Up, Down}) {
            Moves moves;
            const Search result = search(direction, limit, moves);
            if (result == Search::Done) {
                apply(direction, moves);
                trail_.push_back({true, 0, {}});
                return std::nullopt;
            }
            if (result == Search::Cycle) {
                std::vector<Reason> reasons = cycle(direction, moves);
                removeLastEdge();
                return reasons;
            }
        }
    }
    removeLastEdge();
    return std::nullopt;
}

/// Finds the potentials that the last edge changes, or the cycle that it closes.
Differences::Search Differences::search(Direction direction, std::size_t limit, Moves& moves) {
    struct Candidate {
        Value amount;
        Node node;
        bool operator<(const Candidate& other) const { return amount < other.amount; }
    };
    std::priority_queue<Candidate> queue;
    const auto propose = [&](std::size_t index, const Value& change) {
        const Edge& edge = edges_[index];
        const Node node = edge.ends[direction == Up ? 1 : 0];
        // How far the edge is from being satisfied, after the change at its other end.
        const Value amount =
            potentials_[edge.ends[0]] + edge.weight - potentials_[edge.ends[1]] + change;
        if (!(Value{} < amount)) {
            return;
        }
        const auto [known, isNew] = moves.try_emplace(node, Move{amount, index});
        if (isNew || (!known->second.isFinal && known->second.amount < amount)) {
            known->second = {amount, index};
            queue.push({amount, node});
        }
    };
    const std::size_t added = edges_.size() - 1;
    const Node end = edges_[added].ends[direction == Up ? 0 : 1];
    std::size_t steps = 0;
    propose(added, {});
    while (!queue.empty()) {
        const Candidate next = queue.top();
        queue.pop();
        Move& move = moves.at(next.node);
        if (move.isFinal) {
            continue;
        }
        move.isFinal = true;
        if (next.node == end) {
            return Search::Cycle;
        }
        const Value amount = move.amount;
        const std::vector<std::size_t>& edges = edgesOf_[direction][next.node];
        steps += 1 + edges.size();
        if (steps > limit || !work_.charge(10 * (1 + edges.size()))) {
            return Search::Stopped;
        }
        for (const std::size_t edge : edges) {
            propose(edge, amount);
        }
    }
    return Search::Done;
}

void Differences::apply(Direction direction, const Moves& moves) {
    for (const auto& [node, move] : moves) {
        trail_.push_back({false, node, potentials_[node]});
        potentials_[node] += direction == Up ? move.amount : Value{} - move.amount;
    }
}

/// Returns the reasons along the edges that required each move, from the end of the last edge on.
std::vector<Reason> Differences::cycle(Direction direction, const Moves& moves) const {
    const Edge& closing = edges_.back();
    std::vector<Reason> reasons;
    const std::size_t first = direction == Up ? 0 : 1;
    Node node = closing.ends[first];
    do {
        const Edge& edge = edges_[moves.at(node).edge];
        reasons.push_back(edge.reason);
        node = edge.ends[first];
    } while (node != closing.ends[first]);
    return reasons;
}

Value Differences::value(Node node) const {
    if (potentials_.empty()) {
        return {};
    }
    return (node < potentials_.size() ? potentials_[node] : Value{}) - potentials_[zero];
}

void Differences::removeLastEdge() {
    const Edge& edge = edges_.back();
    edgesOf_[Up][edge.ends[0]].pop_back();
    edgesOf_[Down][edge.ends[1]].pop_back();
    edges_.pop_back();
}

void Differences::undo(std::size_t mark) {
    while (trail_.size() > mark) {
        const Change& change = trail_.back();
        if (change.isEdge) {
            removeLastEdge();
        } else {
            potentials_[change.node] = change.potential;
        }
        trail_.pop_back();
    }
}

} // namespace tvtool::solver
