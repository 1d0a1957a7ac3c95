/// \file
/// The units that the product knows, for the whole process.
///
/// Nothing here is locked. The first call of UnitDatabase::getUnitDatabase must be over before
/// other threads use units; then any number of them may read, as long as none adds or clears.
#pragma once

#include <tvtypes/export.h>
#include <tvtypes/units/unit.h>

#include <cstddef>
#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

namespace TVTypeSys {

class FundamentalUnits;

/// A named system of units, such as "SI".
class TVTYPES_API UnitSystem {
  public:
    explicit UnitSystem(const std::u16string& name);
    UnitSystem(const UnitSystem& other);
    UnitSystem& operator=(const UnitSystem&) = delete;

    virtual ~UnitSystem();
    virtual const std::u16string& getName() const;
    /// "Unit System: 'SI'" and a line end.
    virtual void print(std::ostream& stream) const;

    /// Whether the database has a system of this name.
    static bool isValidUnitSystemName(const std::u16string& text);

    /// Whether the text has letters and digits only; true for an empty one.
    static bool isValidStringForUnitSystemName(const std::u16string& text);

  private:
    std::u16string name_;
};

TVTYPES_API std::ostream& operator<<(std::ostream& stream, const UnitSystem& system);

/// Unit systems, abstract units and concrete units, found by name, symbol and alias, exactly as
/// they are written. What it hands out belongs to it, and is good until it is cleared.
///
/// An added unit is a copy. A unit that compares as equal to one that is there is not added, which
/// warns with TorvaneTypes::Unit::UnitAlreadyInDatabase (name, symbol). Adding warns also with
/// SymbolNotDefined for an empty name or alias, NameNotDefined for an empty symbol, and
/// SimilarInstanceThere (name, symbol) for an alias that another unit has.
class TVTYPES_API UnitDatabase {
  public:
    /// What a completion looks at.
    enum SearchBy : int { SearchByName = 0, SearchByAlias = 1, SearchBySymbol = 2 };

    UnitDatabase();
    UnitDatabase(const UnitDatabase&) = delete;
    UnitDatabase& operator=(const UnitDatabase&) = delete;
    virtual ~UnitDatabase();

    /// Five lines of numbers.
    virtual void print(std::ostream& stream) const;

    /// The one database. The first call, and the first after a clearing operation, loads the file
    /// unitDBPath below the root of the installation, and is refused as told at loadUnitDatabase;
    /// the next call then gives what has been loaded.
    static UnitDatabase* getUnitDatabase();

    /// Adds what a file holds: unit systems, abstract units, concrete units, in this order. A
    /// record may use only what stands ahead of it. Refused with TorvaneTypes::Unit messages:
    /// - UnitDatabaseFileOpenError (path), at once, with why the file does not open.
    /// - All else at the end, as one diagnostic in the order of the file; what is not at fault has
    ///   been added: UnitDatabaseFileLoadMissingFieldError (path, variable) for a variable that is
    ///   missing or holds no records; UnitDatabaseFileLoadFieldError (path, variable) for a record
    ///   that was skipped, followed by the cause. The cause is UnitDatabaseFileLoadRecordError
    ///   (variable, index, field) for a field that is missing or of the wrong kind.
    ///
    /// A denominator of 0 throws boost::bad_rational and ends the load.
    void loadUnitDatabase(const std::u16string& path);

    void addUnitSystem(const UnitSystem& system);
    void addUnit(const UnitBase& unit);

    /// The first system of a name, or null.
    UnitSystem* getUnitSystem(const std::u16string& name) const;

    std::size_t getNumUnits() const;
    std::size_t getNumAbstractUnits() const;
    std::size_t getNumUnitSystems() const;

    /// \name Search
    /// Each for the concrete and for the abstract units. The fundamental units are not looked at.
    /// @{

    /// The units of which the text is the name, the symbol or an alias.
    UnitBase::ReferenceSet getUnit(const std::u16string& text) const;
    UnitBase::ReferenceSet getAbstractUnit(const std::u16string& text) const;
    UnitBase::ReferenceSet getAllUnits() const;
    UnitBase::ReferenceSet getAllAbstractUnits() const;

    /// Appends the names, aliases or symbols that begin with the prefix, each once, a word ahead
    /// of its extensions. Words stay known when units are cleared.
    void getAutoCompleteUnitSuggestions(SearchBy by, const std::u16string& prefix,
                                        std::vector<std::u16string>& out) const;
    void getAutoCompleteAbstractUnitSuggestions(SearchBy by, const std::u16string& prefix,
                                                std::vector<std::u16string>& out) const;

    /// Adds the units that have such a name, alias or symbol.
    void appendAutoCompleteUnits(SearchBy by, UnitBase::ReferenceSet& out,
                                 const std::u16string& prefix) const;
    void appendAutoCompleteAbstractUnits(SearchBy by, UnitBase::ReferenceSet& out,
                                         const std::u16string& prefix) const;
    /// @}

    /// \name Fundamental units
    /// Eight concrete units (kg, m, s, A, K, mol, cd, b) and their abstract ones, which every
    /// database has, and two abstract ones without dimension.
    /// @{

    /// The symbol at a position below 8, in the order of names; "" beyond.
    const std::u16string& getFundamentalUnitSymbol(unsigned long index) const;
    const std::u16string& getFundamentalAbstractUnitSymbol(unsigned long index) const;

    /// Adds the fundamental units of which the text is the name or the symbol.
    void addMatchingFundamentalUnitToList(const std::u16string& text,
                                          UnitBase::ReferenceSet& list) const;
    void addMatchingFundamentalAbstractUnitToList(const std::u16string& text,
                                                  UnitBase::ReferenceSet& list) const;
    /// @}

    /// Clearing makes the next getUnitDatabase load the file again, into what was not cleared.
    void clearAllUnits();
    void clearAllAbstractUnits();
    void clearAllUnitSystems();
    void clearAll();

    static std::unique_ptr<UnitDatabase> _unit_database_;
    static const std::u16string unitDBPath;

  private:
    class TVTYPES_LOCAL UnitRepository;
    friend class UnitLookup;

    /// Made anew whenever units may have gone from a database.
    static unsigned generation_;
    void forget();

    std::vector<std::unique_ptr<UnitSystem>> unitSystems_;
    std::unique_ptr<FundamentalUnits> fundamentalUnits_;
    std::unique_ptr<UnitRepository> units_;
    std::unique_ptr<UnitRepository> abstractUnits_;
    bool loaded_ = false;
};

TVTYPES_API std::ostream& operator<<(std::ostream& stream, const UnitDatabase& database);

} // namespace TVTypeSys
