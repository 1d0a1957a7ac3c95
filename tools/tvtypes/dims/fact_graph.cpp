#include "dims/fact_graph.h"

#include <algorithm>

namespace tvtool::dims {

void FactGraph::add(const Fact& fact) {
    const std::size_t left = nodeOf(fact.left);
    const std::size_t right = nodeOf(fact.right);
    edges_[left].push_back({right, &fact});
    if (fact.relation == Relation::Equal) {
        edges_[right].push_back({left, &fact});
    }
}

std::size_t FactGraph::nodeOf(int id) {
    const auto [entry, isNew] = nodeOfId_.try_emplace(id, edges_.size());
    if (isNew) {
        edges_.emplace_back();
        arrivals_.emplace_back();
    }
    return entry->second;
}

std::optional<Chain> FactGraph::find(int from, int to, Relation relation) {
    const std::size_t begin = nodeOf(from);
    const std::size_t end = nodeOf(to);
    std::optional<Chain> chain = find(begin, end, relation, false);
    return chain ? chain : find(begin, end, relation, true);
}

std::optional<Chain> FactGraph::find(std::size_t from, std::size_t to, Relation relation,
                                     bool withDoubtful) {
    ++searches_;
    queue_.assign(1, from);
    arrivals_[from] = {searches_, from, nullptr};
    for (std::size_t next = 0; next < queue_.size(); ++next) {
        const std::size_t node = queue_[next];
        if (node == to) {
            return chainTo(node, from);
        }
        for (const Edge& edge : edges_[node]) {
            if (stepsLeft_ == 0) {
                return std::nullopt;
            }
            --stepsLeft_;
            const bool isUsable =
                edge.fact->relation == relation && (withDoubtful || !edge.fact->isDoubtful);
            if (isUsable && arrivals_[edge.to].search != searches_) {
                arrivals_[edge.to] = {searches_, node, edge.fact};
                queue_.push_back(edge.to);
            }
        }
    }
    return std::nullopt;
}

Chain FactGraph::chainTo(std::size_t node, std::size_t begin) const {
    Chain chain;
    while (node != begin) {
        chain.push_back(arrivals_[node].fact);
        node = arrivals_[node].from;
    }
    std::ranges::reverse(chain);
    return chain;
}

} // namespace tvtool::dims
