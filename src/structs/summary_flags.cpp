// Summary flags of struct types: a depth-first search with an explicit stack, memoised per type.
#include "structs/element_properties.h"

#include <tvtypes/structdatatype.h>

#include <unordered_set>
#include <vector>

namespace {

using Flags = StructDataType::SummaryFlags;

/// A type on the search path, and its next element.
struct Visit {
    StructDataType* type;
    std::size_t next = 0;
    Flags flags;
};

/// Adds the flags of one element. `nested` is its type if that is a struct, else null.
void add(const StructElement& element, const StructDataType* nested, Flags& flags) {
    const bool isVariable = element.dimensionsMode == 1;
    flags.hasFrameBasedElements |= element.samplingMode == 1;
    flags.hasVarDims |= isVariable;
    if (nested == nullptr) {
        flags.hasComplexData |= element.signalType == 1;
        return;
    }
    // The signal type of an element that is a struct is ignored.
    flags.hasFrameBasedElements |= nested->hasFrameBasedElements();
    flags.hasVarDims |= nested->hasVarDims();
    flags.hasAOB |= nested->hasAOB() || isVariable || !TVTypeSys::isScalar(element);
    flags.hasComplexData |= nested->hasComplexData();
}

} // namespace

void StructDataType::createCacheForFrequentlyAccessedProperties(
    const TVTypeSys::DataTypeTable* table) {
    cacheForFrequentlyAccessedProperties(table);
}

StructDataType::SummaryFlags
StructDataType::cacheForFrequentlyAccessedProperties(const TVTypeSys::DataTypeTable* table) {
    std::unordered_set<const StructDataType*> visited{this};
    std::vector<Visit> path;
    if (!propertiesCached_) {
        path.push_back({this, 0, {}});
    }
    while (!path.empty()) {
        Visit& visit = path.back();
        StructDataType& type = *visit.type;
        if (visit.next == type.elements_.size()) {
            type.summaryFlags_ = visit.flags;
            type.propertiesCached_ = true;
            path.pop_back();
            continue;
        }
        const StructElement& element = *type.elements_[visit.next];
        StructDataType* const nested = TVTypeSys::findStruct(*table, element.dataTypeId);
        if (nested != nullptr && !nested->propertiesCached_ && visited.insert(nested).second) {
            path.push_back({nested, 0, {}});
            continue;
        }
        add(element, nested, visit.flags);
        ++visit.next;
    }
    return summaryFlags_;
}
