// Any sequence of relations between sizes, compared after each step with the reference model of the
// tests. A relation that contradicts others is an error with the expected message, and changes
// nothing. Arithmetic registers further sizes in between.
#include "support/require.h"
#include "symbolicdims/relations_reference.h"

#include <tvtypes/symbolicdims.h>

#include <fnd/except.h>
#include <fuzzer/FuzzedDataProvider.h>
#include <tv_services/diagnostics.h>

#include <cstdint>
#include <list>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace TVTypeSys;
using fuzzing::require;

using Pairs = std::list<std::pair<const int, const int>>;

// Blocks are compared by address and never dereferenced. Block 0 is null.
const TVBlock* block(int i) {
    static constexpr char places[8] = {};
    return i == 0 ? nullptr : reinterpret_cast<const TVBlock*>(places + i);
}

class Script {
  public:
    explicit Script(FuzzedDataProvider& input) : input_(input) {
        for (const char* text : {"A", "7", "[A,B]", "B", "[2,B]", "C", "2*B", "A/C", "[A]", "D"}) {
            ids_.push_back(table_.registerSymbolicDimsExpr(text));
        }
    }

    void step() {
        const int action = input_.ConsumeIntegralInRange(0, 9);
        const int first = pick();
        const int second = pick();
        if (action == 0) {
            return addSize(first, second);
        }
        if (action == 1) {
            return rejectInvalid(first);
        }
        if (action == 2) {
            return checkLists();
        }
        state(action < 5, first, second, block(input_.ConsumeIntegralInRange(0, 4)));
        const int a = sizeOf(first);
        const int b = sizeOf(second);
        require(table_.hasEqualRelation(second, first) == model_.isEqual(a, b));
        require(table_.hasGreaterThanRelation(first, second) == model_.isGreater(a, b));
        require(table_.hasGreaterThanRelation(second, first) == model_.isGreater(b, a));
    }

    void checkLists() {
        std::set<std::pair<int, int>> equal;
        std::set<std::pair<int, int>> greater;
        for (const auto& [first, all] : model_.members) {
            for (const int second : all) {
                equal.insert({first, second});
            }
        }
        for (const auto& [first, all] : model_.lesser) {
            for (const int second : all) {
                greater.insert({first, second});
            }
        }
        Pairs pairs(1, {1, 1});
        table_.getEquivalentSymbolicDims(pairs);
        require(pairs.size() == equal.size());
        require(std::set<std::pair<int, int>>(pairs.begin(), pairs.end()) == equal);
        table_.getGreaterThanSymbolicDims(pairs);
        require(pairs.size() == greater.size());
        require(std::set<std::pair<int, int>>(pairs.begin(), pairs.end()) == greater);
        checkBlocks(equal.size() + greater.size());
    }

    void checkAll() {
        checkLists();
        std::vector<int> sizes;
        for (const int id : ids_) {
            sizes.push_back(sizeOf(id));
        }
        for (const int a : sizes) {
            for (const int b : sizes) {
                require(table_.hasEqualRelation(a, b) == model_.isEqual(a, b));
                require(table_.hasGreaterThanRelation(a, b) == model_.isGreater(a, b));
            }
        }
    }

  private:
    int pick() { return ids_[input_.ConsumeIntegralInRange<std::size_t>(0, ids_.size() - 1)]; }
    int sizeOf(int id) const { return table_.getSymbolicDims(id).getSize().getId(); }

    void addSize(int first, int second) {
        constexpr std::size_t most = 40;
        if (ids_.size() < most) {
            const SymbolicDims a = table_.getSymbolicDims(first);
            const SymbolicDims b = table_.getSymbolicDims(second);
            const int kind = input_.ConsumeIntegralInRange(0, 4);
            ids_.push_back(kind == 0   ? (a + b).getId()
                           : kind == 1 ? (a - b).getId()
                           : kind == 2 ? (a * b).getId()
                           : kind == 3 ? (a / b).getId()
                                       : SymbolicDimsND(table_, {first, second}).getId());
        }
    }

    void rejectInvalid(int id) {
        const int count = table_.getNumSymbolicDimss();
        const int invalid = count + input_.ConsumeIntegralInRange(0, 9);
        for (const auto& [a, b] : {std::pair(id, invalid), {invalid, id}, {-2, id}}) {
            requireMessage("InvalidDataTypeId",
                           [&, x = a, y = b] { table_.addEqualRelation(x, y, block(1)); });
            requireMessage("InvalidDataTypeId",
                           [&, x = a, y = b] { table_.hasGreaterThanRelation(x, y); });
        }
        require(table_.getNumSymbolicDimss() == count);
    }

    void state(bool isEquality, int first, int second, const TVBlock* stating) {
        int a = sizeOf(first);
        int b = sizeOf(second);
        const int given[] = {a, b};
        const std::string contradiction = model_.add(isEquality, a, b, stating);
        const auto add = [&] {
            isEquality ? table_.addEqualRelation(first, second, stating)
                       : table_.addGreaterThanRelation(first, second, stating);
        };
        if (!contradiction.empty()) {
            return requireMessage("InconsistentSymbolicDimension" + contradiction, add);
        }
        add();
        if (stating != nullptr && given[0] != given[1]) {
            ++stated_[stating];
        }
    }

    template <class Operation>
    static void requireMessage(const std::string& message, const Operation& operation) {
        try {
            operation();
        } catch (const fnd::except::IException& error) {
            return require(error.diagnostic().messageId(0).ends_with(message));
        }
        require(false);
    }

    void checkBlocks(std::size_t relations) {
        std::vector<SymbolicDimsConstraint> constraints;
        table_.getSymbolicDimsConstraints(constraints);
        require(constraints.size() == relations);
        for (const SymbolicDimsConstraint& one : constraints) {
            require(table_.isSymbolicDimsIdValid(one.constraintId));
            require(std::set(one.blocks.begin(), one.blocks.end()).size() == one.blocks.size());
        }
        for (int i = 1; i < 5; ++i) {
            std::vector<int> ids;
            table_.getSymbolicDimsConstraints(block(i), ids);
            require(ids.size() <= stated_[block(i)]);
            require(ids.empty() == (stated_[block(i)] == 0));
        }
    }

    FuzzedDataProvider& input_;
    SymbolicDimsTable table_;
    std::vector<int> ids_{-1, 0};
    reference::Relations model_;
    std::map<const TVBlock*, std::size_t> stated_; ///< number of relations
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    Script script(input);
    while (input.remaining_bytes() > 0) {
        script.step();
    }
    script.checkAll();
    return 0;
}
