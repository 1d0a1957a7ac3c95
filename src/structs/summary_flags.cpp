// Summary flags of struct types: a depth-first search with an explicit stack, memoised per type.
#include "structs/element_properties.h"

#include <tvtypes/structdatatype.h>

#include <optional>
#include <unordered_map>
#include <vector>

namespace {

using Flags = StructDataType::SummaryFlags;

/// A type on the search path, and its next element.
struct Visit {
    StructDataType* type;
    std::size_t next = 0;
};

/// Adds the flags of one element. `nested` has the flags of its type if that is a struct.
void add(const StructElement& element, const std::optional<Flags>& nested, Flags& flags) {
    const bool isVariable = element.dimensionsMode == 1;
    flags.hasFrameBasedElements |= element.samplingMode == 1;
    flags.hasVarDims |= isVariable;
    if (!nested) {
        flags.hasComplexData |= element.signalType == 1;
        return;
    }
    // The signal type of an element that is a struct is ignored.
    flags.hasFrameBasedElements |= nested->hasFrameBasedElements;
    flags.hasVarDims |= nested->hasVarDims;
    flags.hasAOB |= nested->hasAOB || isVariable || !TVTypeSys::isScalar(element);
    flags.hasComplexData |= nested->hasComplexData;
}

} // namespace

void StructDataType::createCacheForFrequentlyAccessedProperties(
    const TVTypeSys::DataTypeTable* table) {
    cacheForFrequentlyAccessedProperties(table);
}

StructDataType::SummaryFlags
StructDataType::cacheForFrequentlyAccessedProperties(const TVTypeSys::DataTypeTable* table) {
    if (propertiesCached_) {
        return summaryFlags_;
    }
    // Stored in the types at the end: an error leaves them all unchanged.
    std::unordered_map<StructDataType*, Flags> found{{this, {}}};
    std::vector<Visit> path{{this}};
    while (!path.empty()) {
        Visit& visit = path.back();
        StructDataType& type = *visit.type;
        if (visit.next == type.elements_.size()) {
            path.pop_back();
            continue;
        }
        const StructElement& element = *type.elements_[visit.next];
        StructDataType* const nested = element.dataTypeId == AUTO_DATA_TYPE_ID
                                           ? nullptr
                                           : TVTypeSys::resolveStruct(*table, element.dataTypeId);
        std::optional<Flags> nestedFlags;
        if (nested != nullptr && nested->propertiesCached_) {
            nestedFlags = nested->summaryFlags_;
        } else if (nested != nullptr) {
            const auto [entry, isNew] = found.try_emplace(nested);
            if (isNew) {
                path.push_back({nested});
                continue;
            }
            nestedFlags = entry->second;
        }
        add(element, nestedFlags, found[&type]);
        ++visit.next;
    }
    for (const auto& [type, flags] : found) {
        type->summaryFlags_ = flags;
        type->propertiesCached_ = true;
    }
    return summaryFlags_;
}
