/// \file
/// Units, concrete and abstract.
///
/// A concrete unit is a measure, such as the kilometre; an abstract unit is a quantity, such as
/// length. Each is defined by an expression over units of its kind, a scale and an offset: a value
/// x in the unit is scaling * x + offset in its expression. The canonical form is the expression in
/// powers of fundamental units, with one factor for all of it.
///
/// Message ids of this file are those of TorvaneTypes::Unit.
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

/// \addtogroup units
/// @{

struct Monomial;

namespace TVTypeSys {

class UnitSystem;

/// Base class of units. The texts are UTF-16, but for `display`. The fields are open: a change
/// after the canonical form was built does not update it.
class TVTYPES_API UnitBase {
  public:
    /// Exponent of a unit in a canonical form or in a list of terms.
    struct UnitExprTermInfo {
        std::int32_t power;     ///< the exponent
        std::int32_t secondary; ///< always 0; added and compared together with the power
    };

    /// Orders references to units by compare().
    struct TVTYPES_API ConstUnitBaseRefComparator {
        /// Returns whether `a` is less than `b`.
        bool operator()(const UnitBase& a, const UnitBase& b) const { return a.compare(b) < 0; }
    };
    /// Orders pointers to units, which must not be null, by compare().
    struct TVTYPES_API UnitsComparator {
        /// Returns whether `*a` is less than `*b`.
        bool operator()(const UnitBase* a, const UnitBase* b) const { return a->compare(*b) < 0; }
    };

    /// A unit that is owned elsewhere and must outlive the reference.
    using Reference = boost::reference_wrapper<const UnitBase>;
    /// Exponents by unit.
    using TermMap = std::map<Reference, UnitExprTermInfo, ConstUnitBaseRefComparator>;
    /// Units in the order of compare().
    using ReferenceSet = std::set<Reference, ConstUnitBaseRefComparator>;

    /// Creates a unit with the id -10 and without a name. The expression is not parsed.
    UnitBase(const std::u16string& expression, const Rational& scaling, const Rational& offset);
    /// Creates a unit with an id, which is not checked. The expression is not parsed.
    UnitBase(int id, const std::u16string& name, const std::u16string& expression,
             const std::string& display, const Rational& scaling, const Rational& offset);
    /// Copies every field. The keys of the maps refer to the same units, and precision() of the
    /// numbers is 0, as in every copy of a Rational.
    UnitBase(const UnitBase& other) = default;
    UnitBase& operator=(const UnitBase&) = delete;

    /// Returns 1 for an abstract unit, 2 for a concrete one, 0 for any other class.
    virtual int getUnitType() const;
    /// Returns a copy on the heap, which the caller owns.
    virtual UnitBase* clone() const = 0;
    virtual ~UnitBase();

    /// \name Id
    /// @{

    /// The id in a UnitTable; -10 without one. It is not checked.
    virtual void setId(int id);
    virtual int getId() const;
    /// @}

    /// Parses the expression, looks up its units in the database and builds the canonical form and
    /// the factor. A unit with an offset is not expanded but stays in the canonical form as a term.
    /// A power that sums to 0 stays too.
    ///
    /// \pre The canonical form has not been built: a second call adds everything again.
    ///
    /// Throws ParsingError (expression), with nothing changed; UnitNotInDatabase (name), with the
    /// terms before that name added; std::bad_alloc, with nothing changed. Warns with
    /// LossOfPrecision (symbol) if `scaling` has lost digits. Linear in the length of the
    /// expression, times the logarithm of the number of terms.
    virtual void parseExpressionAndGenerateAST();

    /// Prints "Unit : 'kg*m/s^2'" and a line end.
    virtual void print(std::ostream& stream) const;

    /// Returns the factor by which a value in this unit is multiplied to convert it to `other`.
    /// Offsets are not applied. The factor is 1 between units that compare as equal, and between
    /// abstract units. Throws UnitsNotSeparatedByScalingFactor (name, name of the other) unless the
    /// units are compatible and have equal canonical forms.
    virtual double getScalingFactorToConvertTo(const UnitBase& other) const = 0;

    /// Returns whether values of both units can be compared at all; see the derived classes.
    virtual bool compatibleWithUnit(const UnitBase& other) const = 0;

    /// Returns whether both have the same meaning; see the derived classes.
    virtual bool equivalentToUnit(const UnitBase& other) const = 0;

    /// Returns the symbol of a fundamental unit of this kind, `index` from 0 to 7 in the order of
    /// names;
    /// "" beyond.
    virtual const std::u16string& getBaseUnitSymbol(unsigned long index) const = 0;

    /// Looks up a unit of this kind by name, symbol or alias, in the database and then among the
    /// fundamental units. Returns the least in compare() if there are several. Throws
    /// UnitNotInDatabase (text) if there is none.
    virtual Reference getFirstMatchingUnitInDatabase(const std::u16string& text) const = 0;

    /// Returns a constant text.
    virtual std::string createUniqueUnitID() const = 0;

    /// Returns the expression.
    const std::u16string& getDisplayString() const { return expression; }

    /// Prints the symbols of the canonical form with their powers, in the order of names:
    /// kg^1m^1s^-2.
    void displayCanonicalForm(std::ostream& stream) const;

    /// Three-way comparison by name, symbol and, if the scales are equal, expression, each by code
    /// units. If the scales differ, returns 1 if that of `other` is greater, else 0, and never -1.
    /// So units that differ in scale alone are equivalent in ordered containers, and 0 does not
    /// imply equal scales.
    int compare(const UnitBase& other) const;

    /// Returns whether the canonical forms are equal, entries of power 0 included.
    bool dimensionallyEquivalentWithUnit(const UnitBase& other) const;

    /// \name Terms
    /// @{

    /// Adds to an entry of exprTermMap or fundamentalExprAST, wrapping, or inserts it.
    void addUnitInfo(Reference unit, const UnitExprTermInfo& info);
    void addToFundamentalExprAST(Reference unit, UnitExprTermInfo info);
    /// @}

    /// Multiplies baseScalingFactor by a power of `factor`. The factor 1/1*1e0 and the power 0
    /// change nothing.
    void updateBaseScalingFactor(const Rational& factor, int power);

    /// Returns whether the database has a concrete unit with this name, symbol or alias.
    /// Fundamental units count only if they are in the database too.
    static bool isValidUnitName(const std::u16string& text);

    /// Returns whether the text consists of letters and digits; true for "".
    static bool isValidStringForUnitName(const std::u16string& text);

    /// Returns whether the text is a unit expression all of whose names are in the database.
    static bool isValidUnitExpr(const std::u16string& text);

    std::int32_t id = -10;               ///< id in a UnitTable
    std::u16string name;                 ///< such as "Kilogram"
    std::u16string symbol;               ///< such as "kg"
    std::vector<std::u16string> aliases; ///< further names
    std::u16string spareText;            ///< not used
    std::string display;                 ///< text to display, UTF-8
    std::u16string expression;           ///< definition over units of the same kind
    Rational scaling;                    ///< scale from this unit to the expression
    Rational offset;                     ///< value of 0 of this unit, in the expression
    bool spareFlag = false;              ///< not used
    TermMap exprTermMap;                 ///< the expression as written
    TermMap fundamentalExprAST;          ///< the canonical form
    Rational baseScalingFactor;          ///< factor from this unit to the fundamental ones

  private:
    void addTerms(const Monomial& terms);
};

/// Calls unit.print().
TVTYPES_API std::ostream& operator<<(std::ostream& stream, const UnitBase& unit);

/// A concrete unit: a measure of a quantity.
class TVTYPES_API Unit : public UnitBase {
  public:
    /// \name Constructors
    /// @{

    /// As those of UnitBase. The abstract unit is the quantity that the unit measures; it must
    /// outlive this unit.
    Unit(const std::u16string& expression, const Rational& scaling, const Rational& offset,
         Reference abstractUnit);
    Unit(int id, const std::u16string& name, const std::u16string& expression,
         const std::string& display, const Rational& scaling, const Rational& offset,
         Reference abstractUnit);
    /// @}

    int getUnitType() const override;
    Unit* clone() const override;
    double getScalingFactorToConvertTo(const UnitBase& other) const override;
    /// Returns whether `other` is concrete, has the same compatibility key and an equivalent
    /// abstract unit.
    bool compatibleWithUnit(const UnitBase& other) const override;
    /// Returns whether the units are compatible, have scales and factors of the same form, and
    /// equal expressions or equal canonical forms.
    bool equivalentToUnit(const UnitBase& other) const override;
    const std::u16string& getBaseUnitSymbol(unsigned long index) const override;
    Reference getFirstMatchingUnitInDatabase(const std::u16string& text) const override;
    std::string createUniqueUnitID() const override;
    /// Returns `commonSubUnit`.
    virtual bool isCommonSubUnit() const;

    /// Appends the unit system of the database with this name. Ignored if there is none.
    void addOwnerUnitSystem(const std::u16string& systemName);

    Reference abstractUnit;                    ///< the measured quantity; owned elsewhere
    std::vector<UnitSystem*> ownerUnitSystems; ///< owned by the database
    std::string compatibilityKey;              ///< compared up to its first null character
    bool spareFlag2 = false;                   ///< not used
    bool commonSubUnit = false;                ///< stored for clients
};

/// An abstract unit: a quantity.
class TVTYPES_API AbstractUnit : public UnitBase {
  public:
    using UnitBase::UnitBase;

    int getUnitType() const override;
    AbstractUnit* clone() const override;
    double getScalingFactorToConvertTo(const UnitBase& other) const override;
    /// Returns whether `other` is abstract.
    bool compatibleWithUnit(const UnitBase& other) const override;
    /// Returns true if one of the two compares as equal to the default abstract unit. Other
    /// abstract units are equivalent if their names are equal; if one has no name, their symbols;
    /// if one has no symbol, their canonical forms.
    bool equivalentToUnit(const UnitBase& other) const override;
    const std::u16string& getBaseUnitSymbol(unsigned long index) const override;
    Reference getFirstMatchingUnitInDatabase(const std::u16string& text) const override;
    std::string createUniqueUnitID() const override;
};

/// Creates units.
class TVTYPES_API UnitFactory {
  public:
    /// \name Creation
    /// @{

    /// Returns a new unit, which the caller owns. Its expression is not parsed. Names of unit
    /// systems that the database does not have are ignored.
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
    /// @}

    /// \name Default units
    /// @{

    /// The units used where none is given: without name, symbol and canonical form, and with the
    /// expression "Unspecified". Each call returns the same object.
    static UnitBase::Reference getDefaultAbstractUnit();
    static UnitBase::Reference getDefaultUnit();
    /// @}
};

} // namespace TVTypeSys

/// @}
