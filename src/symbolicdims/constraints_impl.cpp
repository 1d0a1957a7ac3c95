#include "symbolicdims/constraints_impl.h"

#include "services/errors.h"
#include "symbolicdims/ids.h"

#include <tvtypes/symbolicdims/table.h>

#include <algorithm>

namespace TVTypeSys {

namespace {

template <class Map>
const typename Map::mapped_type* findIn(const Map& map, const typename Map::key_type& key) {
    const auto found = map.find(key);
    return found == map.end() ? nullptr : &found->second;
}

} // namespace

SymbolicDimsConstraints::Impl::Impl(SymbolicDimsTable* table, TV::SymbolicExprTable& exprTable)
    : table_(table), exprTable_(exprTable) {}

void SymbolicDimsConstraints::Impl::addEqual(int first, int second, const TVBlock* block) {
    const auto [a, b] = sizes(first, second);
    if (a == b) {
        return;
    }
    using dimensions::InconsistentSymbolicDimensionNotEqual;
    for (const auto& [greater, lesser] : {std::pair(a, b), std::pair(b, a)}) {
        if (ordering_.isGreater(greater, lesser)) {
            const std::string text = sizeText(lesser);
            throwError(InconsistentSymbolicDimensionNotEqual(sizeText(greater), text, text));
        }
    }
    if (block != nullptr) {
        blockConstraints_[block].insert(registerRelation<TV::SymbolicEqualExpr>(a, b));
    }
    const auto [low, high] = std::minmax(a, b);
    const int* parentOfLow = findIn(equalParent_, low);
    // The parent, which need not be the root: the listings show this forest.
    const int root = parentOfLow == nullptr ? low : std::min(*parentOfLow, low);
    if (parentOfLow == nullptr) {
        equalParent_[low] = low;
        if (block != nullptr) {
            equalBlocks_[low].insert(block);
        }
    }
    Ids& members = equalMembers_[root];
    members.insert(high);
    const auto [parentOfHigh, isNew] = equalParent_.try_emplace(high, root);
    if (isNew) {
        if (block != nullptr) {
            equalBlocks_[high].insert(block);
        }
        ++numEqual_;
    } else if (const int parent = parentOfHigh->second; parent > root) {
        members.insert(parent);
        equalParent_[parent] = root;
        equalParent_[high] = root;
        ++numEqual_;
    }
}

void SymbolicDimsConstraints::Impl::addGreaterThan(int first, int second, const TVBlock* block) {
    const auto [a, b] = sizes(first, second);
    if (a == b) {
        return;
    }
    if (areEqual(a, b)) {
        const std::string text = sizeText(b);
        throwError(dimensions::InconsistentSymbolicDimensionEqual(sizeText(a), text, text));
    }
    if (!ordering_.reorder(a, b)) {
        const std::string text = sizeText(b);
        throwError(dimensions::InconsistentSymbolicDimensionGreaterThan(sizeText(a), text, text));
    }
    if (block != nullptr) {
        blockConstraints_[block].insert(registerRelation<TV::SymbolicGreaterThanExpr>(a, b));
        greaterThanBlocks_[a].insert(block);
    }
    Ids& lesser = greaterThanEdges_[a];
    const auto [place, isNew] = lesser.insert(b);
    if (isNew) {
        try {
            ordering_.add(a, b);
        } catch (...) {
            lesser.erase(place);
            throw;
        }
    }
    ++numGreaterThan_;
}

bool SymbolicDimsConstraints::Impl::isEqual(int first, int second) const {
    const auto [a, b] = sizes(first, second);
    return areEqual(a, b);
}

bool SymbolicDimsConstraints::Impl::isGreaterThan(int first, int second) const {
    const auto [a, b] = sizes(first, second);
    return ordering_.isGreater(a, b);
}

std::pair<int, int> SymbolicDimsConstraints::Impl::sizes(int first, int second) const {
    table_->checkSymbolicDimsId(first);
    table_->checkSymbolicDimsId(second);
    const int a = SymbolicDims(table_, first).getSize().getId();
    return {a, SymbolicDims(table_, second).getSize().getId()};
}

std::string SymbolicDimsConstraints::Impl::sizeText(int size) const {
    return SymbolicDims(table_, size).toString();
}

bool SymbolicDimsConstraints::Impl::areEqual(int a, int b) const {
    return equalParent_.count(a) != 0 && equalParent_.count(b) != 0 &&
           findRootKey(a) == findRootKey(b);
}

int SymbolicDimsConstraints::Impl::findRootKey(int size) const {
    int root = size;
    for (int parent = equalParent_.at(root); parent < root; parent = equalParent_.at(root)) {
        root = parent;
    }
    return root;
}

template <class Relation>
int SymbolicDimsConstraints::Impl::registerRelation(int a, int b) const {
    return internExpression(exprTable_, Relation(exprTable_, toExpressionId(a), toExpressionId(b)));
}

void SymbolicDimsConstraints::Impl::getEquivalentSymbolicDims(Pairs& pairs) const {
    createConstraintsList(equalMembers_, pairs);
}

void SymbolicDimsConstraints::Impl::getGreaterThanSymbolicDims(Pairs& pairs) const {
    createConstraintsList(greaterThanEdges_, pairs);
}

void SymbolicDimsConstraints::Impl::createConstraintsList(const IdsById& map, Pairs& pairs) {
    Pairs listed;
    for (const auto& [key, members] : map) {
        for (const int member : members) {
            listed.emplace_back(key, member);
        }
    }
    pairs.swap(listed);
}

template <class Visit>
void SymbolicDimsConstraints::Impl::visitConstraints(const Visit& visit) const {
    for (const auto& [representative, members] : equalMembers_) {
        for (const int member : members) {
            visit(registerRelation<TV::SymbolicEqualExpr>(representative, member),
                  findIn(equalBlocks_, member));
        }
    }
    for (const auto& [greater, lesser] : greaterThanEdges_) {
        const Blocks* blocks = findIn(greaterThanBlocks_, greater);
        for (const int member : lesser) {
            visit(registerRelation<TV::SymbolicGreaterThanExpr>(greater, member), blocks);
        }
    }
}

void SymbolicDimsConstraints::Impl::getSymbolicDimsConstraints(
    std::vector<SymbolicDimsConstraint>& constraints) const {
    constraints.clear();
    constraints.reserve(numEqual_ + numGreaterThan_);
    visitConstraints([&](int constraintId, const Blocks* blocks) {
        SymbolicDimsConstraint& constraint = constraints.emplace_back();
        constraint.constraintId = constraintId;
        if (blocks != nullptr) {
            constraint.blocks.assign(blocks->begin(), blocks->end());
        }
    });
}

void SymbolicDimsConstraints::Impl::getSymbolicDimsConstraints(
    std::vector<int>& constraintIds) const {
    constraintIds.clear();
    constraintIds.reserve(numEqual_ + numGreaterThan_);
    visitConstraints(
        [&](int constraintId, const Blocks*) { constraintIds.push_back(constraintId); });
}

void SymbolicDimsConstraints::Impl::getSymbolicDimsConstraints(
    const TVBlock* block, std::vector<int>& constraintIds) const {
    constraintIds.clear();
    if (const Ids* stated = findIn(blockConstraints_, block)) {
        constraintIds.assign(stated->begin(), stated->end());
    }
}

void SymbolicDimsConstraints::Impl::getSymbolicDimsConstraints(
    const TVBlock* block, const boost::function<const TVBlock*(const TVBlock*)>& blockOf,
    std::vector<int>& constraintIds) const {
    // Copied, since the client's function may state relations, which would change the map.
    std::vector<const TVBlock*> blocks;
    blocks.reserve(blockConstraints_.size());
    for (const auto& entry : blockConstraints_) {
        blocks.push_back(entry.first);
    }
    Ids all;
    for (const TVBlock* source : blocks) {
        if (blockOf(source) == block) {
            const Ids& stated = blockConstraints_.at(source);
            all.insert(stated.begin(), stated.end());
        }
    }
    constraintIds.assign(all.begin(), all.end());
}

} // namespace TVTypeSys
