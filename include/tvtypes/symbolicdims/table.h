/// \file
/// The symbolic dimensions of a model, by id.
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

class TVBlock;
class tvsvDiagnosticImpl;

namespace TV {
class SymbolicExpr;
class SymbolicExprTable;
} // namespace TV

namespace TVTypeSys {

/// Gives ids to sizes: numbers, names, expressions of them, and lists of them for signals of many
/// dimensions. -1 is "INHERIT", a size that is to be taken from elsewhere; 0 is "NOSYMBOLIC", for a
/// signal without a symbolic dimension; the others count from 1.
///
/// What is written alike has one id, which it keeps until resetToBuiltin(). An id is that of the
/// expression in the table's TV::SymbolicExprTable minus one. Used by one thread at a time; reads
/// may add to the table.
class TVTYPES_API SymbolicDimsTable {
  public:
    SymbolicDimsTable();
    SymbolicDimsTable(const SymbolicDimsTable&) = delete;
    SymbolicDimsTable& operator=(const SymbolicDimsTable&) = delete;
    ~SymbolicDimsTable();

    /// Registers the first two again, which changes nothing.
    void initialize();
    /// Forgets all facts and all ids above 0. Values, and texts from getDisplayString(), are not
    /// valid afterwards.
    void resetToBuiltin();

    bool isSymbolicDimsIdValid(int id) const;
    bool isSymbolicDimsIdValid_NotInherit(int id) const;
    /// Refused if there is no such id: TorvaneTypes::general::InvalidDataTypeId (id).
    void checkSymbolicDimsId(int id) const;
    /// How many ids there are, with the first two.
    int getNumSymbolicDimss() const;

    /// The id of a name or number. A text that strtol with base 0 reads whole is a number, and then
    /// has to be one for boost::lexical_cast to int: `010` is ten; `0x10`, "" and numbers beyond
    /// int throw boost::bad_lexical_cast. All other texts are names as they are, `N+1` too. Null
    /// counts as "".
    int registerSymbolicDims(const char* text);
    int registerSymbolicDims(int value);
    /// The id of a list of sizes; the list of one is this size itself. Entries of decimal digits
    /// alone are numbers (beyond int they throw boost::bad_lexical_cast), all others names, -3 and
    /// "" too.
    int registerSymbolicDims(const std::vector<std::string>& sizes);
    /// The id of the expression that a text is, as it is written. Refused:
    /// TorvaneTypes::Dimensions::InvalidSymbolicDimensionExpr (the text, the column from 1); null
    /// counts as "".
    int registerSymbolicDimsExpr(const char* text);
    /// The id here of an expression of another table. Refused: InvalidDataTypeId (id).
    int importSymbolicDims(const SymbolicDimsTable& source, int id);
    /// registerSymbolicDims of a text, for callers that do not work with exceptions: null and the
    /// id, or what was refused, as a diagnostic that the caller owns. It ends with
    /// TorvaneTypes::general::DataTypeErrorFromBlock (name) if `blockName` is not empty.
    /// boost::bad_lexical_cast passes.
    static tvsvDiagnosticImpl* RegisterSymbolicDims(SymbolicDimsTable* table, const char* blockName,
                                                    const char* dims, int* idOut);

    /// Whether a text is a name: an identifier.
    static bool isAValidSymbolicDims(const char* text);
    /// Refused if it is not: TorvaneTypes::general::InvalidDataType (text).
    static void validateSymbolicDimsExpr(const char* text);

    /// The value with this id, which is not checked.
    SymbolicDims getSymbolicDims(int id) const;
    /// The same; without it 0 could be a null pointer as well as an id.
    SymbolicDims getSymbolicDims(int id) { return {this, id}; }
    /// The value of a name, which is registered. A number is a name here too; null counts as "".
    SymbolicDims getSymbolicDims(const char* name);
    /// The value at a place of the table: at 0 is "INHERIT".
    SymbolicDims getSymbolicDimsAt(unsigned long index) const;
    /// The expression with this id of the expression table (one more than the id here), which the
    /// table owns. Refused: InvalidDataTypeId (the id here).
    const TV::SymbolicExpr& getSymbolicExpr(unsigned long expressionId) const;
    /// What SymbolicDims::toString gives. Valid until the table has got more ids and this is called
    /// again. Refused: InvalidDataTypeId (id).
    const char* getDisplayString(int id);

    void print(std::ostream& stream) const;

    /// Facts, as SymbolicDimsConstraints tells: `a` and `b` are ids, `block` is who states it and
    /// may be null. A value is registered as a number, by the questions too.
    void addEqualRelation(int a, int b, const TVBlock* block);
    void addGreaterThanRelation(int a, int b, const TVBlock* block);
    void addEqualConstraint(int a, int value, const TVBlock* block);
    void addGreaterThanConstraint(int a, int value, const TVBlock* block);
    void addLessThanConstraint(int a, int value, const TVBlock* block);
    bool hasEqualRelation(int a, int b) const;
    bool hasGreaterThanRelation(int a, int b) const;
    bool hasEqualConstraint(int a, int value);
    bool hasGreaterThanConstraint(int a, int value);
    bool hasLessThanConstraint(int a, int value);

    /// Lists of the facts, as SymbolicDimsConstraints tells.
    void getEquivalentSymbolicDims(std::list<std::pair<const int, const int>>& pairs) const;
    void getGreaterThanSymbolicDims(std::list<std::pair<const int, const int>>& pairs) const;
    void getSymbolicDimsConstraints(std::vector<SymbolicDimsConstraint>& constraints);
    void getSymbolicDimsConstraints(std::vector<int>& constraintIds);
    void getSymbolicDimsConstraints(const TVBlock* block, std::vector<int>& constraintIds) const;
    void getSymbolicDimsConstraints(const TVBlock* block,
                                    boost::function<const TVBlock*(const TVBlock*)> blockOf,
                                    std::vector<int>& constraintIds) const;

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

TVTYPES_API std::ostream& operator<<(std::ostream& stream, const SymbolicDimsTable& table);

} // namespace TVTypeSys
