/// \file
/// Cache of the identifier and constructor strings of records: one for the process, filled on
/// demand, kept until exit.
///
/// Entries are never removed or moved, so references stay valid until exit. Threads may request
/// strings and entries concurrently; a request of a known record takes no lock. The two containers
/// are not guarded: clients may read them while no other thread requests a record that is new, and
/// must not change them.
///
/// \pre A record that is looked up has no NaN (valid records have none); unchecked. One with a NaN
/// compares equal to the first entry with the same leading fields and returns its strings.
#pragma once

#include <tvtypes/export.h>
#include <tvtypes/fixedpoint/constructor.h>
#include <tvtypes/fixedpoint/properties.h>

#include <boost/unordered/unordered_map.hpp>

#include <cstdint>
#include <map>
#include <string>

/// \addtogroup fixedpoint
/// @{

/// The strings of one record, each computed on first use, which any number of threads may do.
class TVTYPES_API fxpDataTypeCachedStrings {
  public:
    /// Copies the record. No string is computed yet.
    explicit fxpDataTypeCachedStrings(const fxpDataTypeProp& record);

    /// Copies the record only: another thread may be computing a string.
    fxpDataTypeCachedStrings(const fxpDataTypeCachedStrings& other) : record_(other.record_) {}
    fxpDataTypeCachedStrings& operator=(const fxpDataTypeCachedStrings&) = delete;
    /// Destroys the strings.
    ~fxpDataTypeCachedStrings() = default;

    /// Returns the copy of the record.
    const fxpDataTypeProp& record() const;

    /// Returns the string of fxpDataTypeToIdentifierString(), valid as long as this object.
    const std::string& getFxpDataTypeToIdentifierString() const;

    /// Returns the string of fxpDataTypeToConstructorString(), valid as long as this object.
    const std::string& getCtorForOndrixEval(FxpDT::baseCtorPrefer base,
                                            FxpDT::scalingRepPrefer scaling) const;

  private:
    template <class Compute>
    const std::string& memoised(unsigned int slot, const Compute& compute) const;
    template <class Compute>
    void memoise(unsigned int slot, const Compute& compute) const;

    const fxpDataTypeProp record_;
    mutable std::uint8_t computed_ = 0; // a bit for each string; accessed atomically
    mutable std::string strings_[7];    // the identifier, then the constructors
};

/// Hash of the integer fields of a record.
struct TVTYPES_API fxdt_ihash {
    /// Returns the hash. The value is the same in every version and on every platform.
    std::uint64_t operator()(const fxpDataTypeProp& record) const;
};

/// Equality of records: all fields except the override state.
class TVTYPES_API fxdt_isequal_to {
  public:
    /// Compares all fields except the override state.
    fxdt_isequal_to() = default;

    /// Returns the equality that agrees with fxdt_ihash: it compares the override state too.
    static fxdt_isequal_to withEqualHash();

    /// Returns whether the records are equal. -0.0 equals 0.0; a NaN equals nothing.
    bool operator()(const fxpDataTypeProp& a, const fxpDataTypeProp& b) const;

  private:
    bool comparesOverrideState_ = false;
};

/// The entries of records with factor 1 and bias 0.
extern TVTYPES_API
    boost::unordered_map<fxpDataTypeProp, fxpDataTypeCachedStrings, fxdt_ihash, fxdt_isequal_to>
        dtCacheHash;

/// The entries of all other records, which differ in two doubles that are compared, not hashed.
extern TVTYPES_API std::map<fxpDataTypeProp, fxpDataTypeCachedStrings, fxpDataTypeSortCompare>
    dtCacheMap;

/// Returns the entry of a record, inserted if there is none: in dtCacheHash if the factor is 1 and
/// the bias 0, otherwise in dtCacheMap. Constant time in dtCacheHash, logarithmic in dtCacheMap.
TVTYPES_API fxpDataTypeCachedStrings& fxpDataTypeCacheFind(const fxpDataTypeProp& record);

/// Returns the entry of any record in dtCacheHash, inserted if there is none.
TVTYPES_API fxpDataTypeCachedStrings& fxpDataTypeCacheFindHash(const fxpDataTypeProp& record);

/// Returns the entry of any record in dtCacheMap, inserted if there is none.
TVTYPES_API fxpDataTypeCachedStrings& fxpDataTypeCacheFindMap(const fxpDataTypeProp& record);

/// @}
