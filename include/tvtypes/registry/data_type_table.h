/// \file
/// The table of all data types of one model.
///
/// A type is registered by name, and is addressed by its id from then on. The record with id n is
/// at position n + 1: "auto" has id -1 and position 0, the built-in types have ids 0 to 8, the
/// predefined types 9 to 13, and types that clients register 14 and above.
///
/// Ids and positions are not checked unless the description says so. An unchecked id must be -1 or
/// above and have a record; builds with assertions check it.
///
/// Errors are thrown as fnd::except::IException, with the message ids of TorvaneTypes::general
/// named here; where memory runs out, std::bad_alloc or MemoryAllocErr () is thrown. A call that
/// throws leaves the table unchanged.
///
/// A table and its records are used by one thread at a time, since even const operations write to
/// it. Tables may be constructed and used by several threads at the same time, one each, and the
/// static functions may run anywhere.
///
/// "The end of the alias chain" is the type getIdAliasedThruTo: one step from an alias, to the type
/// that was the end when the alias was made. If that type has become an alias since, its getters
/// forward once more.
#pragma once

#include <tvtypes/export.h>
#include <tvtypes/registry/type_ids.h>

#include <boost/shared_ptr.hpp>

#include <cstddef>
#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

/// \addtogroup registry
/// @{

class StructDataType;
class tvsvDiagnosticImpl;
struct fxpDataTypeProp;

namespace TVTypeSys {
class DataTypeTable;
}

/// Identifies the calling table to the functions of a type.
struct _tvDataTypeAccess_tag {
    TVTypeSys::DataTypeTable* table; ///< the table that calls
};

namespace TVTypeSys {

class ClientDataTypeCheckCallback;
class DataType;
class NameIndex;

/// All data types of one model. The table owns its records.
///
/// The member functions are implemented by subject in `src/registry/`:
///
/// | File                     | Subject                                                       |
/// |--------------------------|---------------------------------------------------------------|
/// | data_type_table.cpp      | construction, reset, settings of the model                    |
/// | table_records.cpp        | storage of the records; lookup by id, position and name       |
/// | table_registration.cpp   | registration by name                                          |
/// | table_aliases.cpp        | aliases: creation, resolution, update when a type is replaced |
/// | table_classification.cpp | storage type, fixed-point names, kinds of types               |
/// | table_values.cpp         | conversion and comparison of values                           |
/// | builtin_types.cpp        | the built-in and predefined types                             |
/// | print.cpp                | output                                                        |
class TVTYPES_API DataTypeTable {
  public:
    /// Constructs a table with "auto", the nine built-in and the five predefined types. Throws
    /// MemoryAllocErr.
    DataTypeTable();
    /// Destroys the records in the order of their positions.
    virtual ~DataTypeTable();
    DataTypeTable(const DataTypeTable&) = delete;
    DataTypeTable& operator=(const DataTypeTable&) = delete;

    /// Destroys all records except the first 15. Those keep what clients have set, except for the
    /// code generator's records and the transfer functions, which are reset to null.
    /// \pre None of the first 15 has been replaced by an alias of a later type.
    virtual void resetToBuiltin();

    /// \name Registration
    /// Return the id of the type with this name. If there is none, a new record is registered with
    /// the next id. If there is one, it is kept as it is.
    ///
    /// If shortCircuitRegistration returns false, a new record replaces the existing one instead,
    /// under the same id and with the same storage id.
    ///
    /// Parameters: `name` is a C identifier, `source` the origin of the type; `blockPath` is passed
    /// to the client's callback and may be null.
    ///
    /// Throw InvalidDataType (name) if the name is not an identifier, and
    /// DataType_SameNameAsExistingType (name) if an existing type has another source and `source`
    /// is not DataTypeSourceUnchecked. Exceptions of the client's callback pass through
    /// (ClientDataTypeCheckCallback::checkRegisteredType). The id is that of the new record before
    /// the callback is called; a callback that removes the record leaves no type with it.
    ///
    /// Throw DataTypeAliasLoop (name, name of the target) if the callback makes the new record an
    /// alias of the type that it replaces; the callback's types are then removed with it.
    /// @{

    /// Registers a type. A name such as sfix16_En3 makes a fixed-point type. Any other type is
    /// without definition; the caller defines it through the setters of its record.
    virtual int registerDataType(const char* name, DataTypeSource source, const char* blockPath);

    /// Registers an alias of the type `idAliasedTo`. Throws UndefinedDataTypeToBeAliasedTo (name,
    /// idAliasedTo) if there is no such type, and DataTypeAliasLoop (name, name of the target) if
    /// the alias would replace a type on the alias chain of its target.
    virtual int registerAliasDataType(const char* name, DataTypeSource source, int idAliasedTo,
                                      const char* blockPath);

    /// Registers a StructDataType without elements.
    virtual int registerStructDataType(const char* name, DataTypeSource source,
                                       const char* blockPath);
    /// @}

    /// Returns whether registration keeps an existing type of the same name. Returns true unless
    /// overridden.
    virtual bool shortCircuitRegistration(DataTypeSource source) const;

    /// \name Settings of the model
    /// @{

    /// Diagnostic levels and code generation settings, which a derived table overrides. The library
    /// does not read them. The first three and the last two levels return 1, the three of
    /// fixed-point constants 0, and getUseIntDivNetSlopeOpt returns false.
    virtual int getParameterUnderflowDiagnostic() const;
    virtual int getParameterOverflowDiagnostic() const;
    virtual int getParameterPrecisionLossDiagnostic() const;
    virtual int getFixptConstUnderflowDiagnostic() const;
    virtual int getFixptConstOverflowDiagnostic() const;
    virtual int getFixptConstPrecisionLossDiagnostic() const;
    virtual int getDataOverflowDiagnostic() const;
    virtual int getDataSaturationDiagnostic() const;
    virtual bool getUseIntDivNetSlopeOpt() const;
    /// @}

    /// Writes a heading, the number of types, and every type.
    virtual void print(std::ostream& os) const;

    /// Returns the properties of the type at the end of the alias chain, or null if they are not
    /// set. `ignored` is not read. Throws InvalidDataTypeId (id).
    virtual const void* getDataTypeProperties(const char* ignored, int id) const;

    /// Returns the name of a value of an enumerated type. Returns null unless overridden.
    virtual const char* getEnumTypeStringFromValue(int id, int value) const;

    /// Defines a new record as the built-in type `id`. Throws MemoryAllocErr.
    /// \pre `id` is -1 to 8.
    virtual void registerBuiltInDataType(DataType* dataType, int id);
    /// Defines a new record as the predefined type `id`. Throws MemoryAllocErr.
    /// \pre `id` is 9 to 13.
    virtual void registerInternalExtraDataType(DataType* dataType, int id);

    /// Registers a type as registerDataType does, and returns errors as diagnostics.
    ///
    /// Returns null on success and stores the id in `*outId`. Otherwise returns a diagnostic, which
    /// the caller owns, and leaves `*outId` unchanged; DataTypeErrorFromBlock (blockPath) is
    /// appended if `blockPath` is neither null nor empty.
    static tvsvDiagnosticImpl* RegisterDataType(DataTypeTable* table, const char* blockPath,
                                                const char* name, DataTypeSource source,
                                                int* outId);

    /// Installs the client's callback; an empty pointer removes it. The table keeps a callback that
    /// is running until it returns.
    void
    setClientDataTypeCheckCallback(const boost::shared_ptr<ClientDataTypeCheckCallback>& callback);

    /// Moves `newType` to the position of `oldType`, gives it the id and storage id of `oldType`,
    /// points the aliases of `oldType` to it, and destroys `oldType` (while a callback runs, when
    /// the registration ends). Does nothing if one of the two is not in the table or both are the
    /// same.
    /// \pre `newType` is the last record, and `oldType` is not on its alias chain.
    void replaceDataType(DataType* oldType, DataType* newType);

    /// Throws DataType_SameNameAsExistingType (name) unless `source` is the source of the type `id`
    /// or DataTypeSourceUnchecked.
    void verifyDataTypeSourcesMatch(DataTypeSource source, int id) const;

    /// Throws InvalidDataType (name) unless the name is a C identifier.
    static void validateDataTypeName(const char* name);
    /// Returns whether a name is a C identifier; false for null.
    static bool isAValidDataType(const char* name);

    /// Appends a record, which the table then owns. If std::bad_alloc is thrown, the caller still
    /// owns it.
    ///
    /// A record of a client's class is looked up by what its getName returns at the time of the
    /// lookup, so it is not indexed: every lookup by name scans all such records.
    /// \pre The id of the record is getNumDataTypes() - 1.
    void addDataType(DataType* dataType);

    /// Removes and destroys a record. Records behind it keep their ids but move down one position,
    /// so only the last record should be removed. Does nothing if the record is not in the table.
    /// \pre No alias refers to the record.
    void removeDataType(DataType* dataType);

    /// \name Lookup
    /// @{

    /// Returns the id of the first record with this name, or -10 if there is none. Null counts as
    /// "". Constant time on average, plus linear in the number of records of clients' classes.
    int getDataTypeId(const char* name) const;
    /// Returns the number of records, "auto" included.
    int getNumDataTypes() const;
    /// Returns the record at a position, which is the id plus 1. The table owns it. The pointer is
    /// valid until the type is replaced, turned into an alias, or destroyed.
    /// \pre `position` is below getNumDataTypes(). Unchecked: debug builds have an assertion, and
    /// otherwise another position is undefined behaviour. checkDataTypeId() tests an id before.
    const DataType* getDataTypeAt(std::size_t position) const;
    /// Same, for changes.
    DataType* getDataTypeAt(std::size_t position);
    /// Returns whether an id is in the range of the table.
    bool isDataTypeIdValid(int id) const;
    /// Returns whether an id is in the range of the table and not "auto".
    bool isDataTypeIdValid_NotAuto(int id) const;
    /// Throws InvalidDataTypeId (id) unless isDataTypeIdValid(id).
    void checkDataTypeId(int id) const;
    /// Returns whether an id is -1 to 8.
    static bool checkForBuiltInDataType(int id);
    /// Returns whether an id is 9 to 13.
    static bool isPredefinedDataType(int id);
    /// Returns 9, the number of built-in types.
    static int getNumBuiltInDataTypes();
    /// Returns the id of a built-in type, 0 to 8, or -10 for any other name, "auto" included.
    static int getBuiltInDataType(const char* name);
    /// Returns whether a name is that of a built-in type.
    static bool nameOfBuiltInDataType(const char* name);
    /// Returns the name of a built-in type, or null for any id except 0 to 8. The string is a
    /// constant of the library.
    static const char* getNameOfBuiltInDataType(int id);
    /// Returns the size of one value of a built-in type in bytes.
    /// \pre `id` is -1 to 8.
    static int getBuiltInDataTypeSize(int id);
    /// Returns the properties of a built-in type, a constant of the library.
    /// \pre `id` is 0 to 8.
    static const fxpDataTypeProp* getBuiltinDataTypeProperties(int id);
    /// @}

    /// Returns the next of the names rtt_0, rtt_1, ... for types without a name. The table owns the
    /// string; the next call overwrites it. Whether the name is taken is not checked.
    const char* generateAnonymousTypeName() const;

    /// Fills BuiltInDataTypes and PreDefinedDataTypes, once in the process; other threads that call
    /// it meanwhile wait. The constructor and getBuiltInDataTypeSize call it.
    static void initializeBuiltInDataTypes();

    /// \name Aliases
    /// @{

    /// Turns a type without definition into an alias under the same id, with a new record; pointers
    /// to the old one become invalid. Does nothing if the type is an alias of `idAliasedTo`.
    ///
    /// Aliases that the type has already keep it as the end of their chain (getIdAliasedThruTo);
    /// their getters forward to it, and from there to its own target.
    ///
    /// Throws, in this order, UndefinedDataTypeToBeAliasedTo (name, idAliasedTo) if there is no
    /// such type, InconsistentDataTypeIdAliasedTo (name, name of the target, name of the current
    /// target) if the type is an alias of another type, CannotSetAliasForDefinedType (name) if it
    /// has a definition, and DataTypeAliasLoop (name, name of the target) if it is on the alias
    /// chain of its target, or is its target.
    void setDataTypeIdAliasedTo(int id, int idAliasedTo);
    /// Returns the id of the direct target of an alias, or -10 if the type is no alias or `id` is
    /// -10.
    int getDataTypeIdAliasedTo(int id) const;
    /// Returns the record whose definition a type uses: the end of its alias chain, or the type
    /// itself. Throws InvalidDataTypeId (id).
    DataType* getDataTypeAliasedThruTo(int id) const;
    /// Returns whether `idAliasedTo` is on the alias chain of `id`, which does not include `id`.
    /// `id` may be -10. Linear in the length of the chain.
    bool alreadyAliasedToDirectlyOrIndirectly(int id, int idAliasedTo) const;
    /// Returns the first type that is on the alias chains of both types, each starting with the
    /// type itself, or -10 if getIdAliasedThruTo differs. Linear in the length of the chains.
    int getDataTypeIdCommonAncestor(int id1, int id2) const;
    /// @}

    /// \name Storage and fixed-point names
    /// @{

    /// Sets the built-in type that stores values of a type. The storage can be set once; as long as
    /// it is the type's own id it counts as not set.
    ///
    /// Throws, in this order, CannotSetDataTypeStorageIdOfAlias (name),
    /// IllegalDataTypeToBeStorageId (name, name of the storage) if `storageId` is above 8, and
    /// InconsistentDataTypeStorageId (name, name of the storage, name of the current storage). In
    /// place of the name of a storage that is no type, the message has its id.
    void setDataTypeStorageId(int id, int storageId);
    /// Returns whether a name is that of a fixed-point or scaled-double type: "sfix", "ufix",
    /// "flts" or "fltu", then a digit, with neither "sfcn" nor "_OBS" from that digit on. If so,
    /// and `wordLength` is not null, stores the number that starts at that digit in `*wordLength`,
    /// or INT_MAX if it is larger.
    static bool isInstrinsicFixptName(const char* name, int* wordLength);
    /// Sets whether a fixed-point type is atomic: whether the integer of 8, 16 or 32 bits is, and
    /// for any other word length whether setAtomicWordLengths has it. Does nothing for other types.
    void initializeFixptDataTypeAtomicity(DataType* dataType, int wordLength);
    /// Sets the word lengths in bits, other than 8, 16 and 32, that the target accesses atomically.
    /// Types that are registered already keep their setting.
    void setAtomicWordLengths(const std::vector<int>& wordLengths);

    /// Returns whether the type at the end of the alias chain is "auto", built-in or fixed-point.
    /// Throws InvalidDataTypeId (-10) for -10.
    bool IsDataTypeNumericOrBoolean(int id) const;
    /// Same, with false for `boolean`.
    bool IsDataTypeNumericNonBoolean(int id) const;
    /// Returns whether the type at the end of the alias chain is fixed-point and not a scaled
    /// double. Throws InvalidDataTypeId (id).
    bool IsFixptDTNotScaledDouble(int id) const;
    /// Returns whether the type at the end of the alias chain is enumerated; false for -10 and -1.
    /// Throws InvalidDataTypeId (id) for any other id without a type.
    bool isEnumType(int id) const;
    /// @}

    /// \name Values
    /// Each calls a function of the type once for the array of `count` elements, with the ids at
    /// the ends of the alias chains. `extra` is passed on unread.
    ///
    /// Return the status of the function, which is not 0. Throw DataType...FcnDoesNotExist (name)
    /// if the type has no such function (predefined types have none), and
    /// DataType...FcnUnknownError (name) if its status is 0; the content of the output is then
    /// unspecified. "..." is ConvertBetween, IsPositive, IsNegative, GreaterThan or GreaterEqual.
    /// @{

    /// Converts values with the ConvertBetween function of the source type.
    int convertToUsingSrcId(int dstId, int srcId, int count, const void* src, const void* extra,
                            void* dst) const;
    /// Converts values with the ConvertBetween function of the destination type.
    int convertToUsingDstId(int dstId, int srcId, int count, const void* src, const void* extra,
                            void* dst) const;
    /// Tests which values are above 0. Writes one byte for each element to `result`: 1 or 0.
    int isPositive(int id, int count, const void* values, const void* extra, void* result) const;
    /// Tests which values are below 0. Writes one byte for each element to `result`: 1 or 0.
    int isNegative(int id, int count, const void* values, const void* extra, void* result) const;
    /// Tests lhs > rhs. Writes one byte for each element to `result`: 1 or 0.
    int greaterThan(int id, int count, const void* lhs, const void* rhs, const void* extra,
                    void* result) const;
    /// Tests lhs >= rhs. Writes one byte for each element to `result`: 1 or 0.
    int greaterEqual(int id, int count, const void* lhs, const void* rhs, const void* extra,
                     void* result) const;
    /// @}

    /// \name Values, without exceptions of the library
    /// @{

    /// Return false where the function of the same name throws a fnd::except::IException, else
    /// true. Other exceptions that a client's function throws pass through.
    bool convertToUsingSrcIdWithStatus(int dstId, int srcId, int count, const void* src,
                                       const void* extra, void* dst) const;
    bool isPositiveWithStatus(int id, int count, const void* values, const void* extra,
                              void* result) const;
    /// @}

    /// Returns whether an array has an element other than zero; false if `count` is below 1.
    ///
    /// For `double` and `single`, zeros of both signs are zero and NaN is not. For every other
    /// type, aliases of `double` and `single` included, each part is compared with the bytes of the
    /// ground value. Throws MemoryAllocErr if setSize failed to allocate the ground value.
    ///
    /// \param data      array of elements at any address, without alignment
    /// \param count     number of elements
    /// \param id        type of the elements
    /// \param isComplex whether an element is two parts, side by side
    bool checkIfNonZeroArray(const void* data, int count, int id, bool isComplex) const;

    /// Returns the form of a type name in a block parameter: fixdt('sfix16_En3') for a fixed-point
    /// type, "Enum: E", "Bus: B", and the name alone for all other types and every alias.
    std::string getDTACompliantString(int id) const;

    /// Returns the id of the built-in type in which values are logged: the type itself for "auto"
    /// and the built-in types, the storage of an enumerated type, and `double` for any other type.
    /// Throws InvalidDataTypeId (id).
    int getDataTypeLoggingId(int id) const;

    /// \name Summary flags of a struct type
    /// @{

    /// Return a flag of StructDataType. All are false until
    /// StructDataType::createCacheForFrequentlyAccessedProperties has computed them.
    /// \pre `id` is that of a StructDataType, not of an alias.
    bool doesBusDTHaveComplexData(int id) const;
    bool doesBusDTHaveFrameBasedElements(int id) const;
    bool doesBusDTHaveVarDims(int id) const;
    bool doesBusDTHaveAoB(int id) const;
    /// @}

  private:
    friend class StructLookup;

    struct ReleaseMemory {
        void operator()(void* memory) const noexcept;
    };

    struct ReplacedRecord {
        std::size_t position;
        std::unique_ptr<DataType> record;
    };

    void initialize();
    DataType* record(int id) const;
    TVTYPES_LOCAL DataType* recordAt(std::size_t position) const;
    std::size_t positionOf(const DataType* dataType) const;
    void removeAt(std::size_t position);
    TVTYPES_LOCAL void removeFrom(std::size_t position);
    TVTYPES_LOCAL void replaceAt(std::size_t oldPosition, std::size_t newPosition,
                                 std::unique_ptr<DataType> filler);
    TVTYPES_LOCAL void replaceExisting(std::size_t existingPosition, std::size_t position);
    TVTYPES_LOCAL void destroyReplaced();
    TVTYPES_LOCAL std::string nameOrNumber(int id) const;
    TVTYPES_LOCAL int registeredId(const char* name) const;
    TVTYPES_LOCAL bool keepsExistingType(int existingId, DataTypeSource source) const;
    int adopt(std::unique_ptr<DataType> newRecord, int existingId, const char* blockPath);
    bool mayBeAliased(const DataType& dataType) const;
    TVTYPES_LOCAL void retargetAliases(const DataType& oldType, DataType* newType) const;
    bool isNumeric(int id, bool booleanCounts) const;
    int convert(const DataType& type, int dstId, int srcId, int count, const void* src,
                const void* extra, void* dst) const;
    const StructDataType& structRecord(int id) const;

    boost::shared_ptr<ClientDataTypeCheckCallback> clientCheckCallback_;
    std::vector<std::unique_ptr<DataType>> dataTypes_;
    std::unique_ptr<NameIndex> nameIndex_;
    // Records that have been replaced while callbacks run, in order.
    std::vector<ReplacedRecord> replaced_;
    int runningCallbacks_ = 0;
    mutable int anonymousTypeCount_ = 0;
    mutable char anonymousTypeName_[16] = {};
    std::unique_ptr<_tvDataTypeAccess_tag, ReleaseMemory> dataTypeAccess_;
    std::vector<int> atomicWordLengths_;
};

/// Calls DataTypeTable::print.
TVTYPES_API std::ostream& operator<<(std::ostream& os, const DataTypeTable& table);

} // namespace TVTypeSys

/// @}
