// Operations that run out of memory at each of their allocations.
#include "support/failing_allocations.h"

#include <tvtypes/symbolicdims.h>

#include <algorithm>
#include <functional>
#include <list>
#include <memory>
#include <sstream>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

using namespace TVTypeSys;

namespace {

const TVBlock* block(std::size_t number) {
    static const char blocks[4] = {};
    return reinterpret_cast<const TVBlock*>(blocks + number);
}

// A, B, C, D, E have the ids 1 to 5; A == B of block 0, C > D of block 1, and the list [A,C].
std::unique_ptr<SymbolicDimsTable> makeTable() {
    auto table = std::make_unique<SymbolicDimsTable>();
    for (const char* name : {"A", "B", "C", "D", "E"}) {
        table->registerSymbolicDims(name);
    }
    table->addEqualRelation(1, 2, block(0));
    table->addGreaterThanRelation(3, 4, block(1));
    table->registerSymbolicDims({"A", "C"});
    return table;
}

// All relations and those of each block, by their ids.
std::string relations(SymbolicDimsTable& table) {
    std::ostringstream out;
    std::list<std::pair<const int, const int>> pairs;
    table.getEquivalentSymbolicDims(pairs);
    for (const auto& [representative, member] : pairs) {
        out << representative << '=' << member << ' ';
    }
    table.getGreaterThanSymbolicDims(pairs);
    for (const auto& [greater, lesser] : pairs) {
        out << greater << '>' << lesser << ' ';
    }
    for (std::size_t i = 0; i < 4; ++i) {
        std::vector<int> stated;
        table.getSymbolicDimsConstraints(block(i), stated);
        out << "block " << i << ':' << testing::PrintToString(stated);
    }
    const int last = std::min(5, table.getNumSymbolicDimss() - 2);
    for (int a = 1; a <= last; ++a) {
        for (int b = 1; b <= last; ++b) {
            out << table.hasEqualRelation(a, b) << table.hasGreaterThanRelation(a, b);
        }
    }
    return out.str();
}

// The relations and all expressions of the table.
std::string everything(SymbolicDimsTable& table) {
    std::ostringstream out;
    out << table << relations(table);
    return out.str();
}

} // namespace

TEST(FailedAllocation, LeavesSymbolicDimsUnchanged) {
    const auto source = makeTable();
    const int imported = source->registerSymbolicDimsExpr("(A+B)*(X-3)/[2,X]");
    const std::string longName(100, 'n');
    std::vector<int> ids;
    std::vector<SymbolicDimsConstraint> constraints;
    const struct {
        const char* name;
        std::function<void(SymbolicDimsTable&)> call;
    } wholly[] = {
        {"name", [&](auto& table) { table.registerSymbolicDims(longName.c_str()); }},
        {"number", [](auto& table) { table.registerSymbolicDims(17); }},
        {"list",
         [&](auto& table) {
             table.registerSymbolicDims({"X", longName, "3", "X"});
         }},
        {"text",
         [](auto& table) { table.registerSymbolicDimsExpr("[(A+X)*-3/B,99999999999999999999]"); }},
        {"import", [&](auto& table) { table.importSymbolicDims(*source, imported); }},
        {"equal, new", [](auto& table) { table.addEqualRelation(4, 5, block(2)); }},
        {"equal, known", [](auto& table) { table.addEqualRelation(2, 5, block(0)); }},
        {"equal, joined", [](auto& table) { table.addEqualRelation(0, 2, nullptr); }},
        {"greater, new", [](auto& table) { table.addGreaterThanRelation(5, 1, block(2)); }},
        {"greater, relabelled", [](auto& table) { table.addGreaterThanRelation(4, 5, block(1)); }},
        {"greater, known", [](auto& table) { table.addGreaterThanRelation(3, 4, block(3)); }},
        {"text of an id", [](auto& table) { table.getDisplayString(3); }},
        {"reset", [](auto& table) { table.resetToBuiltin(); }},
    };
    for (const auto& [name, call] : wholly) {
        expectUnchangedOnFailedAllocation(name, makeTable, call, everything);
    }
    // These register expressions one after the other.
    const std::remove_reference_t<decltype(wholly[0])> inSteps[] = {
        {"product", [](auto& table) { table.addEqualRelation(8, 5, block(2)); }},
        {"arithmetic",
         [](auto& table) {
             const SymbolicDims a = table.getSymbolicDims(1);
             const SymbolicDims b = table.getSymbolicDims(2);
             const SymbolicDims c = a / (a + b) - b * b * b * b * (a - b) / (a * a - b * b);
             table.addGreaterThanRelation((c * c).getId(), 3, nullptr);
         }},
        {"listing",
         [&](auto& table) {
             table.getSymbolicDimsConstraints(ids);
             table.getSymbolicDimsConstraints(constraints);
         }},
        {"service",
         [](auto& table) {
             int result = 0;
             int unknown = 0;
             SymbolicDimsServices::Concat::ComputeInput(&table, {3, -1}, 5, result, unknown, 0,
                                                        false, block(2));
         }},
    };
    for (const auto& [name, call] : inSteps) {
        expectUnchangedOnFailedAllocation(name, makeTable, call, relations);
    }
}
