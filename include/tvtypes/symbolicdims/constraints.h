/// \file
/// Relations between symbolic dimensions.
#pragma once

#include <tvtypes/export.h>

#include <boost/function.hpp>

#include <list>
#include <memory>
#include <utility>
#include <vector>

/// \addtogroup symbolicdims
/// @{

class TVBlock;

namespace TVTypeSys {

class SymbolicDimsTable;

/// A relation and the blocks that stated it.
struct TVTYPES_API SymbolicDimsConstraint {
    int constraintId = -1; ///< symbolic dimension id of an equal or greater-than expression
    std::vector<const TVBlock*> blocks; ///< in the order of their addresses, each once
};

/// Relations between the sizes of a table: two are equal, or one is greater than the other. A
/// relation that contradicts another is an error and changes nothing.
///
/// A list of dimensions is replaced by the product of its dimensions, which may add it to the
/// table. Sizes are compared by id, not by value: that N equals 3 and N equals 5 is no
/// contradiction here. Greater-than is transitive, but not through equal sizes.
///
/// An operation that runs out of memory throws std::bad_alloc and changes no relation and no
/// argument, but sizes and relations that it has registered in the table remain registered: called
/// again, it gives them the same ids.
///
/// Blocks are compared by address and never dereferenced. A relation stated with a null block is
/// listed without one. Each operation on two ids throws TorvaneTypes::general::InvalidDataTypeId
/// (id) if the table does not have one of them.
class TVTYPES_API SymbolicDimsConstraints {
  public:
    /// Creates an empty set of relations.
    /// \param table not null; must outlive this object
    explicit SymbolicDimsConstraints(SymbolicDimsTable* table);
    SymbolicDimsConstraints(const SymbolicDimsConstraints&) = delete;
    SymbolicDimsConstraints& operator=(const SymbolicDimsConstraints&) = delete;
    ~SymbolicDimsConstraints();

    /// States that two sizes are equal. Ignored for a size and itself. Throws
    /// TorvaneTypes::Dimensions::InconsistentSymbolicDimensionNotEqual (greater, lesser, lesser) if
    /// one is greater than the other.
    void addEqual(int a, int b, const TVBlock* block) const;
    /// States that `a` is greater than `b`. Ignored for a size and itself. Throws
    /// TorvaneTypes::Dimensions::InconsistentSymbolicDimensionEqual (a, b, b) if they are equal,
    /// InconsistentSymbolicDimensionGreaterThan (a, b, b) if `b` is greater than `a`. A chain of n
    /// relations takes O(n log n) in any order.
    void addGreaterThan(int a, int b, const TVBlock* block) const;

    /// Returns whether two sizes are known to be equal. A size without an equality is not even
    /// equal to itself.
    bool isEqual(int a, int b) const;
    /// Returns whether `a` is known to be greater than `b`, directly or through other sizes.
    bool isGreaterThan(int a, int b) const;

    /// Replaces the list by all pairs of a representative, which is the lowest id of equal sizes,
    /// and one of these sizes.
    void getEquivalentSymbolicDims(std::list<std::pair<const int, const int>>& pairs) const;
    /// Replaces the list by all stated pairs of a greater and a lesser size.
    void getGreaterThanSymbolicDims(std::list<std::pair<const int, const int>>& pairs) const;

    /// Replaces the vector by all relations, equalities first: the expressions of the pairs of the
    /// two lists above. The blocks of an equality are those that added its second size, those of a
    /// greater-than relation all that stated anything less than its first size.
    void getSymbolicDimsConstraints(std::vector<SymbolicDimsConstraint>& constraints) const;
    /// Replaces the vector by the ids of all relations, in the same order.
    void getSymbolicDimsConstraints(std::vector<int>& constraintIds) const;
    /// Replaces the vector by the relations that a block stated, as it stated them, in ascending
    /// order.
    void getSymbolicDimsConstraints(const TVBlock* block, std::vector<int>& constraintIds) const;
    /// Replaces the vector by the relations of all blocks that `blockOf` maps to `block`, in
    /// ascending order, each once. Throws boost::bad_function_call if the function is empty and
    /// there is a relation of a block; the vector is unchanged then.
    void getSymbolicDimsConstraints(const TVBlock* block,
                                    boost::function<const TVBlock*(const TVBlock*)> blockOf,
                                    std::vector<int>& constraintIds) const;

  private:
    class TVTYPES_LOCAL Impl;
    std::unique_ptr<Impl> impl_;
};

} // namespace TVTypeSys

/// @}
