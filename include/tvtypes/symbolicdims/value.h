/// \file
/// Symbolic dimensions as values with arithmetic.
#pragma once

#include <tvtypes/export.h>

#include <cassert>
#include <iosfwd>
#include <string>
#include <vector>

/// \addtogroup symbolicdims
/// @{

namespace TVTypeSys {

class SymbolicDimsTable;

/// A table and an id. The table must outlive the value and must not be reset. The id is not checked
/// on construction; operations that read its expression throw
/// TorvaneTypes::general::InvalidDataTypeId (id) if the table does not have it.
class TVTYPES_API SymbolicDims {
  public:
    /// Refers to an id of a table. \pre `table` is not null.
    SymbolicDims(SymbolicDimsTable* table, int id) : table_(table), id_(id) {
        assert(table != nullptr);
    }

    /// Returns the id.
    int getId() const { return id_; }

    /// Returns the text of the expression, such as `2*N+1` or `[2,N]`.
    std::string toString() const;
    /// Returns the text of the expression; "" for "INHERIT" and "NOSYMBOLIC".
    std::string getExprWithEmptyInherit() const;

    /// \name Arithmetic
    /// @{

    /// Returns the simplified result, in the table of the left operand. The right operand's id is
    /// taken as an id of this table too. A quotient by what is identically zero is not simplified.
    SymbolicDims operator+(const SymbolicDims& right) const;
    SymbolicDims operator-(const SymbolicDims& right) const;
    SymbolicDims operator*(const SymbolicDims& right) const;
    SymbolicDims operator/(const SymbolicDims& right) const;
    /// @}

    /// Returns the negation, which is not simplified.
    SymbolicDims operator-() const;

    /// Returns the number of entries of a list; 1 for all else and the empty list.
    unsigned long getNumDimensions() const;
    /// Returns an entry of a list, from 0; all else and the empty list return themselves for every
    /// index. Throws TorvaneTypes::Dimensions::InvalidDimensionIndex (index, number of dimensions)
    /// if the list has no such entry.
    SymbolicDims getDimension(unsigned long index) const;
    /// Returns the simplified product of the first `count` dimensions; a count of 0 is taken as 1.
    /// What is not a list returns itself. Throws InvalidDimensionIndex (number of dimensions,
    /// number of dimensions), with nothing registered, if there are fewer.
    SymbolicDims getSize(unsigned long count) const;
    /// Returns the simplified product of all dimensions; a list of one returns itself.
    SymbolicDims getSize() const;

    /// Prints one line: `SymbolicDims : 'N+1'`.
    void print(std::ostream& stream) const;

  private:
    SymbolicDimsTable* table_;
    int id_;
};

/// A name, which is not parsed.
class TVTYPES_API SymbolicDimsString : public SymbolicDims {
  public:
    /// \name Constructors
    /// @{

    /// Registers a name. \pre `table` is not null.
    SymbolicDimsString(SymbolicDimsTable& table, const std::string& name);
    SymbolicDimsString(SymbolicDimsTable* table, const std::string& name);
    /// @}
};

/// An integer.
class TVTYPES_API SymbolicDimsIntValue : public SymbolicDims {
  public:
    /// \name Constructors
    /// @{

    /// Registers an integer. \pre `table` is not null.
    SymbolicDimsIntValue(SymbolicDimsTable& table, int value);
    SymbolicDimsIntValue(SymbolicDimsTable* table, int value);
    /// @}
};

/// A list of dimensions.
class TVTYPES_API SymbolicDimsND : public SymbolicDims {
  public:
    /// \name Constructors
    /// @{

    /// Registers a list of dimensions, given by their ids. Throws
    /// TorvaneTypes::general::InvalidDataTypeId (id) if the table does not have one of them.
    /// \pre `table` is not null.
    SymbolicDimsND(SymbolicDimsTable& table, const std::vector<int>& dimensions);
    SymbolicDimsND(SymbolicDimsTable* table, const std::vector<int>& dimensions);
    /// @}
};

/// Calls dims.print().
TVTYPES_API std::ostream& operator<<(std::ostream& stream, const SymbolicDims& dims);

} // namespace TVTypeSys

/// Converts symbolic dimension ids to ids of the expression table, each plus one. The ids are not
/// checked.
TVTYPES_API std::vector<unsigned long>
convertSymbDimsId2SymbolicExprId(const std::vector<int>& symbolicDimsIds);

/// @}
