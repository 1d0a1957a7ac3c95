#include "symbolicdims/constraints_impl.h"

#include "services/errors.h"
#include "symbolicdims/ids.h"

#include <tvtypes/symbolicdims/table.h>

#include <algorithm>
#include <exception>
#include <optional>
#include <utility>

namespace TVTypeSys {

namespace {

template <class Map>
const typename Map::mapped_type* findIn(const Map& map, const typename Map::key_type& key) {
    const auto found = map.find(key);
    return found == map.end() ? nullptr : &found->second;
}

/// Whether an exception has been thrown since the construction of this object.
class Failure {
  public:
    explicit operator bool() const { return std::uncaught_exceptions() > before_; }

  private:
    int before_ = std::uncaught_exceptions();
};

/// An entry of a map, inserted if there is none. A new one is removed again if an exception leaves
/// the scope of this object.
template <class Map>
class Entry {
  public:
    Entry(Map& map, const typename Map::key_type& key, typename Map::mapped_type value = {})
        : map_(&map), key_(key) {
        const auto [place, isNew] = map.try_emplace(key, std::move(value));
        value_ = &place->second;
        isNew_ = isNew;
    }
    Entry(const Entry&) = delete;
    Entry& operator=(const Entry&) = delete;
    ~Entry() {
        if (isNew_ && failure_) {
            map_->erase(key_);
        }
    }

    bool isNew() const { return isNew_; }
    typename Map::mapped_type& value() const { return *value_; }

  private:
    Map* map_;
    typename Map::key_type key_;
    typename Map::mapped_type* value_ = nullptr; // not moved when the map grows
    bool isNew_ = false;
    Failure failure_;
};

/// The same for an element of a set.
template <class Set>
class Member {
  public:
    Member(Set& set, const typename Set::key_type& key) : set_(&set), place_(set.insert(key)) {}
    Member(const Member&) = delete;
    Member& operator=(const Member&) = delete;
    ~Member() {
        if (isNew() && failure_) {
            set_->erase(place_.first);
        }
    }

    bool isNew() const { return place_.second; }

  private:
    Set* set_;
    std::pair<typename Set::iterator, bool> place_;
    Failure failure_;
};

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
    const auto [low, high] = std::minmax(a, b);
    const int* parentOfLow = findIn(equalParent_, low);
    // The parent, which need not be the root: the listings show this forest.
    const int root = parentOfLow == nullptr ? low : std::min(*parentOfLow, low);
    const Entry lowest(equalParent_, low, low);
    const Entry highest(equalParent_, high, root);
    std::optional<Entry<BlocksById>> blocksOfLow;
    std::optional<Entry<BlocksById>> blocksOfHigh;
    if (block != nullptr && lowest.isNew()) {
        blocksOfLow.emplace(equalBlocks_, low, Blocks{block});
    }
    if (block != nullptr && highest.isNew()) {
        blocksOfHigh.emplace(equalBlocks_, high, Blocks{block});
    }
    const Entry members(equalMembers_, root);
    const Member member(members.value(), high);
    const int parent = highest.value();
    const bool joins = !highest.isNew() && parent > root;
    std::optional<Member<Ids>> joined;
    if (joins) {
        joined.emplace(members.value(), parent);
    }
    addToBlock<TV::SymbolicEqualExpr>(block, a, b);
    // Nothing fails from here on.
    if (joins) {
        equalParent_.at(parent) = root;
        highest.value() = root;
    }
    numEqual_ += highest.isNew() || joins ? 1 : 0;
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
    const Entry lesser(greaterThanEdges_, a);
    const Member member(lesser.value(), b);
    std::optional<Entry<BlocksById>> blocks;
    std::optional<Member<Blocks>> blockOfGreater;
    if (block != nullptr) {
        blocks.emplace(greaterThanBlocks_, a);
        blockOfGreater.emplace(blocks->value(), block);
    }
    if (member.isNew()) {
        ordering_.add(a, b);
    }
    try {
        addToBlock<TV::SymbolicGreaterThanExpr>(block, a, b);
    } catch (...) {
        if (member.isNew()) {
            ordering_.removeLast(a, b);
        }
        throw;
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
    return internExpression(exprTable_, Relation(exprTable_, expressionOf(a), expressionOf(b)));
}

const TV::SymbolicExpr& SymbolicDimsConstraints::Impl::expressionOf(int size) const {
    return table_->getSymbolicExpr(toExpressionId(size));
}

template <class Relation>
void SymbolicDimsConstraints::Impl::addToBlock(const TVBlock* block, int a, int b) {
    if (block == nullptr) {
        return;
    }
    Ids added = {0};
    Entry relations(blockConstraints_, block);
    auto node = added.extract(added.begin());
    // The last step that can fail, since the table cannot remove an expression.
    node.value() = registerRelation<Relation>(a, b);
    relations.value().insert(std::move(node));
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
    std::vector<SymbolicDimsConstraint> listed;
    listed.reserve(numEqual_ + numGreaterThan_);
    visitConstraints([&](int constraintId, const Blocks* blocks) {
        SymbolicDimsConstraint& constraint = listed.emplace_back();
        constraint.constraintId = constraintId;
        if (blocks != nullptr) {
            constraint.blocks.assign(blocks->begin(), blocks->end());
        }
    });
    constraints.swap(listed);
}

void SymbolicDimsConstraints::Impl::getSymbolicDimsConstraints(
    std::vector<int>& constraintIds) const {
    std::vector<int> listed;
    listed.reserve(numEqual_ + numGreaterThan_);
    visitConstraints([&](int constraintId, const Blocks*) { listed.push_back(constraintId); });
    constraintIds.swap(listed);
}

void SymbolicDimsConstraints::Impl::getSymbolicDimsConstraints(
    const TVBlock* block, std::vector<int>& constraintIds) const {
    const Ids* stated = findIn(blockConstraints_, block);
    constraintIds =
        stated == nullptr ? std::vector<int>() : std::vector<int>(stated->begin(), stated->end());
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
    constraintIds = std::vector<int>(all.begin(), all.end());
}

} // namespace TVTypeSys
