/// \file
/// Relations between the sizes of a table.
#pragma once

#include "symbolicdims/ordering.h"

#include <tvtypes/symbolicdims/constraints.h>

#include <boost/unordered_map.hpp>

#include <cstddef>
#include <cstdint>
#include <set>
#include <string>

namespace TV {
class SymbolicExpr;
class SymbolicExprTable;
} // namespace TV

namespace TVTypeSys {

/// Equal sizes form a union-find forest without path compression: a parent has a lower id than its
/// child, a root is its own parent, and sizes with one root are equal. Listings iterate over the
/// maps, so the keys of an entry and the order of insertion are visible to clients.
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

    /// Returns the ids of the sizes (products of dimensions) of two symbolic dimensions. Throws
    /// before it registers a product.
    std::pair<int, int> sizes(int first, int second) const;
    std::string sizeText(int size) const;

    /// The following take ids of sizes.
    bool areEqual(int a, int b) const;
    /// \pre The size is in the forest.
    int findRootKey(int size) const;
    /// Registers a relation as an expression and returns its id.
    template <class Relation>
    int registerRelation(int a, int b) const;
    const TV::SymbolicExpr& expressionOf(int size) const;
    /// Registers a relation and lists it under the block unless that is null. If this throws,
    /// nothing has changed.
    template <class Relation>
    void addToBlock(const TVBlock* block, int a, int b);

    /// Calls `visit(constraintId, blocks)` for each relation; `blocks` is null if there are none.
    template <class Visit>
    void visitConstraints(const Visit& visit) const;
    static void createConstraintsList(const IdsById& map, Pairs& pairs);

    /// Determines the order of iteration, and so of the listings.
    static constexpr std::size_t buckets = 11;

    IdsById equalMembers_{buckets};                       ///< by representative
    boost::unordered_map<int, int> equalParent_{buckets}; ///< a root is its own parent
    BlocksById equalBlocks_{buckets};                     ///< blocks that added a size
    IdsById greaterThanEdges_{buckets};                   ///< lesser sizes by greater size
    BlocksById greaterThanBlocks_{buckets};               ///< by greater size
    boost::unordered_map<const TVBlock*, Ids> blockConstraints_{buckets};
    SymbolicDimsTable* table_;
    TV::SymbolicExprTable& exprTable_;
    /// Numbers of relations that were added, for which listings reserve memory.
    std::uint64_t numEqual_ = 0;
    std::uint64_t numGreaterThan_ = 0;
    /// The relations of greaterThanEdges_ in an order that answers queries fast.
    Ordering ordering_;
};

} // namespace TVTypeSys
