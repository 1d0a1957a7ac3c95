#include <tvtypes/symbolicdims/table.h>

#include <utility>

namespace TVTypeSys {

void SymbolicDimsTable::addEqualRelation(int a, int b, const TVBlock* block) {
    constraints_->addEqual(a, b, block);
}

void SymbolicDimsTable::addGreaterThanRelation(int a, int b, const TVBlock* block) {
    constraints_->addGreaterThan(a, b, block);
}

void SymbolicDimsTable::addEqualConstraint(int a, int value, const TVBlock* block) {
    constraints_->addEqual(a, registerSymbolicDims(value), block);
}

void SymbolicDimsTable::addGreaterThanConstraint(int a, int value, const TVBlock* block) {
    constraints_->addGreaterThan(a, registerSymbolicDims(value), block);
}

void SymbolicDimsTable::addLessThanConstraint(int a, int value, const TVBlock* block) {
    constraints_->addGreaterThan(registerSymbolicDims(value), a, block);
}

bool SymbolicDimsTable::hasEqualRelation(int a, int b) const { return constraints_->isEqual(a, b); }

bool SymbolicDimsTable::hasGreaterThanRelation(int a, int b) const {
    return constraints_->isGreaterThan(a, b);
}

bool SymbolicDimsTable::hasEqualConstraint(int a, int value) {
    return constraints_->isEqual(a, registerSymbolicDims(value));
}

bool SymbolicDimsTable::hasGreaterThanConstraint(int a, int value) {
    return constraints_->isGreaterThan(a, registerSymbolicDims(value));
}

bool SymbolicDimsTable::hasLessThanConstraint(int a, int value) {
    return constraints_->isGreaterThan(registerSymbolicDims(value), a);
}

void SymbolicDimsTable::getEquivalentSymbolicDims(
    std::list<std::pair<const int, const int>>& pairs) const {
    constraints_->getEquivalentSymbolicDims(pairs);
}

void SymbolicDimsTable::getGreaterThanSymbolicDims(
    std::list<std::pair<const int, const int>>& pairs) const {
    constraints_->getGreaterThanSymbolicDims(pairs);
}

void SymbolicDimsTable::getSymbolicDimsConstraints(
    std::vector<SymbolicDimsConstraint>& constraints) {
    constraints_->getSymbolicDimsConstraints(constraints);
}

void SymbolicDimsTable::getSymbolicDimsConstraints(std::vector<int>& constraintIds) {
    constraints_->getSymbolicDimsConstraints(constraintIds);
}

void SymbolicDimsTable::getSymbolicDimsConstraints(const TVBlock* block,
                                                   std::vector<int>& constraintIds) const {
    constraints_->getSymbolicDimsConstraints(block, constraintIds);
}

void SymbolicDimsTable::getSymbolicDimsConstraints(
    const TVBlock* block, boost::function<const TVBlock*(const TVBlock*)> blockOf,
    std::vector<int>& constraintIds) const {
    constraints_->getSymbolicDimsConstraints(block, std::move(blockOf), constraintIds);
}

} // namespace TVTypeSys
