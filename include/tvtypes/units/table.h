/// \file
/// The units of a model, by id.
#pragma once

#include <tvtypes/export.h>
#include <tvtypes/units/unit.h>

#include <boost/unordered/unordered_map.hpp>

#include <cstddef>
#include <iosfwd>
#include <map>
#include <memory>
#include <string>

class tvsvDiagnosticImpl;
struct Monomial;

namespace TVTypeSys {

/// Gives ids to unit expressions. -1 is "inherit", 0 is "unitless", the others count from 1; -10
/// stands for the absence of a unit.
///
/// A text that is a name, symbol or alias in the unit database stands for a copy of that unit, any
/// other for a unit of this table alone that the database knows nothing of. Each spelling has an id
/// of its own. Units refer to those of the database, which must not be cleared before them. A
/// table is used by one thread at a time.
class TVTYPES_API UnitTable {
  public:
    /// With "inherit" and "unitless". Loads the unit database if that has not been done, and is
    /// refused as that is.
    UnitTable();
    UnitTable(const UnitTable&) = delete;
    UnitTable& operator=(const UnitTable&) = delete;
    virtual ~UnitTable();

    /// Forgets all units but the first two by id; ids are given from there again. These two are
    /// then found under their expressions.
    virtual void resetToBuiltin();

    /// The id of an expression, in UTF-8. A new one is given the greatest id plus one. Without
    /// `parse` a unit that is not in the database gets no canonical form.
    /// Refused: TorvaneTypes::Unit::InvalidUnitExpression (text) for what is no expression of names
    /// in the database, other than "inherit" and "unitless"; null counts as "".
    virtual int registerUnit(const char* expression, bool parse);

    /// The ids and addresses of units, for those who look for a mistake.
    virtual void print(std::ostream& stream) const;

    void initialize();
    static void initializeBuiltInUnits();

    /// registerUnit, for callers that do not work with exceptions: null and the id, or what was
    /// refused, as a diagnostic that the caller owns. It ends with
    /// TorvaneTypes::general::DataTypeErrorFromBlock (path) if `blockPath` is not empty.
    static tvsvDiagnosticImpl* RegisterUnit(UnitTable* table, const char* blockPath,
                                            const char* expression, int* id);

    /// Whether the text is an expression of names in the database.
    static bool isAValidUnit(const char* text);
    /// Refused if it is not: TorvaneTypes::general::InvalidDataType (text).
    static void validateUnitExpr(const char* text);

    /// The id of a text that has been registered, or -10.
    int getUnitId(const char* expression) const;

    /// The unit with this id, which the table owns; null if there is none.
    const UnitBase* getUnit(int id) const;

    /// Enters a unit under its own id, and the expression as a text for that id. Takes the unit
    /// over. An id that is there keeps the unit that it has. Null is passed over.
    void addUnit(const std::u16string& expression, UnitBase* unit);

    /// Forgets a unit and destroys it. Refused: TorvaneTypes::general::InvalidDataTypeId (id) for a
    /// unit that is not one of this table; null has the id -10.
    void removeUnit(const UnitBase* unit);

    /// Whether the two units mean the same. False if both ids are -1 or 0. Refused:
    /// InvalidDataTypeId for an id that the table does not have.
    bool equivalentUnits(int a, int b) const;

    /// Refused if the table does not have the id: TorvaneTypes::general::InvalidDataTypeId (id).
    void checkUnitId(int id) const;
    bool isUnitIdValid(int id) const;
    bool isUnitIdValid_NotInherit(int id) const;
    std::size_t getNumUnits() const;

    /// 1: "unitless".
    static int getNumBaseUnits();

    /// No id and no text is that of a predefined unit: false, -10, null and false for all.
    bool isPredefinedUnit(int id) const;
    int getBaseUnit(const char* expression) const;
    const char* getExprOfBaseUnit(int id) const;
    bool exprOfBaseUnit(const char* expression) const;

  private:
    struct Entry {
        std::unique_ptr<UnitBase> unit;
        unsigned serial;
    };
    /// What a text is registered as. It has lapsed if the unit with this id is another by now.
    struct Registration {
        int id;
        unsigned serial;
        unsigned generation; ///< of the database in which the text was found to be valid
    };

    const Registration* registrationOf(const std::u16string& text) const;
    int newId() const;
    std::unique_ptr<UnitBase> makeUnit(const std::u16string& text, const Monomial* terms) const;
    void enter(const std::u16string& text, std::unique_ptr<UnitBase> unit, unsigned generation);

    std::map<int, Entry> idToUnit_;
    boost::unordered_map<std::u16string, Registration> exprToId_;
    unsigned latestSerial_ = 0;
};

TVTYPES_API std::ostream& operator<<(std::ostream& stream, const UnitTable& table);

} // namespace TVTypeSys
