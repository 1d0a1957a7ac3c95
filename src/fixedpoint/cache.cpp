// Cache of identifier and constructor strings.
#include <tvtypes/fixedpoint/cache.h>
#include <tvtypes/fixedpoint/identifier.h>

namespace {

constexpr std::size_t initialBuckets = 11;

std::uint64_t signExtended(std::int32_t value) { return static_cast<std::uint64_t>(value); }

std::uint64_t combined(std::uint64_t seed, std::uint64_t value) {
    return seed ^ (value + 0x9e3779b9U + (seed << 6) + (seed >> 2));
}

std::size_t scalingIndex(FxpDT::scalingRepPrefer scaling) {
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

// Nearly every request is a hit. The paths of a miss are separate functions that are not inlined,
// so that a hit saves no registers for them.
namespace {

[[gnu::noinline]] const std::string& computeIdentifier(const fxpDataTypeProp& record,
                                                       std::string& text) {
    return text = fxpDataTypeToIdentifierString_NoCache(&record);
}

[[gnu::noinline]] const std::string& computeConstructor(const fxpDataTypeProp& record,
                                                        FxpDT::baseCtorPrefer base,
                                                        FxpDT::scalingRepPrefer scaling,
                                                        std::string& text) {
    return text = fxpDataTypeToConstructorString_NoCache(record, base, scaling);
}

[[gnu::noinline]] fxpDataTypeCachedStrings& insertHashEntry(const fxpDataTypeProp& record) {
    return dtCacheHash.try_emplace(record, record).first->second;
}

} // namespace

const std::string& fxpDataTypeCachedStrings::getFxpDataTypeToIdentifierString() const {
    return identifier_.empty() ? computeIdentifier(record_, identifier_) : identifier_;
}

const std::string&
fxpDataTypeCachedStrings::getCtorForOndrixEval(FxpDT::baseCtorPrefer base,
                                               FxpDT::scalingRepPrefer scaling) const {
    const bool prefersNumericType = base == FxpDT::PreferNumericType;
    std::string& text = constructors_[2 * scalingIndex(scaling) + (prefersNumericType ? 0 : 1)];
    return text.empty() ? computeConstructor(record_, base, scaling, text) : text;
}

fxpDataTypeCachedStrings& fxpDataTypeCacheFindHash(const fxpDataTypeProp& record) {
    const auto found = dtCacheHash.find(record);
    return found != dtCacheHash.end() ? found->second : insertHashEntry(record);
}

[[gnu::noinline]] fxpDataTypeCachedStrings& fxpDataTypeCacheFindMap(const fxpDataTypeProp& record) {
    return dtCacheMap.try_emplace(record, record).first->second;
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
