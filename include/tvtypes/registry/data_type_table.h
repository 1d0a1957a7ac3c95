/// \file
/// The table of all data types of one model.
///
/// A type is registered by name and from then on spoken of by its id. The record with id n stands
/// at position n + 1: "auto" has id -1 and stands at position 0, the built-in types have the ids 0
/// to 8, the predefined types 9 to 13, and those that are registered later 14 and up.
///
/// A table belongs to one thread at a time, reads included. Refusals are exceptions as in
/// datatype.h; message ids are those of TorvaneTypes::general.
#pragma once

#include <tvtypes/registry/data_type.h>
#include <tvtypes/export.h>

#include <boost/shared_ptr.hpp>

#include <cstddef>
#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

class StructDataType;
class tvsvDiagnosticImpl;
struct fxpDataTypeProp;

namespace TVTypeSys {
class DataTypeTable;
}

/// With this record a table makes itself known to the functions of its types.
struct _tvDataTypeAccess_tag {
    TVTypeSys::DataTypeTable* table;
};

namespace TVTypeSys {

class NameIndex;

/// A client's hook into registration.
class TVTYPES_API ClientDataTypeCheckCallback {
  public:
    virtual ~ClientDataTypeCheckCallback();

    /// Called with each new type, once it stands in the table. If it throws a
    /// fnd::except::IException the type is taken out again and destroyed.
    virtual void checkRegisteredType(DataType* dataType, const char* blockPath) = 0;

    /// Called when the table has been brought back to its built-in types.
    virtual void onResetToBuiltin() = 0;
};

/// All data types of one model. The table owns its records.
class TVTYPES_API DataTypeTable {
  public:
    /// A table with "auto", the nine built-in and the five predefined types.
    DataTypeTable();
    virtual ~DataTypeTable();
    DataTypeTable(const DataTypeTable&) = delete;
    DataTypeTable& operator=(const DataTypeTable&) = delete;

    /// Destroys all types but the first 15. Those keep what clients have set in them, but for
    /// their code-generation types and target functions.
    virtual void resetToBuiltin();

    /// \name Registration
    /// Each gives the id of the type with this name: the one that the table has, as it stands, or
    /// a new one. `blockPath` is passed to the client's hook and may be null.
    ///
    /// Refused with InvalidDataType (name) if the name is no identifier, and with
    /// DataType_SameNameAsExistingType (name) if the type that has the name comes from another
    /// source, unless `source` is DataTypeSourceUnchecked. What the client's hook throws passes
    /// through.
    ///
    /// In a table whose shortCircuitRegistration gives false, a name that is known is registered
    /// anew, and the new record takes the place, id and storage id of the old one.
    /// @{

    /// A name such as sfix16_En3 makes a fixed-point type; any other makes a type that its
    /// registrar goes on to define through the setters of its record.
    virtual int registerDataType(const char* name, DataTypeSource source, const char* blockPath);

    /// Makes an alias. Refused with UndefinedDataTypeToBeAliasedTo (name, id) if there is no type
    /// `idAliasedTo`, and with DataTypeAliasLoop (name, target's name) if the new record would
    /// take the place of a type that its target stands for.
    virtual int registerAliasDataType(const char* name, DataTypeSource source, int idAliasedTo,
                                      const char* blockPath);

    /// Makes a StructDataType.
    virtual int registerStructDataType(const char* name, DataTypeSource source,
                                       const char* blockPath);
    /// @}

    /// Whether registering a known name gives the id of the type that has it. True here.
    virtual bool shortCircuitRegistration(DataTypeSource source) const;

    /// \name Settings of the model, for a derived table to answer: levels, 0 or 1 here
    /// @{
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

    /// The properties of the type at the end of the alias chain, or null. `ignored` is not read.
    /// Refused with InvalidDataTypeId (id).
    virtual const void* getDataTypeProperties(const char* ignored, int id) const;

    /// The name of an enumerated value; null here.
    virtual const char* getEnumTypeStringFromValue(int id, int value) const;

    /// Give a new record of a built-in type (id -1 to 8) or of a predefined type (id 9 to 13) its
    /// definition. Refused with MemoryAllocErr.
    virtual void registerBuiltInDataType(DataType* dataType, int id);
    virtual void registerInternalExtraDataType(DataType* dataType, int id);

    /// registerDataType for callers that work with diagnostics: null on success, with the id
    /// behind `outId`; else the diagnostic, which the caller owns, with DataTypeErrorFromBlock
    /// (path) added if `blockPath` is neither null nor empty, and `outId` left as it was.
    static tvsvDiagnosticImpl* RegisterDataType(DataTypeTable* table, const char* blockPath,
                                                const char* name, DataTypeSource source,
                                                int* outId);

    /// Installs the client's hook; an empty pointer removes it.
    void
    setClientDataTypeCheckCallback(const boost::shared_ptr<ClientDataTypeCheckCallback>& callback);

    /// Puts `newType`, which stands in the table, in the place of `oldType`, with its id and
    /// storage id; aliases of the old type become aliases of the new one. Destroys `oldType`.
    void replaceDataType(DataType* oldType, DataType* newType);

    /// Refused with DataType_SameNameAsExistingType (name) unless `source` is that of the type
    /// `id`, or DataTypeSourceUnchecked.
    void verifyDataTypeSourcesMatch(DataTypeSource source, int id) const;

    /// Refused with InvalidDataType (name) unless the name is an identifier.
    static void validateDataTypeName(const char* name);
    /// The same as a question; null gives false.
    static bool isAValidDataType(const char* name);

    /// Appends a record that the caller has made with the id getNumDataTypes() - 1. The table
    /// takes it over. A record that answers getName with another text than its own name is found
    /// by whatever it answers at the time of a lookup; for that, each lookup asks all such records.
    void addDataType(DataType* dataType);

    /// Takes a record out and destroys it. Later records keep their ids and lose their places, so
    /// this is for the last record, and for one that no alias stands for. A pointer that is not in
    /// the table is ignored.
    void removeDataType(DataType* dataType);

    /// \name Lookup
    /// Ids and positions are taken as given, without a test, unless it says otherwise.
    /// @{

    /// The id of the first record with this name; -10 if there is none. Null counts as "". The
    /// time taken does not depend on how many types there are.
    int getDataTypeId(const char* name) const;
    /// The number of types, "auto" included.
    int getNumDataTypes() const;
    /// The record at a position, which is its id plus 1. Valid until the type is replaced, turned
    /// into an alias, or destroyed.
    const DataType* getDataTypeAt(std::size_t position) const;
    DataType* getDataTypeAt(std::size_t position);
    bool isDataTypeIdValid(int id) const;
    bool isDataTypeIdValid_NotAuto(int id) const;
    /// Refused with InvalidDataTypeId (id) unless isDataTypeIdValid(id).
    void checkDataTypeId(int id) const;
    /// Whether an id is -1 to 8.
    static bool checkForBuiltInDataType(int id);
    /// Whether an id is 9 to 13.
    static bool isPredefinedDataType(int id);
    /// 9.
    static int getNumBuiltInDataTypes();
    /// The id of a built-in type by name, 0 to 8; -10 for any other name, "auto" included.
    static int getBuiltInDataType(const char* name);
    static bool nameOfBuiltInDataType(const char* name);
    /// The name of a built-in type, a constant text; null for any id but 0 to 8.
    static const char* getNameOfBuiltInDataType(int id);
    /// Bytes of one value of the type `id`, which must be -1 to 8.
    static int getBuiltInDataTypeSize(int id);
    /// The properties of the type `id`, which must be 0 to 8.
    static const fxpDataTypeProp* getBuiltinDataTypeProperties(int id);
    /// @}

    /// A name for a type that has none: rtt_0, rtt_1, ... The text is overwritten by the next
    /// call; whether the name is taken is not looked at. A constant operation that changes the
    /// table.
    const char* generateAnonymousTypeName() const;

    /// Fills the records from which tables take their built-in types, once in the process.
    static void initializeBuiltInDataTypes();

    /// \name Aliases
    /// @{

    /// Turns a plain type without a definition into an alias, under the same id. Pointers to its
    /// record become invalid. Setting the same alias again does nothing. In this order refused
    /// with UndefinedDataTypeToBeAliasedTo (name, id), InconsistentDataTypeIdAliasedTo (name,
    /// target's name, name of the type now aliased), CannotSetAliasForDefinedType (name), and
    /// DataTypeAliasLoop (name, target's name), the last also for a type and itself.
    void setDataTypeIdAliasedTo(int id, int idAliasedTo);
    /// The id that a type is an alias of; -10 if it is none, and for -10.
    int getDataTypeIdAliasedTo(int id) const;
    /// The record that answers for a type. Refused with InvalidDataTypeId (id).
    DataType* getDataTypeAliasedThruTo(int id) const;
    /// Whether `id` is an alias of `idAliasedTo`, directly or through others. No type is an alias
    /// of itself.
    bool alreadyAliasedToDirectlyOrIndirectly(int id, int idAliasedTo) const;
    /// The nearest type through which the alias chains of both types pass; -10 if there is none.
    int getDataTypeIdCommonAncestor(int id1, int id2) const;
    /// @}

    /// \name Storage and fixed-point names
    /// @{

    /// Sets once which built-in type holds the values of a type. In this order refused with
    /// CannotSetDataTypeStorageIdOfAlias (name), IllegalDataTypeToBeStorageId (name, storage's
    /// name) for an id above 8, and InconsistentDataTypeStorageId (name, storage's name, name of
    /// the type now the storage).
    void setDataTypeStorageId(int id, int storageId);
    /// Whether a name is that of a fixed-point or scaled-double type: "sfix", "ufix", "flts" or
    /// "fltu" and a digit, with neither "sfcn" nor "_OBS" from that digit on. Stores the number
    /// that begins there behind `wordLength`, if that is not null.
    static bool isInstrinsicFixptName(const char* name, int* wordLength);
    /// Marks a fixed-point type as atomic if the integer of its word length is.
    void initializeFixptDataTypeAtomicity(DataType* dataType, int wordLength);
    /// Sets the word lengths, beside 8, 16 and 32, that the target accesses atomically.
    void setAtomicWordLengths(const std::vector<int>& wordLengths);

    /// Whether a type is "auto", built-in or fixed-point; the second leaves `boolean` out. Refused
    /// with InvalidDataTypeId (-10) for -10.
    bool IsDataTypeNumericOrBoolean(int id) const;
    bool IsDataTypeNumericNonBoolean(int id) const;
    /// Refused with InvalidDataTypeId (id).
    bool IsFixptDTNotScaledDouble(int id) const;
    /// False for -10 and -1. Refused with InvalidDataTypeId (id) for any other id without a type.
    bool isEnumType(int id) const;
    /// @}

    /// \name Values
    /// Each calls, once for the whole array of `count` elements, a function of the type, which
    /// sees the ids of the types that answer for those given. `extra` is handed to it unread.
    ///
    /// The result is the function's status, which is not 0. Refused with
    /// DataType...FcnDoesNotExist (name) if the type has no function for it, as predefined types
    /// have none, and with DataType...FcnUnknownError (name) if its status is 0. Then what is
    /// written is not defined.
    /// @{

    /// Converts by the ConvertBetween function of the source's or of the destination's type.
    int convertToUsingSrcId(int dstId, int srcId, int count, const void* src, const void* extra,
                            void* dst) const;
    int convertToUsingDstId(int dstId, int srcId, int count, const void* src, const void* extra,
                            void* dst) const;
    /// Test by the IsPositive, IsNegative, GreaterThan and GreaterEqual functions. `result`
    /// receives a byte an element: 1 where the test holds, else 0.
    int isPositive(int id, int count, const void* values, const void* extra, void* result) const;
    int isNegative(int id, int count, const void* values, const void* extra, void* result) const;
    int greaterThan(int id, int count, const void* lhs, const void* rhs, const void* extra,
                    void* result) const;
    int greaterEqual(int id, int count, const void* lhs, const void* rhs, const void* extra,
                     void* result) const;

    /// The same, with false instead of a refusal and true else. Other exceptions that a function
    /// throws pass through.
    bool convertToUsingSrcIdWithStatus(int dstId, int srcId, int count, const void* src,
                                       const void* extra, void* dst) const;
    bool isPositiveWithStatus(int id, int count, const void* values, const void* extra,
                              void* result) const;
    /// @}

    /// Whether an array holds anything but zero; false for a `count` below 1. For `double` and
    /// `single` NaN is not zero and both zeros are. For any other type, their aliases included, the
    /// bytes of each element are held against the ground value. Complex elements are two parts,
    /// side by side. `data` may lie at any address.
    bool checkIfNonZeroArray(const void* data, int count, int id, bool isComplex) const;

    /// How a type is written in a parameter: fixdt('sfix16_En3'), "Enum: E", "Bus: B", else the
    /// name alone, as for every alias.
    std::string getDTACompliantString(int id) const;

    /// The id of the built-in type as which values are logged: for an enumerated type its storage,
    /// for "auto" and built-in types their own, for all else that of `double`. Refused with
    /// InvalidDataTypeId (id).
    int getDataTypeLoggingId(int id) const;

    /// \name What lies in a struct type
    /// The summary flags of the type, which are all false until
    /// StructDataType::createCacheForFrequentlyAccessedProperties has computed them. The id must
    /// be that of a StructDataType itself, and not of an alias; it is not tested.
    /// @{
    bool doesBusDTHaveComplexData(int id) const;
    bool doesBusDTHaveFrameBasedElements(int id) const;
    bool doesBusDTHaveVarDims(int id) const;
    bool doesBusDTHaveAoB(int id) const;
    /// @}

  private:
    struct ReleaseMemory {
        void operator()(void* memory) const noexcept;
    };

    void initialize();
    DataType* record(int id) const;
    bool isNewName(const char* name, DataTypeSource source, int& existingId) const;
    void append(std::unique_ptr<DataType> newRecord);
    int adopt(std::unique_ptr<DataType> newRecord, int existingId, const char* blockPath);
    std::size_t positionOf(const DataType* dataType) const;
    void removeAt(std::size_t position);
    void replaceAt(std::size_t oldPosition, std::size_t newPosition);
    bool mayBeAliased(const DataType& dataType) const;
    bool isNumeric(int id, bool booleanCounts) const;
    int convert(const DataType& type, int dstId, int srcId, int count, const void* src,
                const void* extra, void* dst) const;
    const StructDataType& structRecord(int id) const;

    boost::shared_ptr<ClientDataTypeCheckCallback> clientCheckCallback_;
    std::vector<std::unique_ptr<DataType>> dataTypes_;
    std::unique_ptr<NameIndex> nameIndex_;
    // Whether there are records of a client's own class, which may be aliases of any kind.
    bool hasClientRecords_ = false;
    mutable int anonymousTypeCount_ = 0;
    mutable char anonymousTypeName_[16] = {};
    std::unique_ptr<_tvDataTypeAccess_tag, ReleaseMemory> dataTypeAccess_;
    std::vector<int> atomicWordLengths_;
};

/// Writes the table through its virtual print.
TVTYPES_API std::ostream& operator<<(std::ostream& os, const DataTypeTable& table);

/// The records from which every table takes its definitions: "auto" and the built-in types, and
/// the predefined types. Filled by DataTypeTable::initializeBuiltInDataTypes; all but the first
/// keep an empty name and the id -10.
extern TVTYPES_API BuiltInDataType BuiltInDataTypes[10];
extern TVTYPES_API BuiltInDataType PreDefinedDataTypes[5];

} // namespace TVTypeSys
