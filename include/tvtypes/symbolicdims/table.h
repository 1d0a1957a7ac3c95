/// \file
/// Table of the symbolic dimensions of a model.
#pragma once

#include <tvtypes/export.h>
#include <tvtypes/symbolicdims/constraints.h>
#include <tvtypes/symbolicdims/value.h>

#include <boost/function.hpp>

#include <iosfwd>
#include <list>
#include <memory>
#include <string>
#include <utility>
#include <vector>

/// \addtogroup symbolicdims
/// @{

class TVBlock;
class tvsvDiagnosticImpl;

namespace TV {
class SymbolicExpr;
class SymbolicExprTable;
} // namespace TV

namespace TVTypeSys {

/// Ids of sizes: integers, names, expressions of them, and lists of them for signals of several
/// dimensions. -1 is "INHERIT", a size that is determined elsewhere; 0 is "NOSYMBOLIC", for a
/// signal without a symbolic dimension; further ids count from 1.
///
/// Sizes that are written alike have one id, which is valid until resetToBuiltin(). It is the id of
/// the expression in the table's TV::SymbolicExprTable minus one. A table may be used by one thread
/// at a time, tables of their own by any number of threads; reads may add expressions.
///
/// An operation that runs out of memory throws std::bad_alloc and can be called again. A
/// registration registers nothing then; arithmetic and relations may have registered intermediate
/// expressions, which get the same ids as without the failure.
class TVTYPES_API SymbolicDimsTable {
  public:
    /// Creates a table with "INHERIT" and "NOSYMBOLIC".
    SymbolicDimsTable();
    SymbolicDimsTable(const SymbolicDimsTable&) = delete;
    SymbolicDimsTable& operator=(const SymbolicDimsTable&) = delete;
    ~SymbolicDimsTable();

    /// Registers "INHERIT" and "NOSYMBOLIC", which the constructor has done.
    void initialize();
    /// Removes all relations and all ids above 0. Invalidates values of the table and the texts
    /// that getDisplayString() has returned.
    void resetToBuiltin();

    /// Returns whether the table has the id.
    bool isSymbolicDimsIdValid(int id) const;
    /// Returns whether the table has the id and it is not -1.
    bool isSymbolicDimsIdValid_NotInherit(int id) const;
    /// Throws TorvaneTypes::general::InvalidDataTypeId (id) if the table does not have the id.
    void checkSymbolicDimsId(int id) const;
    /// Returns the number of ids, with -1 and 0.
    int getNumSymbolicDimss() const;

    /// Registers a name or integer and returns its id. A text that strtol with base 0 reads
    /// completely is an integer, and must be one for boost::lexical_cast to int too: `010` is ten;
    /// `0x10`, "" and integers beyond int throw boost::bad_lexical_cast. Any other text is a name
    /// and not parsed, `N+1` too. Null counts as "".
    int registerSymbolicDims(const char* text);
    /// Registers an integer and returns its id.
    int registerSymbolicDims(int value);
    /// Registers a list of sizes and returns its id; for one size returns the id of this size.
    /// Texts of decimal digits are integers (beyond int they throw boost::bad_lexical_cast, with
    /// nothing registered), all other texts names, `-3` and "" too.
    int registerSymbolicDims(const std::vector<std::string>& sizes);
    /// Parses an expression, registers it as written and returns its id. Throws
    /// TorvaneTypes::Dimensions::InvalidSymbolicDimensionExpr (text, column from 1) for a syntax
    /// error; null counts as "".
    int registerSymbolicDimsExpr(const char* text);
    /// Registers an expression of another table and returns its id here. Throws InvalidDataTypeId
    /// (id) if the other table does not have it.
    int importSymbolicDims(const SymbolicDimsTable& source, int id);
    /// Calls registerSymbolicDims(dims), for callers that do not use exceptions; but
    /// boost::bad_lexical_cast is not caught.
    /// \param table     not null
    /// \param blockName null, "", or the name that an error reports
    /// \param dims      null counts as ""
    /// \param idOut     set to the id on success; not null
    /// \return null on success, else a diagnostic that the caller owns. It ends with
    ///         TorvaneTypes::general::DataTypeErrorFromBlock (name) if there is a name.
    static tvsvDiagnosticImpl* RegisterSymbolicDims(SymbolicDimsTable* table, const char* blockName,
                                                    const char* dims, int* idOut);

    /// Returns whether a text is a C identifier.
    static bool isAValidSymbolicDims(const char* text);
    /// Throws TorvaneTypes::general::InvalidDataType (text) unless isAValidSymbolicDims(text).
    static void validateSymbolicDimsExpr(const char* text);

    /// \name Values
    /// @{

    /// Returns the value with this id, which is not checked. The overload for non-const tables
    /// resolves getSymbolicDims(0), where 0 could also be a null pointer.
    SymbolicDims getSymbolicDims(int id) const;
    SymbolicDims getSymbolicDims(int id) { return {this, id}; }
    /// @}

    /// Registers a name and returns its value. The text is not parsed: an integer is a name too.
    /// Null counts as "".
    SymbolicDims getSymbolicDims(const char* name);
    /// Returns the value at a position of the table, 0 for "INHERIT". The position is not checked.
    SymbolicDims getSymbolicDimsAt(unsigned long index) const;
    /// Returns the expression with this id of the expression table, one more than the id here. The
    /// table owns it. Throws InvalidDataTypeId (the id here) if there is none.
    const TV::SymbolicExpr& getSymbolicExpr(unsigned long expressionId) const;
    /// Returns the text of SymbolicDims::toString, which is computed once. Valid until this is
    /// called again after the table has grown. Throws InvalidDataTypeId (id) if there is no such
    /// id.
    const char* getDisplayString(int id);

    /// Prints the number of sizes and a line for each.
    void print(std::ostream& stream) const;

    /// \name Relations
    /// @{

    /// States a relation between two ids, or an id and an integer, which is registered. `block` is
    /// the block that states it and may be null. Errors are those of SymbolicDimsConstraints.
    void addEqualRelation(int a, int b, const TVBlock* block);
    void addGreaterThanRelation(int a, int b, const TVBlock* block);
    void addEqualConstraint(int a, int value, const TVBlock* block);
    void addGreaterThanConstraint(int a, int value, const TVBlock* block);
    void addLessThanConstraint(int a, int value, const TVBlock* block);
    /// @}

    /// \name Queries
    /// @{

    /// Returns whether a relation is known, as SymbolicDimsConstraints determines it. An integer is
    /// registered.
    bool hasEqualRelation(int a, int b) const;
    bool hasGreaterThanRelation(int a, int b) const;
    bool hasEqualConstraint(int a, int value);
    bool hasGreaterThanConstraint(int a, int value);
    bool hasLessThanConstraint(int a, int value);
    /// @}

    /// \name Lists of relations
    /// @{

    /// Replaces the argument by the relations that the function of SymbolicDimsConstraints with
    /// this name lists.
    void getEquivalentSymbolicDims(std::list<std::pair<const int, const int>>& pairs) const;
    void getGreaterThanSymbolicDims(std::list<std::pair<const int, const int>>& pairs) const;
    void getSymbolicDimsConstraints(std::vector<SymbolicDimsConstraint>& constraints);
    void getSymbolicDimsConstraints(std::vector<int>& constraintIds);
    void getSymbolicDimsConstraints(const TVBlock* block, std::vector<int>& constraintIds) const;
    void getSymbolicDimsConstraints(const TVBlock* block,
                                    boost::function<const TVBlock*(const TVBlock*)> blockOf,
                                    std::vector<int>& constraintIds) const;
    /// @}

  private:
    friend class SymbolicDims;
    friend class SymbolicDimsConstraints;
    friend class SymbolicDimsString;
    friend class SymbolicDimsIntValue;
    friend class SymbolicDimsND;

    std::unique_ptr<TV::SymbolicExprTable> expressions_;
    std::unique_ptr<SymbolicDimsConstraints> constraints_;
    std::vector<std::string> displayStrings_;
};

/// Calls table.print().
TVTYPES_API std::ostream& operator<<(std::ostream& stream, const SymbolicDimsTable& table);

} // namespace TVTypeSys

/// @}
