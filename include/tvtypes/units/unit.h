/// \file
/// Units, concrete and abstract.
///
/// A concrete unit is a measure, such as the kilometre; an abstract unit is a quantity, such as
/// length. Either is defined by an expression over units of its own kind, with a scale and an
/// offset: a value x of the unit is scaling * x + offset in its expression. The canonical form is
/// what the expression comes to in fundamental units, with one factor for all of it.
///
/// What is refused here carries the ids of TorvaneTypes::Unit.
#pragma once

#include <tvtypes/export.h>
#include <tvtypes/units/rational.h>

#include <boost/core/ref.hpp>

#include <cstdint>
#include <iosfwd>
#include <map>
#include <set>
#include <string>
#include <vector>

struct Monomial;

namespace TVTypeSys {

class UnitSystem;

class TVTYPES_API UnitBase {
  public:
    /// What a canonical form or a list of terms says of one unit.
    struct UnitExprTermInfo {
        std::int32_t power;
        std::int32_t secondary; ///< always 0; added and compared along with the power
    };

    struct TVTYPES_API ConstUnitBaseRefComparator {
        bool operator()(const UnitBase& a, const UnitBase& b) const { return a.compare(b) < 0; }
    };
    struct TVTYPES_API UnitsComparator {
        bool operator()(const UnitBase* a, const UnitBase* b) const { return a->compare(*b) < 0; }
    };

    using Reference = boost::reference_wrapper<const UnitBase>;
    using TermMap = std::map<Reference, UnitExprTermInfo, ConstUnitBaseRefComparator>;
    using ReferenceSet = std::set<Reference, ConstUnitBaseRefComparator>;

    /// Without name, symbol and id.
    UnitBase(const std::u16string& expression, const Rational& scaling, const Rational& offset);
    UnitBase(int id, const std::u16string& name, const std::u16string& expression,
             const std::string& display, const Rational& scaling, const Rational& offset);
    /// Copies every field. The keys of the maps refer to the same units as before, and the flags
    /// of lost digits are gone, as in every copy of a Rational.
    UnitBase(const UnitBase& other) = default;
    UnitBase& operator=(const UnitBase&) = delete;

    /// 0; 1 for an abstract and 2 for a concrete unit.
    virtual int getUnitType() const;
    /// A copy on the heap, which the caller owns.
    virtual UnitBase* clone() const = 0;
    virtual ~UnitBase();
    virtual void setId(int id);
    virtual int getId() const;

    /// Finds the terms of the expression and builds the canonical form and the factor, once on a
    /// new unit: a second run adds all of it again. A term with an offset is not taken apart, but
    /// stays in the canonical form as it is. A power that adds up to 0 stays as well.
    /// Refused: ParsingError (expression), with nothing changed; UnitNotInDatabase (name), with the
    /// terms ahead of that name taken in. Warns with LossOfPrecision (symbol) if `scaling` has lost
    /// digits.
    virtual void parseExpressionAndGenerateAST();

    /// "Unit : 'kg*m/s^2'" and a line end.
    virtual void print(std::ostream& stream) const;

    /// What a value in this unit is to be multiplied by to have it in the other. Offsets do not
    /// enter. 1 between units that compare as equal, and between abstract ones. Refused:
    /// UnitsNotSeparatedByScalingFactor (name, name) unless both are compatible and have equal
    /// canonical forms.
    virtual double getScalingFactorToConvertTo(const UnitBase& other) const = 0;

    /// Whether values of both can be set beside each other at all.
    virtual bool compatibleWithUnit(const UnitBase& other) const = 0;

    /// Whether both mean the same.
    virtual bool equivalentToUnit(const UnitBase& other) const = 0;

    /// The symbol of the fundamental unit at a position below 8, in the order of names.
    virtual const std::u16string& getBaseUnitSymbol(unsigned long index) const = 0;

    /// The unit of this kind that a name, symbol or alias means: of several, the least.
    /// Refused: UnitNotInDatabase (text).
    virtual Reference getFirstMatchingUnitInDatabase(const std::u16string& text) const = 0;

    /// A constant text.
    virtual std::string createUniqueUnitID() const = 0;

    /// The expression.
    const std::u16string& getDisplayString() const { return expression; }

    /// Symbols of the fundamental units with their powers: kg^1m^1s^-2. They are in the order of
    /// the names.
    void displayCanonicalForm(std::ostream& stream) const;

    /// The one order of units, by name, symbol and, where the scales are equal, expression, all by
    /// code units. Otherwise 1 if the other's scale is greater than this one's, else 0; so units
    /// that differ in scale alone are equal to every map, and 0 does not say that scales agree.
    int compare(const UnitBase& other) const;

    /// Whether the canonical forms are equal, entries of power 0 included.
    bool dimensionallyEquivalentWithUnit(const UnitBase& other) const;

    /// Adds to an entry of a map, or makes it.
    void addUnitInfo(Reference unit, const UnitExprTermInfo& info);
    void addToFundamentalExprAST(Reference unit, UnitExprTermInfo info);

    /// Multiplies the factor by a power of another. 1/1*1e0 and the power 0 change nothing.
    void updateBaseScalingFactor(const Rational& factor, int power);

    /// Whether the database has a concrete unit with this name, symbol or alias.
    static bool isValidUnitName(const std::u16string& text);

    /// Whether the text has letters and digits only; true for an empty one.
    static bool isValidStringForUnitName(const std::u16string& text);

    /// Whether the text is a unit expression and the database has all of its names.
    static bool isValidUnitExpr(const std::u16string& text);

    std::int32_t id = -10;
    std::u16string name;   ///< "Kilogram"
    std::u16string symbol; ///< "kg"
    std::vector<std::u16string> aliases;
    std::u16string spareText;
    std::string display; ///< how to show the unit, in UTF-8
    std::u16string expression;
    Rational scaling;
    Rational offset;
    bool spareFlag = false;
    TermMap exprTermMap;        ///< the expression as written. Keys are owned elsewhere
    TermMap fundamentalExprAST; ///< the canonical form. Keys are owned elsewhere
    Rational baseScalingFactor; ///< from this unit to the fundamental ones

  private:
    friend class UnitTable;
    void addTerms(const Monomial& terms);
};

TVTYPES_API std::ostream& operator<<(std::ostream& stream, const UnitBase& unit);

/// A measure.
class TVTYPES_API Unit : public UnitBase {
  public:
    Unit(const std::u16string& expression, const Rational& scaling, const Rational& offset,
         Reference abstractUnit);
    Unit(int id, const std::u16string& name, const std::u16string& expression,
         const std::string& display, const Rational& scaling, const Rational& offset,
         Reference abstractUnit);

    int getUnitType() const override;
    Unit* clone() const override;
    double getScalingFactorToConvertTo(const UnitBase& other) const override;
    /// Whether the other is concrete, has the same compatibility key and an equivalent abstract
    /// unit.
    bool compatibleWithUnit(const UnitBase& other) const override;
    /// Whether they are compatible, their scale and factor have the same form, and their
    /// expressions are equal or else their canonical forms.
    bool equivalentToUnit(const UnitBase& other) const override;
    const std::u16string& getBaseUnitSymbol(unsigned long index) const override;
    Reference getFirstMatchingUnitInDatabase(const std::u16string& text) const override;
    std::string createUniqueUnitID() const override;
    virtual bool isCommonSubUnit() const;

    /// Appends the unit system of this name. The database's lack of one is passed over.
    void addOwnerUnitSystem(const std::u16string& systemName);

    Reference abstractUnit;                    ///< what it measures; owned elsewhere
    std::vector<UnitSystem*> ownerUnitSystems; ///< owned by the database
    std::string compatibilityKey;              ///< compared up to its first null character
    bool spareFlag2 = false;
    bool commonSubUnit = false;
};

/// A quantity.
class TVTYPES_API AbstractUnit : public UnitBase {
  public:
    using UnitBase::UnitBase;

    int getUnitType() const override;
    AbstractUnit* clone() const override;
    double getScalingFactorToConvertTo(const UnitBase& other) const override;
    /// Whether the other is abstract.
    bool compatibleWithUnit(const UnitBase& other) const override;
    /// The default abstract unit is equivalent to every abstract unit. Otherwise names decide if
    /// both have one, then symbols, then the canonical forms.
    bool equivalentToUnit(const UnitBase& other) const override;
    const std::u16string& getBaseUnitSymbol(unsigned long index) const override;
    Reference getFirstMatchingUnitInDatabase(const std::u16string& text) const override;
    std::string createUniqueUnitID() const override;
};

/// The only maker of units. Each of them is new and owned by the caller, and its expression has
/// not been read yet.
class TVTYPES_API UnitFactory {
  public:
    /// Names of unit systems that the database does not have are passed over.
    static Unit* createUnit(int id, const std::u16string& name, const std::u16string& expression,
                            const std::string& display, const Rational& scaling,
                            const Rational& offset, const std::vector<std::u16string>& aliases,
                            const std::string& compatibilityKey,
                            const std::vector<std::u16string>& unitSystemNames, bool commonSubUnit,
                            const UnitBase::Reference& abstractUnit);
    static Unit* createUnit(const std::u16string& expression, const Rational& scaling,
                            const Rational& offset, const UnitBase::Reference& abstractUnit);
    static AbstractUnit* createAbstractUnit(int id, const std::u16string& name,
                                            const std::u16string& expression,
                                            const std::string& display, const Rational& scaling,
                                            const Rational& offset,
                                            const std::vector<std::u16string>& aliases);
    static AbstractUnit* createAbstractUnit(const std::u16string& expression,
                                            const Rational& scaling, const Rational& offset);

    /// What stands for the absence of a unit, always the same two: without name, symbol and
    /// canonical form, of the expression "Unspecified".
    static UnitBase::Reference getDefaultAbstractUnit();
    static UnitBase::Reference getDefaultUnit();
};

} // namespace TVTypeSys
