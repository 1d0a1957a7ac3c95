#include "symbolicdims/ordering.h"

#include <boost/unordered/unordered_flat_set.hpp>

#include <cassert>
#include <queue>
#include <tuple>

namespace TVTypeSys {

/// Base of searches in one direction of the edges. A height is a level with the sign of the
/// direction, so heights increase along the search.
struct OrderingSearch {
    using Index = Ordering::Index;
    using Indices = Ordering::Indices;
    using Level = Ordering::Level;
    using Size = Ordering::Size;

    struct Direction {
        Indices Size::*next;
        Indices Size::*back;
        int sign;
    };
    static constexpr Direction up{&Size::greater, &Size::lesser, 1};
    static constexpr Direction down{&Size::lesser, &Size::greater, -1};

    OrderingSearch(const std::vector<Size>& all, const Direction& towards)
        : sizes(all), direction(towards) {}

    Level height(Index i) const { return direction.sign * sizes[i].level; }
    const Indices& next(Index i) const { return sizes[i].*direction.next; }
    const Indices& back(Index i) const { return sizes[i].*direction.back; }

    const std::vector<Size>& sizes;
    Direction direction;
    std::size_t cost = 0;
    bool found = false;

    class Reachability;
    class Relabelling;

    /// Interleaves two searches: advances the one whose cost after its next step is the lower,
    /// until one is complete, and returns that one.
    template <class Search>
    static Search& firstComplete(Search& a, Search& b) {
        while (!a.isComplete() && !b.isComplete()) {
            (a.nextCost() <= b.nextCost() ? a : b).step();
        }
        return a.isComplete() ? a : b;
    }
};

/// Depth-first search for a path from one size to another. Sizes beyond the height of the goal are
/// not visited.
class OrderingSearch::Reachability : public OrderingSearch {
  public:
    Reachability(const std::vector<Size>& all, const Direction& towards, Index from, Index to)
        : OrderingSearch(all, towards), goal_(to), waiting_{from} {}

    bool isComplete() const { return found || waiting_.empty(); }
    std::size_t nextCost() const { return cost + 1 + next(waiting_.back()).size(); }

    void step() {
        cost = nextCost();
        const Index from = waiting_.back();
        waiting_.pop_back();
        for (const Index i : next(from)) {
            found = found || i == goal_;
            if (height(i) < height(goal_) && isFirstVisit(i)) {
                waiting_.push_back(i);
            }
        }
    }

  private:
    bool isFirstVisit(Index i) { return back(i).size() == 1 || seen_.insert(i).second; }

    Index goal_;
    std::vector<Index> waiting_;
    /// Visited sizes, except those with a single incoming edge, which are reached once only.
    boost::unordered_flat_set<Index> seen_;
};

/// Computes the relabelling that a new edge needs so that `from` gets a greater height than `past`,
/// or detects a cycle: `past` is reachable from `from`. Sizes are processed in the order of their
/// heights, from a priority queue, so that the target height of each is final when it is processed.
class OrderingSearch::Relabelling : public OrderingSearch {
  public:
    Relabelling(const std::vector<Size>& all, const Direction& towards, Index from, Index past)
        : OrderingSearch(all, towards), past_(past) {
        waiting_.push({height(from), from, height(past) + 1});
    }

    bool isComplete() const { return found || waiting_.empty(); }
    std::size_t nextCost() const { return cost + 1 + next(waiting_.top().size).size(); }

    void step() {
        cost = nextCost();
        const Target target = waiting_.top();
        waiting_.pop();
        if (!relabelled_.empty() && relabelled_.back().size == target.size) {
            return; // a lower target of the same size
        }
        relabelled_.push_back(target);
        for (const Index i : next(target.size)) {
            found = found || i == past_;
            if (height(i) <= target.newHeight) {
                waiting_.push({height(i), i, target.newHeight + 1});
            }
        }
    }

    void applyTo(std::vector<Size>& all) const noexcept {
        for (const Target& target : relabelled_) {
            all[target.size].level = direction.sign * target.newHeight;
        }
    }

  private:
    struct Target {
        Level height;
        Index size;
        Level newHeight;

        /// The queue returns the greatest element: the lowest size, and of its targets the highest.
        bool operator<(const Target& other) const {
            return std::tie(other.height, other.size, newHeight) <
                   std::tie(height, size, other.newHeight);
        }
    };

    Index past_;
    std::priority_queue<Target> waiting_;
    std::vector<Target> relabelled_;
};

bool Ordering::isGreater(int greater, int lesser) const {
    const auto from = indices_.find(greater);
    const auto to = indices_.find(lesser);
    if (from == indices_.end() || to == indices_.end() ||
        sizes_[from->second].level <= sizes_[to->second].level) {
        return false;
    }
    OrderingSearch::Reachability down(sizes_, OrderingSearch::down, from->second, to->second);
    OrderingSearch::Reachability up(sizes_, OrderingSearch::up, to->second, from->second);
    return OrderingSearch::firstComplete(down, up).found;
}

bool Ordering::reorder(int greater, int lesser) {
    const auto above = indices_.find(greater);
    const auto below = indices_.find(lesser);
    if (above == indices_.end() || below == indices_.end() ||
        sizes_[above->second].level > sizes_[below->second].level) {
        return true;
    }
    OrderingSearch::Relabelling raised(sizes_, OrderingSearch::up, above->second, below->second);
    OrderingSearch::Relabelling lowered(sizes_, OrderingSearch::down, below->second, above->second);
    const OrderingSearch::Relabelling& relabelling = OrderingSearch::firstComplete(raised, lowered);
    if (relabelling.found) {
        return false;
    }
    relabelling.applyTo(sizes_);
    return true;
}

void Ordering::add(int greater, int lesser) {
    // A new size gets a level that requires no relabelling.
    const auto known = indices_.find(lesser);
    const Index above =
        findOrAdd(greater, known == indices_.end() ? 0 : sizes_[known->second].level + 1);
    const Index below = findOrAdd(lesser, sizes_[above].level - 1);
    assert(sizes_[above].level > sizes_[below].level);
    sizes_[above].lesser.push_back(below);
    try {
        sizes_[below].greater.push_back(above);
    } catch (...) {
        sizes_[above].lesser.pop_back();
        throw;
    }
}

void Ordering::removeLast(int greater, int lesser) noexcept {
    sizes_[indices_.find(greater)->second].lesser.pop_back();
    sizes_[indices_.find(lesser)->second].greater.pop_back();
}

Ordering::Index Ordering::findOrAdd(int id, Level level) {
    const auto [found, isNew] = indices_.try_emplace(id, static_cast<Index>(sizes_.size()));
    if (isNew) {
        try {
            sizes_.push_back({level, {}, {}});
        } catch (...) {
            indices_.erase(found);
            throw;
        }
    }
    return found->second;
}

} // namespace TVTypeSys
