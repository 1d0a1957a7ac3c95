/// \file
/// The cache of the texts of records: one for the process, filled on demand, kept until exit.
///
/// Nothing is ever removed or moved, so references stay valid. There is no lock: all requests of a
/// process must come from one thread at a time. What runs at once with others uses the _NoCache
/// forms.
///
/// A record with a NaN must not be looked up: it counts as equal to the first entry with the same
/// leading fields and gets its texts. Valid records hold none.
#pragma once

#include <tvtypes/export.h>
#include <tvtypes/fixedpoint/constructor.h>
#include <tvtypes/fixedpoint/properties.h>

#include <boost/unordered/unordered_map.hpp>

#include <cstdint>
#include <map>
#include <string>

/// All texts of one record, each made when it is first asked for.
class TVTYPES_API fxpDataTypeCachedStrings {
  public:
    explicit fxpDataTypeCachedStrings(const fxpDataTypeProp& record);

    /// The record whose texts these are.
    const fxpDataTypeProp& record() const;

    /// The texts of fxpDataTypeToIdentifierString and fxpDataTypeToConstructorString.
    const std::string& getFxpDataTypeToIdentifierString() const;
    const std::string& getCtorForOndrixEval(FxpDT::baseCtorPrefer base,
                                            FxpDT::scalingRepPrefer scaling) const;

  private:
    fxpDataTypeProp record_;
    // A memo, and no part of the value: empty texts are still to be made.
    mutable std::string identifier_;
    mutable std::string constructors_[6];
};

/// The hash of a record's integers. The value is the same in every version.
struct TVTYPES_API fxdt_ihash {
    std::uint64_t operator()(const fxpDataTypeProp& record) const;
};

/// Whether two records are the same type: all is equal but perhaps the override state.
class TVTYPES_API fxdt_isequal_to {
  public:
    fxdt_isequal_to() = default;

    /// The same where also the hashes are equal: then so are the override states.
    static fxdt_isequal_to withEqualHash();

    bool operator()(const fxpDataTypeProp& a, const fxpDataTypeProp& b) const;

  private:
    bool comparesOverrideState_ = false;
};

/// The entries of records without slope and bias.
extern TVTYPES_API
    boost::unordered_map<fxpDataTypeProp, fxpDataTypeCachedStrings, fxdt_ihash, fxdt_isequal_to>
        dtCacheHash;

/// The entries of all others: their identity lies in two doubles, which are compared, not hashed.
extern TVTYPES_API std::map<fxpDataTypeProp, fxpDataTypeCachedStrings, fxpDataTypeSortCompare>
    dtCacheMap;

/// The entry of a record, made if there is none: in dtCacheHash if the factor is 1 and the bias 0,
/// else in dtCacheMap.
TVTYPES_API fxpDataTypeCachedStrings& fxpDataTypeCacheFind(const fxpDataTypeProp& record);

/// The same in one of the two, whatever the record.
TVTYPES_API fxpDataTypeCachedStrings& fxpDataTypeCacheFindHash(const fxpDataTypeProp& record);
TVTYPES_API fxpDataTypeCachedStrings& fxpDataTypeCacheFindMap(const fxpDataTypeProp& record);
