/// \file
/// A symbolic dimension as a value, with arithmetic.
#pragma once

#include <tvtypes/export.h>

#include <iosfwd>
#include <string>
#include <vector>

namespace TVTypeSys {

class SymbolicDimsTable;

/// A table and an id. The table has to outlive it and must not be reset. Ids are not checked when a
/// value is made; what reads the expression of an id that the table does not have is refused with
/// TorvaneTypes::general::InvalidDataTypeId (id).
class TVTYPES_API SymbolicDims {
  public:
    SymbolicDims(SymbolicDimsTable* table, int id) : table_(table), id_(id) {}

    int getId() const { return id_; }

    /// The expression in writing, such as `2*N+1` or `[2,N]`.
    std::string toString() const;
    /// The same, but "" for "INHERIT" and "NOSYMBOLIC".
    std::string getExprWithEmptyInherit() const;

    /// The simplified result, in the table of the left operand. The table of the right one is not
    /// looked at: its id is read as one of the left one's.
    SymbolicDims operator+(const SymbolicDims& right) const;
    SymbolicDims operator-(const SymbolicDims& right) const;
    SymbolicDims operator*(const SymbolicDims& right) const;
    /// A quotient by what is identically zero stays as it is written.
    SymbolicDims operator/(const SymbolicDims& right) const;
    /// The negation as it is written, not simplified.
    SymbolicDims operator-() const;

    /// How many dimensions there are: the entries of a list; 1 for all else and the empty list.
    unsigned long getNumDimensions() const;
    /// A dimension, from 0; what is no list, or an empty one, is itself for every index. Refused:
    /// TorvaneTypes::Dimensions::InvalidDimensionIndex (index, number of dimensions).
    SymbolicDims getDimension(unsigned long index) const;
    /// The product of the first dimensions, simplified. `count` 0 counts as 1. What is no list is
    /// itself. Refused, with nothing added: InvalidDimensionIndex as above.
    SymbolicDims getSize(unsigned long count) const;
    /// The product of all dimensions, simplified; a list of one stays this list.
    SymbolicDims getSize() const;

    /// One line: `SymbolicDims : 'N+1'`.
    void print(std::ostream& stream) const;

  private:
    SymbolicDimsTable* table_;
    int id_;
};

/// A name as it is given, not parsed.
class TVTYPES_API SymbolicDimsString : public SymbolicDims {
  public:
    SymbolicDimsString(SymbolicDimsTable& table, const std::string& name);
    SymbolicDimsString(SymbolicDimsTable* table, const std::string& name);
};

class TVTYPES_API SymbolicDimsIntValue : public SymbolicDims {
  public:
    SymbolicDimsIntValue(SymbolicDimsTable& table, int value);
    SymbolicDimsIntValue(SymbolicDimsTable* table, int value);
};

/// A list of dimensions, by their ids. Refused: TorvaneTypes::general::InvalidDataTypeId (id) for
/// one that the table does not have.
class TVTYPES_API SymbolicDimsND : public SymbolicDims {
  public:
    SymbolicDimsND(SymbolicDimsTable& table, const std::vector<int>& dimensions);
    SymbolicDimsND(SymbolicDimsTable* table, const std::vector<int>& dimensions);
};

TVTYPES_API std::ostream& operator<<(std::ostream& stream, const SymbolicDims& dims);

} // namespace TVTypeSys

/// Ids of symbolic dimensions to those of expressions: each plus one.
TVTYPES_API std::vector<unsigned long>
convertSymbDimsId2SymbolicExprId(const std::vector<int>& symbolicDimsIds);
