// Reference model of relations between sizes, simple and slow: searches all lesser sizes.
#pragma once

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

class TVBlock;

namespace reference {

using Blocks = std::set<const TVBlock*>;

struct Relations {
    std::map<int, std::set<int>> members, lesser;
    std::map<int, int> parents;
    std::map<int, Blocks> equalBlocks, greaterBlocks;
    std::map<const TVBlock*, std::set<std::string>> stated; // texts, which the user of this adds

    bool isGreater(int a, int b) const {
        std::set<int> reached{a};
        for (std::vector<int> open{a}; !open.empty();) {
            const auto found = lesser.find(open.back());
            open.pop_back();
            if (found == lesser.end()) {
                continue;
            }
            for (const int next : found->second) {
                if (next == b) {
                    return true;
                }
                if (reached.insert(next).second) {
                    open.push_back(next);
                }
            }
        }
        return false;
    }
    int root(int a) const { return parents.at(a) == a ? a : root(parents.at(a)); }
    bool isEqual(int a, int b) const {
        return parents.count(a) != 0 && parents.count(b) != 0 && root(a) == root(b);
    }

    // Adds a relation, or returns the kind of the contradiction, as message ids end. Swaps the
    // sizes of an equality if the second is the greater one, as the message has them.
    std::string add(bool equality, int& a, int& b, const TVBlock* block) {
        if (a == b) {
            return "";
        }
        if (equality && isGreater(b, a)) {
            std::swap(a, b);
        }
        const bool equal = !equality && isEqual(a, b);
        if (equal || (equality ? isGreater(a, b) : isGreater(b, a))) {
            return equality ? "NotEqual" : equal ? "Equal" : "GreaterThan";
        }
        if (equality) {
            addEqual(a, b, block);
        } else {
            lesser[a].insert(b);
            insert(greaterBlocks[a], block);
        }
        return "";
    }

  private:
    static void insert(Blocks& blocks, const TVBlock* block) {
        if (block != nullptr) {
            blocks.insert(block);
        }
    }
    void addEqual(int a, int b, const TVBlock* block) {
        const auto [low, high] = std::minmax(a, b);
        if (parents.try_emplace(low, low).second) {
            insert(equalBlocks[low], block);
        }
        const int above = parents[low];
        members[above].insert(high);
        const auto [place, isNew] = parents.try_emplace(high, above);
        const int other = place->second;
        if (isNew) {
            insert(equalBlocks[high], block);
        } else if (other > above) {
            parents[other] = parents[high] = above;
            members[above].insert(other);
        }
    }
};

} // namespace reference
