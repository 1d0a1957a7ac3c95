// Operations that run out of memory at each of their allocations.
#include "support/failing_allocations.h"
#include "symbolicdims/symbolicdims_fixture.h"

using namespace TVTypeSys;

namespace {

// A, B, C, D, E have the ids 1 to 5; A == B of block 1, C > D of block 2, and the list [A,C].
std::unique_ptr<SymbolicDimsTable> makeTable() {
    auto table = std::make_unique<SymbolicDimsTable>();
    for (const char* name : {"A", "B", "C", "D", "E"}) {
        table->registerSymbolicDims(name);
    }
    table->addEqualRelation(1, 2, block(1));
    table->addGreaterThanRelation(3, 4, block(2));
    table->registerSymbolicDims({"A", "C"});
    return table;
}

// All relations and those of each block, by their ids.
std::string relations(SymbolicDimsTable& table) {
    std::ostringstream out;
    std::list<std::pair<const int, const int>> pairs;
    table.getEquivalentSymbolicDims(pairs);
    out << testing::PrintToString(pairs);
    table.getGreaterThanSymbolicDims(pairs);
    out << testing::PrintToString(pairs);
    for (int i = 0; i < 5; ++i) {
        std::vector<int> stated;
        table.getSymbolicDimsConstraints(block(i), stated);
        out << "block " << i << ':' << testing::PrintToString(stated);
    }
    const int last = std::min(5, table.getNumSymbolicDimss() - 2);
    for (int i = 0; i < last * last; ++i) {
        out << table.hasEqualRelation(1 + i / last, 1 + i % last)
            << table.hasGreaterThanRelation(1 + i / last, 1 + i % last);
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
    using Operation = std::function<void(SymbolicDimsTable&)>;
    const std::pair<const char*, Operation> wholly[] = {
        {"name", [&](auto& t) { t.registerSymbolicDims(longName.c_str()); }},
        {"number", [](auto& t) { t.registerSymbolicDims(17); }},
        {"list",
         [&](auto& t) {
             t.registerSymbolicDims({"X", longName, "3", "X"});
         }},
        {"text", [](auto& t) { t.registerSymbolicDimsExpr("[(A+X)*-3/B,9999999999999999999]"); }},
        {"import", [&](auto& t) { t.importSymbolicDims(*source, imported); }},
        {"equal, new", [](auto& t) { t.addEqualRelation(4, 5, block(3)); }},
        {"equal, known", [](auto& t) { t.addEqualRelation(2, 5, block(1)); }},
        {"equal, joined", [](auto& t) { t.addEqualRelation(0, 2, nullptr); }},
        {"greater, new", [](auto& t) { t.addGreaterThanRelation(5, 1, block(3)); }},
        {"greater, relabelled", [](auto& t) { t.addGreaterThanRelation(4, 5, block(2)); }},
        {"greater, known", [](auto& t) { t.addGreaterThanRelation(3, 4, block(4)); }},
        {"text of an id", [](auto& t) { t.getDisplayString(3); }},
        {"reset", [](auto& t) { t.resetToBuiltin(); }},
    };
    for (const auto& [name, operation] : wholly) {
        expectUnchangedOnFailedAllocation(name, makeTable, operation, everything);
    }
    // These register expressions one after the other.
    const std::pair<const char*, Operation> inSteps[] = {
        {"product", [](auto& t) { t.addEqualRelation(8, 5, block(3)); }},
        {"arithmetic",
         [](auto& t) {
             const SymbolicDims a = t.getSymbolicDims(1), b = t.getSymbolicDims(2);
             const SymbolicDims c = a / (a + b) - b * b * b * b * (a - b) / (a * a - b * b);
             t.addGreaterThanRelation((c * c).getId(), 3, nullptr);
         }},
        {"ids", [&](auto& t) { t.getSymbolicDimsConstraints(ids); }},
        {"constraints", [&](auto& t) { t.getSymbolicDimsConstraints(constraints); }},
        {"service",
         [](auto& t) {
             int result = 0, unknown = 0;
             SymbolicDimsServices::Concat::ComputeInput(&t, {3, -1}, 5, result, unknown, 0, false,
                                                        block(3));
         }},
    };
    for (const auto& [name, operation] : inSteps) {
        expectUnchangedOnFailedAllocation(name, makeTable, operation, relations);
    }
}
