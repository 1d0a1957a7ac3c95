/// \file
/// The unit database of the process.
///
/// Any number of threads may call UnitDatabase::getUnitDatabase at once: the first call loads the
/// database, and the others wait for it. Then any number of threads may read a database while none
/// adds or clears. A database that a client has created is independent of that of the process.
#pragma once

#include <tvtypes/export.h>
#include <tvtypes/units/unit.h>

#include <atomic>
#include <cstddef>
#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

/// \addtogroup units
/// @{

namespace TVTypeSys {

class FundamentalUnits;

/// A named system of units, such as "SI".
class TVTYPES_API UnitSystem {
  public:
    /// Takes the name, which is not checked.
    explicit UnitSystem(const std::u16string& name);
    /// Copies the name.
    UnitSystem(const UnitSystem& other);
    UnitSystem& operator=(const UnitSystem&) = delete;

    virtual ~UnitSystem();
    /// Returns the name.
    virtual const std::u16string& getName() const;
    /// Prints "Unit System: 'SI'" and a line end.
    virtual void print(std::ostream& stream) const;

    /// Returns whether the database has a system with this name.
    static bool isValidUnitSystemName(const std::u16string& text);

    /// Returns whether the text consists of letters and digits; true for "".
    static bool isValidStringForUnitSystemName(const std::u16string& text);

  private:
    std::u16string name_;
};

/// Calls system.print().
TVTYPES_API std::ostream& operator<<(std::ostream& stream, const UnitSystem& system);

/// Unit systems, abstract units and concrete units, looked up by name, symbol and alias, which are
/// case sensitive. The database owns the objects that it returns; they are valid until they are
/// cleared.
class TVTYPES_API UnitDatabase {
  public:
    /// Kind of text that a completion searches.
    enum SearchBy : int {
        SearchByName = 0,  ///< names
        SearchByAlias = 1, ///< aliases
        SearchBySymbol = 2 ///< symbols
    };

    /// Creates a database that has the fundamental units only. Loads no file.
    UnitDatabase();
    UnitDatabase(const UnitDatabase&) = delete;
    UnitDatabase& operator=(const UnitDatabase&) = delete;
    virtual ~UnitDatabase();

    /// Prints the numbers of units, abstract units and unit systems.
    virtual void print(std::ostream& stream) const;

    /// Returns the database of the process. The first call, and the first after a clearing
    /// operation, loads the file unitDBPath below the root of the installation, and throws what
    /// loadUnitDatabase throws; further calls return what has been loaded. Takes no lock once the
    /// database is loaded.
    static UnitDatabase* getUnitDatabase();

    /// Adds the contents of a file: unit systems, abstract units, concrete units, and the factors
    /// for products of units that overflow 32 bits, in this order. A record can refer only to
    /// records before it. A file without such factors is valid. Throws TorvaneTypes::Unit messages:
    /// - UnitDatabaseFileOpenError (path) at once if the file cannot be opened, followed by
    ///   UnitDatabaseFileUnreadable (reason).
    /// - Errors in the contents at the end, as one diagnostic in the order of the file; all valid
    ///   records have been added then. UnitDatabaseFileLoadMissingFieldError (path, variable) for a
    ///   variable that is missing or has no records; UnitDatabaseFileLoadFieldError (path,
    ///   variable) for a record that was skipped, followed by the cause. The cause is
    ///   UnitDatabaseFileLoadRecordError (variable, index from 0, field) if a field is missing or
    ///   has the wrong type.
    ///
    /// A denominator of 0 throws boost::bad_rational and ends the load.
    void loadUnitDatabase(const std::u16string& path);

    /// Adds a copy of a unit system. Names are not checked for duplicates.
    void addUnitSystem(const UnitSystem& system);

    /// Adds a copy (UnitBase::clone) of a concrete or abstract unit; other classes are ignored. The
    /// copy's canonical form is that of `unit`, and its precision() is 0. Warns with
    /// TorvaneTypes::Unit messages: UnitAlreadyInDatabase (name, symbol), and adds nothing, if a
    /// unit is there that compares as equal in both orders; SymbolNotDefined for an empty name or
    /// alias; NameNotDefined for an empty symbol; SimilarInstanceThere (name, symbol) for an alias
    /// that another unit has. Amortised constant time for each text of the unit. Nothing is added
    /// if an exception is thrown, be it by the warning handler.
    void addUnit(const UnitBase& unit);

    /// Returns the first system with this name; null if there is none. Linear in their number.
    UnitSystem* getUnitSystem(const std::u16string& name) const;

    /// \name Sizes
    /// @{

    /// The fundamental units are not counted.
    std::size_t getNumUnits() const;
    std::size_t getNumAbstractUnits() const;
    std::size_t getNumUnitSystems() const;
    /// @}

    /// \name Lookup
    /// @{

    /// The concrete or abstract units of which a text is the name, the symbol or an alias, or all
    /// of them. Fundamental units are not searched. Lookup of a text takes constant time, but for
    /// the set.
    UnitBase::ReferenceSet getUnit(const std::u16string& text) const;
    UnitBase::ReferenceSet getAbstractUnit(const std::u16string& text) const;
    UnitBase::ReferenceSet getAllUnits() const;
    UnitBase::ReferenceSet getAllAbstractUnits() const;
    /// @}

    /// \name Completion of words
    /// @{

    /// Appends the names, aliases or symbols that begin with the prefix, each once, in the order of
    /// Trie::getWords. Words of units that were cleared are still found. Another value of `by`
    /// finds nothing. Linear in the prefix and the subtree below it; the first call fills the
    /// tries.
    void getAutoCompleteUnitSuggestions(SearchBy by, const std::u16string& prefix,
                                        std::vector<std::u16string>& out) const;
    void getAutoCompleteAbstractUnitSuggestions(SearchBy by, const std::u16string& prefix,
                                                std::vector<std::u16string>& out) const;
    /// @}

    /// \name Completion of units
    /// @{

    /// Adds the units that have a name, alias or symbol that begins with the prefix.
    void appendAutoCompleteUnits(SearchBy by, UnitBase::ReferenceSet& out,
                                 const std::u16string& prefix) const;
    void appendAutoCompleteAbstractUnits(SearchBy by, UnitBase::ReferenceSet& out,
                                         const std::u16string& prefix) const;
    /// @}

    /// \name Symbols of fundamental units
    /// @{

    /// Every database has eight fundamental concrete units (kg, m, s, A, K, mol, cd, b), their
    /// abstract units, and two abstract units without dimension. These return the symbol of one of
    /// the eight, `index` from 0 to 7 in the order of names; "" beyond.
    const std::u16string& getFundamentalUnitSymbol(unsigned long index) const;
    const std::u16string& getFundamentalAbstractUnitSymbol(unsigned long index) const;
    /// @}

    /// \name Lookup of fundamental units
    /// @{

    /// Adds the fundamental units of which the text is the name or the symbol.
    void addMatchingFundamentalUnitToList(const std::u16string& text,
                                          UnitBase::ReferenceSet& list) const;
    void addMatchingFundamentalAbstractUnitToList(const std::u16string& text,
                                                  UnitBase::ReferenceSet& list) const;
    /// @}

    /// \name Clearing
    /// @{

    /// Destroys units or unit systems. \pre No other unit refers to them. If this is the database
    /// of the process, the next getUnitDatabase() loads the file again, in addition to what was not
    /// cleared. Throws std::bad_alloc with nothing cleared if completion cannot keep the words.
    void clearAllUnits();
    void clearAllAbstractUnits();
    void clearAllUnitSystems();
    void clearAll();
    /// @}

    static std::unique_ptr<UnitDatabase> _unit_database_; ///< the database of the process
    static const std::u16string unitDBPath; ///< path of its file below the root of the installation

  private:
    class TVTYPES_LOCAL UnitRepository;
    friend class UnitLookup;

    /// The database of the process once it has been loaded, or null. Read without a lock.
    TVTYPES_LOCAL static std::atomic<UnitDatabase*> published_;
    /// Changes when that database is replaced or units of it may have been destroyed.
    TVTYPES_LOCAL static std::atomic<unsigned> generation_;
    TVTYPES_LOCAL void forget();

    std::vector<std::unique_ptr<UnitSystem>> unitSystems_;
    std::unique_ptr<FundamentalUnits> fundamentalUnits_;
    std::unique_ptr<UnitRepository> units_;
    std::unique_ptr<UnitRepository> abstractUnits_;
    bool loaded_ = false;
};

/// Calls database.print().
TVTYPES_API std::ostream& operator<<(std::ostream& stream, const UnitDatabase& database);

} // namespace TVTypeSys

/// @}
