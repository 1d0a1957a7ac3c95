// Relations of random scripts against a reference model, and graphs on which
// an exhaustive search would not end.
#include "support/random_seed.h"
#include "symbolicdims/relations_reference.h"
#include "symbolicdims/symbolicdims_fixture.h"

#include <algorithm>
#include <map>
#include <numeric>
#include <random>
#include <set>

namespace TVTypeSys {
namespace {

using reference::Blocks;

class SymbolicConstraintsTest : public SymbolicTest {
  protected:
    int uniform(int first, int last) { return std::uniform_int_distribution(first, last)(random); }

    // Adds a relation to the model and returns the expected outcome.
    std::string add(bool equality, int a, int b, const TVBlock* block) {
        const std::string message = model.add(equality, a, b, block);
        if (!message.empty()) {
            return "InconsistentSymbolicDimension" + message + "(" + text(a) + ", " + text(b) +
                   ", " + text(b) + ")";
        }
        if (a != b) {
            model.stated[block].insert(text(a) + (equality ? "==" : ">") + text(b));
        }
        return "no error";
    }

    void expectLists() {
        std::multiset<std::pair<std::string, Blocks>> expected, listed;
        for (const auto& [first, all] : model.members) {
            for (const int second : all) {
                expected.insert({text(first) + "==" + text(second), model.equalBlocks[second]});
            }
        }
        for (const auto& [first, all] : model.lesser) {
            for (const int second : all) {
                expected.insert({text(first) + ">" + text(second), model.greaterBlocks[first]});
            }
        }
        std::vector<SymbolicDimsConstraint> constraints(3);
        std::vector<int> ids(3), listedIds;
        table.getSymbolicDimsConstraints(constraints);
        for (const SymbolicDimsConstraint& one : constraints) {
            listed.insert({text(one.constraintId), {one.blocks.begin(), one.blocks.end()}});
            listedIds.push_back(one.constraintId);
        }
        EXPECT_EQ(listed, expected);
        table.getSymbolicDimsConstraints(ids);
        EXPECT_EQ(ids, listedIds);
        std::list<std::pair<const int, const int>> equal(3, {1, 1}), greater(3, {1, 1});
        table.getEquivalentSymbolicDims(equal);
        table.getGreaterThanSymbolicDims(greater);
        std::vector<std::string> pairs, texts;
        for (const auto& [first, second] : equal) {
            pairs.push_back(text(first) + "==" + text(second));
        }
        for (const auto& [first, second] : greater) {
            pairs.push_back(text(first) + ">" + text(second));
        }
        std::ranges::transform(ids, std::back_inserter(texts), [this](int i) { return text(i); });
        EXPECT_EQ(texts, pairs);
    }

    void expectBlocks() {
        std::set<std::string> all;
        std::vector<int> ids(3);
        for (int i = 1; i < 5; ++i) {
            table.getSymbolicDimsConstraints(block(i), ids);
            EXPECT_EQ(texts(ids), model.stated[block(i)]);
            if (i < 3) {
                all.merge(std::set(model.stated[block(i)]));
            }
        }
        const auto grouped = [](const TVBlock* by) { return by == block(2) ? block(1) : by; };
        table.getSymbolicDimsConstraints(block(1), grouped, ids);
        EXPECT_EQ(texts(ids), all);
    }

    std::set<std::string> texts(const std::vector<int>& ids) {
        EXPECT_TRUE(std::ranges::is_sorted(ids));
        std::set<std::string> all;
        std::ranges::transform(ids, std::inserter(all, all.end()),
                               [this](int i) { return text(i); });
        return all;
    }

    std::mt19937 random{randomSeed(7)};
    reference::Relations model;
};

TEST_F(SymbolicConstraintsTest, MatchesReferenceModel) {
    int rejected = 0;
    for (int script = 0; script < 600; ++script) {
        table.resetToBuiltin();
        model = {};
        std::vector<int> ids{-1};
        for (const char* expression : {"A", "7", "[A,B]", "C", "B", "[2,B]", "D", "[D]", "2*B", "E",
                                       "F", "G", "H", "I", "J", "K"}) {
            ids.push_back(id(expression));
        }
        const int equalities = uniform(0, 4);
        for (int step = uniform(1, 90); step > 0; --step) {
            const int first = ids[static_cast<std::size_t>(uniform(0, 16))];
            const int second = ids[static_cast<std::size_t>(uniform(0, 16))];
            const int a = table.getSymbolicDims(first).getSize().getId();
            const int b = table.getSymbolicDims(second).getSize().getId();
            const TVBlock* stating = block(uniform(0, 4));
            const bool equality = uniform(0, 4) < equalities;
            const std::string outcome = add(equality, a, b, stating);
            rejected += outcome != "no error";
            EXPECT_ERROR(outcome, equality ? table.addEqualRelation(first, second, stating)
                                           : table.addGreaterThanRelation(first, second, stating));
            ASSERT_EQ(table.hasEqualRelation(second, first), model.isEqual(a, b));
            ASSERT_EQ(table.hasGreaterThanRelation(second, first), model.isGreater(b, a));
        }
        expectLists();
        expectBlocks();
        ASSERT_FALSE(HasFailure()) << "script " << script;
    }
    EXPECT_GT(rejected, 1000);
}

TEST_F(SymbolicConstraintsTest, ComparesIdsNotValues) {
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

TEST_F(SymbolicConstraintsTest, RejectsInvalidIds) {
    const int list = id("[A,B]");
    const int count = table.getNumSymbolicDimss();
    EXPECT_ERROR("InvalidDataTypeId(99)", table.addEqualRelation(list, 99, block(1)));
    EXPECT_ERROR("InvalidDataTypeId(-2)", table.hasGreaterThanRelation(list, -2));
    EXPECT_EQ(table.getNumSymbolicDimss(), count);
    table.addEqualRelation(1, 2, block(1));
    std::vector<int> ids{5};
    EXPECT_THROW(table.getSymbolicDimsConstraints(block(1), {}, ids), boost::bad_function_call);
    EXPECT_EQ(ids, std::vector<int>{5});
}

// The integers 0 to `last`, with relations between them.
struct Graph {
    explicit Graph(int last) {
        for (int i = 0; i <= last; ++i) {
            table.registerSymbolicDims(i);
        }
    }
    void add(int greater, int lesser) {
        table.addGreaterThanRelation(1 + greater, 1 + lesser, nullptr);
    }
    bool isGreater(int greater, int lesser) {
        return table.hasGreaterThanRelation(1 + greater, 1 + lesser);
    }
    bool rejects(int greater, int lesser) {
        return thrownError([&] { add(greater, lesser); }) != "no error";
    }

    SymbolicDimsTable table;
};

TEST(Ordering, AcceptsLongChainsInAnyOrder) {
    constexpr int last = 100'000;
    std::vector<int> ascending(last);
    std::iota(ascending.begin(), ascending.end(), 0);
    std::vector<std::vector<int>> orders(4, ascending);
    std::ranges::reverse(orders[1]);
    std::ranges::shuffle(orders[2], std::mt19937(randomSeed(3)));
    // Disjoint pairs first, then the edges between them.
    std::stable_partition(orders[3].begin(), orders[3].end(), [](int i) { return i % 2 == 0; });
    for (const std::vector<int>& order : orders) {
        Graph graph(last);
        for (const int i : order) {
            graph.add(i, i + 1);
        }
        for (int i = 0; i < last; i += last / 7) {
            EXPECT_TRUE(graph.isGreater(i, last) && !graph.isGreater(last, i));
        }
        EXPECT_TRUE(graph.rejects(last, 0));
        EXPECT_NE(thrownError([&] { graph.table.addEqualRelation(1, 1 + last, nullptr); }),
                  "no error");
    }
}

// Two ladders of 60 diamonds, with 2^60 paths each.
TEST(Ordering, SearchesLaddersOnce) {
    Graph graph(400);
    for (const int ladder : {0, 200}) {
        for (int i = ladder; i < ladder + 180; i += 3) {
            for (const int side : {i + 1, i + 2}) {
                graph.add(i, side);
                graph.add(side, i + 3);
            }
        }
    }
    EXPECT_TRUE(graph.isGreater(0, 180));
    EXPECT_FALSE(graph.isGreater(0, 380));
    EXPECT_TRUE(graph.rejects(180, 0));
}

} // namespace
} // namespace TVTypeSys
