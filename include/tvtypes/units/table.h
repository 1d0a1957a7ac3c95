/// \file
/// Table of the units of a model.
#pragma once

#include <tvtypes/export.h>
#include <tvtypes/units/unit.h>

#include <boost/unordered/unordered_map.hpp>

#include <cstddef>
#include <iosfwd>
#include <map>
#include <memory>
#include <string>

/// \addtogroup units
/// @{

class tvsvDiagnosticImpl;
struct Monomial;

namespace TVTypeSys {

/// Ids of unit expressions. -1 is "inherit", 0 is "unitless", further ids count from 1; -10 denotes
/// the absence of a unit.
///
/// The unit of a text that is a name, symbol or alias of the unit database is a copy of that unit;
/// any other text defines a composite unit, which is in this table only. Its factor is the product
/// of the factors of its units; if that overflows 32 bits, it is the factor that the database lists
/// for the product, or wraps if there is none. Each spelling has an id of its own. Units of the
/// table refer to units of the database, which must not be cleared before the table is destroyed or
/// reset. A table may be used by one thread at a time; different tables may be used by different
/// threads. An operation that throws changes nothing.
class TVTYPES_API UnitTable {
  public:
    /// Creates a table with "inherit" and "unitless". Loads the unit database if it is not loaded,
    /// and throws what UnitDatabase::getUnitDatabase throws.
    UnitTable();
    UnitTable(const UnitTable&) = delete;
    UnitTable& operator=(const UnitTable&) = delete;
    virtual ~UnitTable();

    /// Destroys all units but those with the two lowest ids; new ids count from there. The
    /// remaining units are found under their expressions.
    virtual void resetToBuiltin();

    /// Returns the id of an expression, which is registered if it is new: the greatest id plus one.
    /// \param expression UTF-8; null counts as ""
    /// \param parse      whether to build the canonical form of a composite unit
    ///
    /// Throws TorvaneTypes::Unit::InvalidUnitExpression (text) if the text is neither an expression
    /// of names in the database nor "inherit" or "unitless", and
    /// TorvaneTypes::general::InvalidDataTypeId (greatest id) if no greater id is left. A
    /// registered text takes one search; a new one one search for each of its names and tokens.
    virtual int registerUnit(const char* expression, bool parse);

    /// Prints the number of units and their addresses, for debugging.
    virtual void print(std::ostream& stream) const;

    /// Registers "inherit" and "unitless". They are registered by the constructor.
    void initialize();
    /// Creates the shared units from which getNumBaseUnits() is counted. Called by initialize().
    static void initializeBuiltInUnits();

    /// Calls registerUnit(expression, true), for callers that do not use exceptions.
    /// \param table      not null
    /// \param blockPath  null, "", or the path that an error reports
    /// \param expression UTF-8; null counts as ""
    /// \param id         set to the id on success; not null
    /// \return null on success, else a diagnostic that the caller owns. It ends with
    ///         TorvaneTypes::general::DataTypeErrorFromBlock (path) if there is a path.
    static tvsvDiagnosticImpl* RegisterUnit(UnitTable* table, const char* blockPath,
                                            const char* expression, int* id);

    /// Returns whether the text is an expression of names in the database.
    static bool isAValidUnit(const char* text);
    /// Throws TorvaneTypes::general::InvalidDataType (text) unless isAValidUnit(text). As with
    /// registerUnit(), the sentence has the first unknown name of an expression.
    static void validateUnitExpr(const char* text);

    /// Returns the id of a registered text; -10 if it is not registered.
    int getUnitId(const char* expression) const;

    /// Returns the unit with this id, which the table owns; null if there is none. Logarithmic in
    /// the number of units.
    const UnitBase* getUnit(int id) const;

    /// Registers `expression` as a text of the id of a unit, and adds the unit under this id. The
    /// table takes ownership and makes no copy. If the id has a unit already, that one stays and
    /// `unit` is destroyed. Null is ignored. Neither the id nor the text is checked. If it throws
    /// std::bad_alloc, the caller still owns the unit.
    void addUnit(const std::u16string& expression, UnitBase* unit);

    /// Removes a unit and destroys it. Throws TorvaneTypes::general::InvalidDataTypeId (id) if the
    /// table does not have this object; the id of null is -10.
    void removeUnit(const UnitBase* unit);

    /// Returns whether two units are equivalent (UnitBase::equivalentToUnit). False if both ids are
    /// -1 or 0. Throws InvalidDataTypeId (id) if the table does not have an id.
    bool equivalentUnits(int a, int b) const;

    /// Throws TorvaneTypes::general::InvalidDataTypeId (id) if the table does not have the id.
    void checkUnitId(int id) const;
    /// Returns whether the table has the id.
    bool isUnitIdValid(int id) const;
    /// Returns whether the table has the id and it is not -1.
    bool isUnitIdValid_NotInherit(int id) const;
    /// Returns the number of units, with "inherit" and "unitless".
    std::size_t getNumUnits() const;

    /// Returns 1: "unitless".
    static int getNumBaseUnits();

    /// \name Predefined units
    /// @{

    /// No id and no text counts as a predefined unit: these return false, -10, null and false.
    bool isPredefinedUnit(int id) const;
    int getBaseUnit(const char* expression) const;
    const char* getExprOfBaseUnit(int id) const;
    bool exprOfBaseUnit(const char* expression) const;
    /// @}

  private:
    struct Entry {
        std::unique_ptr<UnitBase> unit;
        unsigned serial;
    };
    /// Registration of a text. It has lapsed if the id now has a unit with another serial number.
    struct Registration {
        int id;
        unsigned serial;
        unsigned generation; ///< of the database that has the names of the text; 0 if not looked up
    };

    /// Does what registerUnit() does. Returns an invalid expression as an error, which the caller
    /// owns.
    TVTYPES_LOCAL int findOrRegister(const char* expression, bool parse,
                                     tvsvDiagnosticImpl*& error);
    /// Makes room for another expression. The hash of each expression is computed again then, so
    /// the room grows faster than by default.
    TVTYPES_LOCAL void reserveExpression();
    const Registration* registrationOf(const std::u16string& text) const;
    int newId() const;
    /// Creates the unit of a text from its names and powers. Without powers, a composite unit gets
    /// no canonical form. Returns null if a name is not in the database.
    std::unique_ptr<UnitBase> makeUnit(const std::u16string& text, const Monomial* terms) const;
    /// Takes the unit unless it throws std::bad_alloc; a unit whose id is in use stays with the
    /// caller.
    void enter(const std::u16string& text, std::unique_ptr<UnitBase>& unit, unsigned generation);

    std::map<int, Entry> idToUnit_;
    boost::unordered_map<std::u16string, Registration> exprToId_;
    unsigned latestSerial_ = 0;
};

/// Calls table.print().
TVTYPES_API std::ostream& operator<<(std::ostream& stream, const UnitTable& table);

} // namespace TVTypeSys

/// @}
