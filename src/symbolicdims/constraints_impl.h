/// \file
/// The facts of a table.
#pragma once

#include "symbolicdims/ordering.h"

#include <tvtypes/symbolicdims/constraints.h>

#include <boost/unordered_map.hpp>

#include <cstddef>
#include <cstdint>
#include <set>
#include <string>

namespace TV {
class SymbolicExprTable;
} // namespace TV

namespace TVTypeSys {

/// Equal sizes form a forest: each has a parent of a lower id or itself, and those with one root
/// are equal. The maps are walked to list the facts, so what is entered where, and when, shows.
class SymbolicDimsConstraints::Impl {
  public:
    Impl(SymbolicDimsTable* table, TV::SymbolicExprTable& exprTable);

    void addEqual(int first, int second, const TVBlock* block);
    void addGreaterThan(int first, int second, const TVBlock* block);
    bool isEqual(int first, int second) const;
    bool isGreaterThan(int first, int second) const;

    using Pairs = std::list<std::pair<const int, const int>>;
    void getEquivalentSymbolicDims(Pairs& pairs) const;
    void getGreaterThanSymbolicDims(Pairs& pairs) const;

    void getSymbolicDimsConstraints(std::vector<SymbolicDimsConstraint>& constraints) const;
    void getSymbolicDimsConstraints(std::vector<int>& constraintIds) const;
    void getSymbolicDimsConstraints(const TVBlock* block, std::vector<int>& constraintIds) const;
    void getSymbolicDimsConstraints(const TVBlock* block,
                                    const boost::function<const TVBlock*(const TVBlock*)>& blockOf,
                                    std::vector<int>& constraintIds) const;

  private:
    using Ids = std::set<int>;
    using Blocks = std::set<const TVBlock*>;
    using IdsById = boost::unordered_map<int, Ids>;
    using BlocksById = boost::unordered_map<int, Blocks>;

    /// The sizes that two dimensions are told apart by. If one is refused nothing is added.
    std::pair<int, int> sizesOf(int first, int second) const;
    std::string textOfSize(int size) const;

    /// These take sizes.
    bool areEqual(int a, int b) const;
    int findRootKey(int size) const;
    template <class Relation>
    int constraintOf(int a, int b) const;

    /// Calls `visit(constraintId, blocks)` for each fact; `blocks` is null if there are none.
    template <class Visit>
    void visitConstraints(const Visit& visit) const;
    static void createConstraintsList(const IdsById& map, Pairs& pairs);

    static constexpr std::size_t buckets = 11;

    IdsById equalMembers_{buckets};                       ///< by representative
    boost::unordered_map<int, int> equalParent_{buckets}; ///< a root is its own
    BlocksById equalBlocks_{buckets};                     ///< who brought a size in
    IdsById greaterThanEdges_{buckets};                   ///< the lesser by the greater
    BlocksById greaterThanBlocks_{buckets};               ///< by the greater
    boost::unordered_map<const TVBlock*, Ids> blockConstraints_{buckets};
    SymbolicDimsTable* table_;
    TV::SymbolicExprTable& exprTable_;
    /// How many facts were entered, which listings reserve.
    std::uint64_t numEqual_ = 0;
    std::uint64_t numGreaterThan_ = 0;
    /// The same as greaterThanEdges_, for questions.
    Ordering ordering_;
};

} // namespace TVTypeSys
