// Symbolic dimensions of a small model: computes the unknown input of a concatenation, lists the
// relations that it implies, and shows the error of a contradiction.
#include <tvtypes/symbolicdims.h>

#include <fnd/except.h>

#include <iostream>
#include <vector>

int main() {
    TVTypeSys::SymbolicDimsTable table;
    const auto id = [&](const char* text) { return table.registerSymbolicDimsExpr(text); };

    // Three matrices are concatenated along their rows; the second is unknown.
    const std::vector<int> inputs{id("[2,K]"), -1, id("[N,K]")};
    int missing = -1;
    int index = -1;
    TVTypeSys::SymbolicDimsServices::Concat::ComputeInput(&table, inputs, id("[3*N,C]"), missing,
                                                          index, 0, false, nullptr);
    std::cout << "input " << index << " is " << table.getDisplayString(missing) << ", of "
              << table.getSymbolicDims(missing).getSize().toString() << " elements\n";

    table.addGreaterThanConstraint(id("N"), 1, nullptr);
    std::vector<int> relations;
    table.getSymbolicDimsConstraints(relations);
    for (const int relation : relations) {
        std::cout << "known: " << table.getDisplayString(relation) << '\n';
    }
    try {
        table.addEqualConstraint(id("N"), 1, nullptr);
    } catch (const fnd::except::IException& error) {
        std::cout << error.what() << '\n';
        return 0;
    }
    return 1;
}
