#include "symbolicdims/constraints_impl.h"

#include <tvtypes/symbolicdims/table.h>

namespace TVTypeSys {

SymbolicDimsConstraints::SymbolicDimsConstraints(SymbolicDimsTable* table)
    : impl_(std::make_unique<Impl>(table, *table->expressions_)) {}

SymbolicDimsConstraints::~SymbolicDimsConstraints() = default;

void SymbolicDimsConstraints::addEqual(int a, int b, const TVBlock* block) const {
    impl_->addEqual(a, b, block);
}

void SymbolicDimsConstraints::addGreaterThan(int a, int b, const TVBlock* block) const {
    impl_->addGreaterThan(a, b, block);
}

bool SymbolicDimsConstraints::isEqual(int a, int b) const { return impl_->isEqual(a, b); }

bool SymbolicDimsConstraints::isGreaterThan(int a, int b) const {
    return impl_->isGreaterThan(a, b);
}

void SymbolicDimsConstraints::getEquivalentSymbolicDims(
    std::list<std::pair<const int, const int>>& pairs) const {
    impl_->getEquivalentSymbolicDims(pairs);
}

void SymbolicDimsConstraints::getGreaterThanSymbolicDims(
    std::list<std::pair<const int, const int>>& pairs) const {
    impl_->getGreaterThanSymbolicDims(pairs);
}

void SymbolicDimsConstraints::getSymbolicDimsConstraints(
    std::vector<SymbolicDimsConstraint>& constraints) const {
    impl_->getSymbolicDimsConstraints(constraints);
}

void SymbolicDimsConstraints::getSymbolicDimsConstraints(std::vector<int>& constraintIds) const {
    impl_->getSymbolicDimsConstraints(constraintIds);
}

void SymbolicDimsConstraints::getSymbolicDimsConstraints(const TVBlock* block,
                                                         std::vector<int>& constraintIds) const {
    impl_->getSymbolicDimsConstraints(block, constraintIds);
}

void SymbolicDimsConstraints::getSymbolicDimsConstraints(
    const TVBlock* block,
    boost::function<const TVBlock*(const TVBlock*)>
        blockOf, // NOLINT(performance-unnecessary-value-param): an exported signature
    std::vector<int>& constraintIds) const {
    impl_->getSymbolicDimsConstraints(block, blockOf, constraintIds);
}

} // namespace TVTypeSys
