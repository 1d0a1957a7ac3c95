#include "solver/reasons.h"

namespace tvtool::solver {

Reason Reasons::fact(FactIndex fact) {
    nodes_.push_back({fact, none, none});
    return static_cast<Reason>(nodes_.size() - 1);
}

Reason Reasons::derived(Reason first, Reason second) {
    if (first == second) {
        return first;
    }
    nodes_.push_back({0, first, second});
    return static_cast<Reason>(nodes_.size() - 1);
}

Reason Reasons::derived(const std::vector<Reason>& parents) {
    Reason result = parents.front();
    for (const Reason parent : parents) {
        result = derived(result, parent);
    }
    return result;
}

std::set<FactIndex> Reasons::facts(Reason reason) const {
    std::set<FactIndex> facts;
    std::vector<bool> isVisited(nodes_.size());
    std::vector<Reason> pending{reason};
    while (!pending.empty()) {
        const Reason next = pending.back();
        pending.pop_back();
        if (isVisited[next]) {
            continue;
        }
        isVisited[next] = true;
        const Node& node = nodes_[next];
        if (node.first == none) {
            facts.insert(node.fact);
        } else {
            pending.push_back(node.first);
            pending.push_back(node.second);
        }
    }
    return facts;
}

} // namespace tvtool::solver
