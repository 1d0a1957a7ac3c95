#include "symbolicdims/ordering.h"

#include <boost/unordered/unordered_flat_set.hpp>

#include <queue>
#include <tuple>

namespace TVTypeSys {

/// What searches up and down have in common. A height is a level, seen in the direction of the
/// search, so that it grows along the facts.
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
    std::size_t spent = 0;
    bool found = false;

    class Walk;
    class Move;

    /// Goes on with the search whose next step leaves it the cheaper one, until one is done.
    template <class Search>
    static Search& firstDone(Search& a, Search& b) {
        while (!a.isDone() && !b.isDone()) {
            (a.costOfNext() <= b.costOfNext() ? a : b).step();
        }
        return a.isDone() ? a : b;
    }
};

/// Looks for a size among those that lie beyond another.
class OrderingSearch::Walk : public OrderingSearch {
  public:
    Walk(const std::vector<Size>& all, const Direction& towards, Index from, Index to)
        : OrderingSearch(all, towards), goal_(to), waiting_{from} {}

    bool isDone() const { return found || waiting_.empty(); }
    std::size_t costOfNext() const { return spent + 1 + next(waiting_.back()).size(); }

    void step() {
        spent = costOfNext();
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
    /// Without those that only one fact leads to.
    boost::unordered_flat_set<Index> seen_;
};

/// Finds what has to move, and how far, so that a size gets beyond another; or that the other lies
/// beyond it. Sizes are taken in the order of their heights, so that each is taken once all that
/// push it are known.
class OrderingSearch::Move : public OrderingSearch {
  public:
    Move(const std::vector<Size>& all, const Direction& towards, Index from, Index past)
        : OrderingSearch(all, towards), past_(past) {
        waiting_.push({height(from), from, height(past) + 1});
    }

    bool isDone() const { return found || waiting_.empty(); }
    std::size_t costOfNext() const { return spent + 1 + next(waiting_.top().size).size(); }

    void step() {
        spent = costOfNext();
        const Pushed pushed = waiting_.top();
        waiting_.pop();
        if (!moved_.empty() && moved_.back().size == pushed.size) {
            return;
        }
        moved_.push_back(pushed);
        for (const Index i : next(pushed.size)) {
            found = found || i == past_;
            if (height(i) <= pushed.target) {
                waiting_.push({height(i), i, pushed.target + 1});
            }
        }
    }

    void applyTo(std::vector<Size>& all) const noexcept {
        for (const Pushed& pushed : moved_) {
            all[pushed.size].level = direction.sign * pushed.target;
        }
    }

  private:
    struct Pushed {
        Level height;
        Index size;
        Level target;

        /// The queue gives the greatest: the lowest size, and of its pushes the farthest.
        bool operator<(const Pushed& other) const {
            return std::tie(other.height, other.size, target) <
                   std::tie(height, size, other.target);
        }
    };

    Index past_;
    std::priority_queue<Pushed> waiting_;
    std::vector<Pushed> moved_;
};

bool Ordering::isGreater(int greater, int lesser) const {
    const auto from = places_.find(greater);
    const auto to = places_.find(lesser);
    if (from == places_.end() || to == places_.end() ||
        sizes_[from->second].level <= sizes_[to->second].level) {
        return false;
    }
    OrderingSearch::Walk down(sizes_, OrderingSearch::down, from->second, to->second);
    OrderingSearch::Walk up(sizes_, OrderingSearch::up, to->second, from->second);
    return OrderingSearch::firstDone(down, up).found;
}

bool Ordering::makeRoom(int greater, int lesser) {
    const auto above = places_.find(greater);
    const auto below = places_.find(lesser);
    if (above == places_.end() || below == places_.end() ||
        sizes_[above->second].level > sizes_[below->second].level) {
        return true;
    }
    OrderingSearch::Move raised(sizes_, OrderingSearch::up, above->second, below->second);
    OrderingSearch::Move lowered(sizes_, OrderingSearch::down, below->second, above->second);
    const OrderingSearch::Move& made = OrderingSearch::firstDone(raised, lowered);
    if (made.found) {
        return false;
    }
    made.applyTo(sizes_);
    return true;
}

void Ordering::add(int greater, int lesser) {
    // A new size gets a level that needs no other to move.
    const auto known = places_.find(lesser);
    const Index above =
        place(greater, known == places_.end() ? 0 : sizes_[known->second].level + 1);
    const Index below = place(lesser, sizes_[above].level - 1);
    sizes_[above].lesser.push_back(below);
    try {
        sizes_[below].greater.push_back(above);
    } catch (...) {
        sizes_[above].lesser.pop_back();
        throw;
    }
}

Ordering::Index Ordering::place(int id, Level level) {
    const auto [found, isNew] = places_.try_emplace(id, static_cast<Index>(sizes_.size()));
    if (isNew) {
        try {
            sizes_.push_back({level, {}, {}});
        } catch (...) {
            places_.erase(found);
            throw;
        }
    }
    return found->second;
}

} // namespace TVTypeSys
