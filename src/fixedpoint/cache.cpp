// Cache of identifier and constructor strings.
#include "fixedpoint/entry_index.h"

#include <tvtypes/fixedpoint/cache.h>
#include <tvtypes/fixedpoint/identifier.h>

#include <atomic>
#include <mutex>

namespace {

constexpr std::size_t initialBuckets = 11;

std::uint64_t signExtended(std::int32_t value) { return static_cast<std::uint64_t>(value); }

std::uint64_t combined(std::uint64_t seed, std::uint64_t value) {
    return seed ^ (value + 0x9e3779b9U + (seed << 6) + (seed >> 2));
}

unsigned int scalingIndex(FxpDT::scalingRepPrefer scaling) {
    switch (scaling) {
    case FxpDT::PreferFractionLength:
        return 0;
    case FxpDT::PreferSlopeBias:
        return 1;
    case FxpDT::PreferNoScaling:
        break;
    }
    return 2;
}

} // namespace

std::uint64_t fxdt_ihash::operator()(const fxpDataTypeProp& record) const {
    std::uint64_t seed = 0;
    seed = combined(seed, signExtended(record.DataTypeMode));
    seed = combined(seed, record.Signedness);
    seed = combined(seed, static_cast<std::uint32_t>(record.WordLength));
    seed = combined(seed, signExtended(record.FixedExponent));
    return combined(seed, signExtended(record.DataTypeOverrideState));
}

fxdt_isequal_to fxdt_isequal_to::withEqualHash() {
    fxdt_isequal_to equality;
    equality.comparesOverrideState_ = true;
    return equality;
}

bool fxdt_isequal_to::operator()(const fxpDataTypeProp& a, const fxpDataTypeProp& b) const {
    return a.DataTypeMode == b.DataTypeMode && a.Signedness == b.Signedness &&
           a.WordLength == b.WordLength && a.FixedExponent == b.FixedExponent &&
           (!comparesOverrideState_ || a.DataTypeOverrideState == b.DataTypeOverrideState) &&
           a.SlopeAdjustmentFactor == b.SlopeAdjustmentFactor && a.Bias == b.Bias;
}

// The table does not store hashes, so it also compares records of one bucket whose hashes differ.
// Hence the equality that includes the override state, which is part of the hash.
decltype(dtCacheHash) dtCacheHash(initialBuckets, fxdt_ihash(), fxdt_isequal_to::withEqualHash());

decltype(dtCacheMap) dtCacheMap;

fxpDataTypeCachedStrings::fxpDataTypeCachedStrings(const fxpDataTypeProp& record)
    : record_(record) {}

const fxpDataTypeProp& fxpDataTypeCachedStrings::record() const { return record_; }

namespace {

// What threads may change: the containers, the insertion into their indices, and the strings of an
// entry that are not marked as computed. Never held while a string is computed, which calls the
// host and the locale.
constinit std::mutex changes;

constinit TVTypeSys::EntryIndex hashIndex;
constinit TVTypeSys::EntryIndex mapIndex;

// Nearly every request is a hit. A miss is a separate function, so that a hit saves no registers
// for it.
template <class Container>
[[gnu::noinline]] fxpDataTypeCachedStrings&
insertEntry(Container& container, TVTypeSys::EntryIndex& index, const fxpDataTypeProp& record) {
    const std::lock_guard lock(changes);
    index.reserveOne();
    const auto [place, isNew] = container.try_emplace(record, record);
    // Otherwise the record of the entry is equal, but differs in bits: it has a zero of another
    // sign, a NaN, or fields that do not matter to its mode.
    if (isNew) {
        index.insert(place->second);
    }
    return place->second;
}

} // namespace

/// Returns a string, computed by `compute` on first use.
template <class Compute>
const std::string& fxpDataTypeCachedStrings::memoised(unsigned int slot,
                                                      const Compute& compute) const {
    const unsigned int computed = std::atomic_ref(computed_).load(std::memory_order_acquire);
    if ((computed >> slot & 1U) == 0) {
        memoise(slot, compute);
    }
    return strings_[slot];
}

template <class Compute>
[[gnu::noinline]] void fxpDataTypeCachedStrings::memoise(unsigned int slot,
                                                         const Compute& compute) const {
    std::string text = compute();
    const std::lock_guard lock(changes);
    // Another thread may have computed the string meanwhile and returned a reference to it.
    if ((computed_ >> slot & 1U) == 0) {
        strings_[slot] = std::move(text);
        std::atomic_ref(computed_).store(static_cast<std::uint8_t>(computed_ | 1U << slot),
                                         std::memory_order_release);
    }
}

const std::string& fxpDataTypeCachedStrings::getFxpDataTypeToIdentifierString() const {
    return memoised(0, [&] { return fxpDataTypeToIdentifierString_NoCache(&record_); });
}

const std::string&
fxpDataTypeCachedStrings::getCtorForOndrixEval(FxpDT::baseCtorPrefer base,
                                               FxpDT::scalingRepPrefer scaling) const {
    const unsigned int baseIndex = base == FxpDT::PreferNumericType ? 0 : 1;
    return memoised(1 + 2 * scalingIndex(scaling) + baseIndex,
                    [&] { return fxpDataTypeToConstructorString_NoCache(record_, base, scaling); });
}

fxpDataTypeCachedStrings& fxpDataTypeCacheFindHash(const fxpDataTypeProp& record) {
    auto* const found = hashIndex.find(record);
    return found != nullptr ? *found : insertEntry(dtCacheHash, hashIndex, record);
}

fxpDataTypeCachedStrings& fxpDataTypeCacheFindMap(const fxpDataTypeProp& record) {
    auto* const found = mapIndex.find(record);
    return found != nullptr ? *found : insertEntry(dtCacheMap, mapIndex, record);
}

fxpDataTypeCachedStrings& fxpDataTypeCacheFind(const fxpDataTypeProp& record) {
    return record.SlopeAdjustmentFactor == 1.0 && record.Bias == 0.0
               ? fxpDataTypeCacheFindHash(record)
               : fxpDataTypeCacheFindMap(record);
}

const std::string& fxpDataTypeToIdentifierString(const fxpDataTypeProp* record) {
    return fxpDataTypeCacheFind(*record).getFxpDataTypeToIdentifierString();
}

const std::string& fxpDataTypeToConstructorString(const fxpDataTypeProp& record,
                                                  FxpDT::baseCtorPrefer base,
                                                  FxpDT::scalingRepPrefer scaling) {
    return fxpDataTypeCacheFind(record).getCtorForOndrixEval(base, scaling);
}
