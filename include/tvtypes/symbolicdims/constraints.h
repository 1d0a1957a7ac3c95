/// \file
/// What is known of symbolic dimensions.
#pragma once

#include <tvtypes/export.h>

#include <boost/function.hpp>

#include <list>
#include <memory>
#include <utility>
#include <vector>

class TVBlock;

namespace TVTypeSys {

class SymbolicDimsTable;

/// A fact, and who stated it.
struct TVTYPES_API SymbolicDimsConstraint {
    int constraintId = -1; ///< symbolic dimension id of an equal or greater-than expression
    std::vector<const TVBlock*> blocks;
};

/// The facts that have been stated of the sizes of a table: two are equal, or one is greater than
/// the other. A fact that contradicts another is refused and changes nothing.
///
/// A list of dimensions stands for the product of its dimensions; the table may get it by this.
/// Sizes are told apart by id, and no numbers are computed: that N equals 3 and equals 5 is no
/// contradiction here. Greater-than is followed from fact to fact, but not across equal sizes.
///
/// Blocks are kept and compared and never looked into. A fact stated with a null block is listed
/// without one.
class TVTYPES_API SymbolicDimsConstraints {
  public:
    explicit SymbolicDimsConstraints(SymbolicDimsTable* table);
    SymbolicDimsConstraints(const SymbolicDimsConstraints&) = delete;
    SymbolicDimsConstraints& operator=(const SymbolicDimsConstraints&) = delete;
    ~SymbolicDimsConstraints();

    /// States that two sizes are equal; of a size and itself nothing is kept. Refused:
    /// TorvaneTypes::Dimensions::InconsistentSymbolicDimensionNotEqual (the greater, the lesser,
    /// the lesser) if one is known to be greater than the other.
    void addEqual(int a, int b, const TVBlock* block) const;
    /// States that the first is greater than the second; of a size and itself nothing is kept.
    /// Refused: TorvaneTypes::Dimensions::InconsistentSymbolicDimensionEqual (a, b, b) if they are
    /// known to be equal, InconsistentSymbolicDimensionGreaterThan (a, b, b) if the second is
    /// known to be greater.
    void addGreaterThan(int a, int b, const TVBlock* block) const;

    /// Whether two sizes are known to be equal. A size of which nothing equal was stated does not
    /// even equal itself.
    bool isEqual(int a, int b) const;
    /// Whether greater-than facts lead from the first to the second.
    bool isGreaterThan(int a, int b) const;

    /// Replaces the list by all pairs of the size that stands for equal ones, the lowest id of
    /// them, and one of them.
    void getEquivalentSymbolicDims(std::list<std::pair<const int, const int>>& pairs) const;
    /// Replaces the list by all pairs of a greater and a lesser size that were stated.
    void getGreaterThanSymbolicDims(std::list<std::pair<const int, const int>>& pairs) const;

    /// Replaces the vector by all facts, those of equality first: for each pair of the lists above
    /// the expression that states it. Its blocks, in the order of their addresses, are for an equal
    /// pair those that brought its second size in; for a greater-than pair all that stated anything
    /// to be less than its first.
    void getSymbolicDimsConstraints(std::vector<SymbolicDimsConstraint>& constraints) const;
    /// The same without blocks.
    void getSymbolicDimsConstraints(std::vector<int>& constraintIds) const;
    /// Replaces the vector by the facts that a block stated, as it stated them, in ascending order.
    void getSymbolicDimsConstraints(const TVBlock* block, std::vector<int>& constraintIds) const;
    /// The same for all blocks that `blockOf` maps to `block`. An empty function throws
    /// boost::bad_function_call where it would be called, and the vector stays as it was.
    void getSymbolicDimsConstraints(const TVBlock* block,
                                    boost::function<const TVBlock*(const TVBlock*)> blockOf,
                                    std::vector<int>& constraintIds) const;

  private:
    class TVTYPES_LOCAL Impl;
    std::unique_ptr<Impl> impl_;
};

} // namespace TVTypeSys
