// The facts of random scripts beside a plain reading of the same rules, which walks maps and
// recurs; and so many facts that this would not end.
#include "symbolicdims/symbolicdims_fixture.h"

#include <algorithm>
#include <map>
#include <numeric>
#include <random>
#include <set>

namespace TVTypeSys {
namespace {

using Blocks = std::set<const TVBlock*>;
using Fact = std::pair<std::string, Blocks>;

struct PlainFacts {
    std::map<int, std::set<int>> members, lesser;
    std::map<int, int> parents;
    std::map<int, Blocks> equalBlocks, greaterBlocks;

    bool isGreater(int a, int b) const {
        const auto found = lesser.find(a);
        return found != lesser.end() &&
               std::any_of(found->second.begin(), found->second.end(),
                           [&](int x) { return x == b || isGreater(x, b); });
    }

    int root(int a) const { return parents.at(a) == a ? a : root(parents.at(a)); }
    bool isEqual(int a, int b) const {
        return parents.count(a) != 0 && parents.count(b) != 0 && root(a) == root(b);
    }

    static void note(Blocks& blocks, const TVBlock* block) {
        if (block != nullptr) {
            blocks.insert(block);
        }
    }
    void addEqual(int a, int b, const TVBlock* block) {
        const auto [low, high] = std::minmax(a, b);
        if (parents.try_emplace(low, low).second) {
            note(equalBlocks[low], block);
        }
        const int above = parents[low];
        members[above].insert(high);
        const auto [place, isNew] = parents.try_emplace(high, above);
        const int other = place->second;
        if (isNew) {
            note(equalBlocks[high], block);
        } else if (other > above) {
            parents[other] = parents[high] = above;
            members[above].insert(other);
        }
    }
};

class SymbolicConstraintsTest : public SymbolicTest {
  protected:
    int among(int first, int last) { return std::uniform_int_distribution(first, last)(random); }

    // What becomes of a new fact: it is entered, or refused.
    std::string enter(bool equality, int a, int b, const TVBlock* block) {
        if (a == b) {
            return "accepted";
        }
        if (equality && plain.isGreater(b, a)) {
            std::swap(a, b);
        }
        const bool equal = !equality && plain.isEqual(a, b);
        if (equal || (equality ? plain.isGreater(a, b) : plain.isGreater(b, a))) {
            const char* message = equality ? "NotEqual" : equal ? "Equal" : "GreaterThan";
            return "InconsistentSymbolicDimension" + std::string(message) + "(" + text(a) + ", " +
                   text(b) + ", " + text(b) + ")";
        }
        if (equality) {
            plain.addEqual(a, b, block);
        } else {
            plain.lesser[a].insert(b);
            PlainFacts::note(plain.greaterBlocks[a], block);
        }
        stated[block].insert(text(a) + (equality ? "==" : ">") + text(b));
        return "accepted";
    }

    void expectLists() {
        std::multiset<Fact> facts;
        for (const auto& [first, all] : plain.members) {
            for (const int second : all) {
                facts.insert({text(first) + "==" + text(second), plain.equalBlocks[second]});
            }
        }
        for (const auto& [first, all] : plain.lesser) {
            for (const int second : all) {
                facts.insert({text(first) + ">" + text(second), plain.greaterBlocks[first]});
            }
        }
        std::vector<SymbolicDimsConstraint> constraints(3);
        table.getSymbolicDimsConstraints(constraints);
        std::multiset<Fact> listed;
        for (const SymbolicDimsConstraint& fact : constraints) {
            listed.insert({text(fact.constraintId), {fact.blocks.begin(), fact.blocks.end()}});
        }
        EXPECT_EQ(listed, facts);
        std::list<std::pair<const int, const int>> pairs(3, {1, 1}), greater(3, {1, 1});
        table.getEquivalentSymbolicDims(pairs);
        const std::size_t equal = pairs.size();
        table.getGreaterThanSymbolicDims(greater);
        pairs.splice(pairs.end(), greater);
        std::vector<int> ids(3);
        table.getSymbolicDimsConstraints(ids);
        ASSERT_EQ(pairs.size(), ids.size());
        for (std::size_t i = 0; i < ids.size(); ++i, pairs.pop_front()) {
            EXPECT_EQ(ids[i], constraints[i].constraintId);
            EXPECT_EQ(text(ids[i]), text(pairs.front().first) + (i < equal ? "==" : ">") +
                                        text(pairs.front().second));
        }
    }

    void expectBlocks() {
        std::set<std::string> all;
        std::vector<int> ids(3);
        for (int i = 1; i < 5; ++i) {
            table.getSymbolicDimsConstraints(block(i), ids);
            EXPECT_EQ(texts(ids), stated[block(i)]);
            if (i < 3) {
                all.merge(std::set(stated[block(i)]));
            }
        }
        const auto grouped = [](const TVBlock* by) { return by == block(2) ? block(1) : by; };
        table.getSymbolicDimsConstraints(block(1), grouped, ids);
        EXPECT_EQ(texts(ids), all);
    }

    std::set<std::string> texts(const std::vector<int>& ids) {
        EXPECT_TRUE(std::ranges::is_sorted(ids));
        std::set<std::string> all;
        for (const int i : ids) {
            all.insert(text(i));
        }
        return all;
    }

    std::mt19937 random{7};
    PlainFacts plain;
    std::map<const TVBlock*, std::set<std::string>> stated;
};

TEST_F(SymbolicConstraintsTest, AreWhatThePlainReadingSays) {
    int refused = 0;
    for (int script = 0; script < 600; ++script) {
        table.resetToBuiltin();
        plain = {};
        stated.clear();
        std::vector<int> ids{-1};
        for (const char* expression : {"A", "7", "[A,B]", "C", "B", "[2,B]", "D", "[D]", "2*B", "E",
                                       "F", "G", "H", "I", "J", "K"}) {
            ids.push_back(id(expression));
        }
        const int equalities = among(0, 4);
        for (int step = among(1, 90); step > 0; --step) {
            const int first = ids[static_cast<std::size_t>(among(0, 16))];
            const int second = ids[static_cast<std::size_t>(among(0, 16))];
            const int a = table.getSymbolicDims(first).getSize().getId();
            const int b = table.getSymbolicDims(second).getSize().getId();
            const TVBlock* stating = block(among(0, 4));
            const bool equality = among(0, 4) < equalities;
            const std::string outcome = enter(equality, a, b, stating);
            refused += outcome != "accepted";
            EXPECT_REFUSED(outcome, equality
                                        ? table.addEqualRelation(first, second, stating)
                                        : table.addGreaterThanRelation(first, second, stating));
            ASSERT_EQ(table.hasEqualRelation(second, first), plain.isEqual(a, b));
            ASSERT_EQ(table.hasGreaterThanRelation(second, first), plain.isGreater(b, a));
        }
        expectLists();
        expectBlocks();
        ASSERT_FALSE(HasFailure()) << "script " << script;
    }
    EXPECT_GT(refused, 1000);
}

TEST_F(SymbolicConstraintsTest, DoNotCompareNumbers) {
    const int n = id("N");
    for (const int value : {3, 5}) {
        table.addEqualConstraint(n, value, nullptr);
        EXPECT_TRUE(table.hasEqualConstraint(n, value));
    }
    const int m = id("M");
    table.addGreaterThanConstraint(m, 5, nullptr);
    table.addLessThanConstraint(m, 3, nullptr);
    EXPECT_TRUE(table.hasGreaterThanConstraint(m, 5) && table.hasLessThanConstraint(m, 3));
}

TEST_F(SymbolicConstraintsTest, RefuseWhatIsNotThere) {
    const int list = id("[A,B]");
    const int count = table.getNumSymbolicDimss();
    EXPECT_REFUSED("InvalidDataTypeId(99)", table.addEqualRelation(list, 99, block(1)));
    EXPECT_REFUSED("InvalidDataTypeId(-2)", table.hasGreaterThanRelation(list, -2));
    EXPECT_EQ(table.getNumSymbolicDimss(), count);
    table.addEqualRelation(1, 2, block(1));
    std::vector<int> ids{5};
    EXPECT_THROW(table.getSymbolicDimsConstraints(block(1), {}, ids), boost::bad_function_call);
    EXPECT_EQ(ids, std::vector<int>{5});
}

TEST(LongChains, AreStatedInAnyOrder) {
    constexpr int last = 100'000;
    std::vector<int> ascending(last);
    std::iota(ascending.begin(), ascending.end(), 0);
    std::vector<std::vector<int>> orders(4, ascending);
    std::ranges::reverse(orders[1]);
    std::ranges::shuffle(orders[2], std::mt19937(3));
    // Pairs, then what joins them.
    std::stable_partition(orders[3].begin(), orders[3].end(), [](int i) { return i % 2 == 0; });
    for (const std::vector<int>& order : orders) {
        SymbolicDimsTable table;
        for (int i = 0; i <= last; ++i) {
            table.registerSymbolicDims(i);
        }
        for (const int i : order) {
            table.addGreaterThanRelation(1 + i, 2 + i, nullptr);
        }
        EXPECT_TRUE(table.hasGreaterThanConstraint(1, last));
        EXPECT_NE(refusalOf([&] { table.addEqualConstraint(1, last, nullptr); }), "accepted");
        EXPECT_NE(refusalOf([&] { table.addLessThanConstraint(1, last, nullptr); }), "accepted");
    }
}

TEST(LongChains, ForkAndMeet) {
    SymbolicDimsTable table;
    for (const int ladder : {0, 1000}) {
        for (int i = ladder; i < ladder + 180; i += 3) {
            for (const int side : {i + 1, i + 2}) {
                table.addGreaterThanConstraint(table.registerSymbolicDims(i), side, nullptr);
                table.addLessThanConstraint(table.registerSymbolicDims(i + 3), side, nullptr);
            }
        }
    }
    const int first = table.registerSymbolicDims(0);
    EXPECT_TRUE(table.hasGreaterThanConstraint(first, 180));
    EXPECT_FALSE(table.hasGreaterThanConstraint(first, 1180));
    EXPECT_NE(refusalOf([&] { table.addLessThanConstraint(first, 180, nullptr); }), "accepted");
}

TEST(LongChains, AreWovenTogether) {
    SymbolicDimsTable table;
    std::vector<std::pair<int, int>> facts;
    for (int i = 0; i < 1000; ++i) {
        for (int lesser = std::max(0, i - 5); lesser < i; ++lesser) {
            facts.emplace_back(table.registerSymbolicDims(i), table.registerSymbolicDims(lesser));
        }
    }
    std::ranges::shuffle(facts, std::mt19937(3));
    for (const auto& [greater, lesser] : facts) {
        table.addGreaterThanRelation(greater, lesser, nullptr);
    }
    for (const auto& [greater, lesser] : facts) {
        EXPECT_FALSE(table.hasGreaterThanRelation(lesser, greater));
    }
}

} // namespace
} // namespace TVTypeSys
