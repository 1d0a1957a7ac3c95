// The symbolic dimensions of a small model: what blocks state of them, the input that a
// concatenation lacks, and a fact that is refused.
#include <tvtypes/symbolicdims.h>

#include <fnd/except.h>

#include <iostream>
#include <vector>

int main() {
    TVTypeSys::SymbolicDimsTable table;
    const auto id = [&](const char* text) { return table.registerSymbolicDimsExpr(text); };

    // A matrix is put together from three along its rows; one of them is not known yet.
    const std::vector<int> inputs{id("[2,K]"), -1, id("[N,K]")};
    int missing = -1;
    int index = -1;
    TVTypeSys::SymbolicDimsServices::Concat::ComputeInput(&table, inputs, id("[3*N,C]"), missing,
                                                          index, 0, false, nullptr);
    std::cout << "input " << index << " is " << table.getDisplayString(missing) << ", of "
              << table.getSymbolicDims(missing).getSize().toString() << " elements\n";

    table.addGreaterThanConstraint(id("N"), 1, nullptr);
    std::vector<int> facts;
    table.getSymbolicDimsConstraints(facts);
    for (const int fact : facts) {
        std::cout << "known: " << table.getDisplayString(fact) << '\n';
    }
    try {
        table.addEqualConstraint(id("N"), 1, nullptr);
    } catch (const fnd::except::IException& refusal) {
        std::cout << refusal.what() << '\n';
        return 0;
    }
    return 1;
}
