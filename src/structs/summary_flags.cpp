// What a struct type contains somewhere, found once and remembered.
#include "structs/elements.h"

#include <tvtypes/structdatatype.h>

#include <unordered_set>
#include <vector>

namespace {

using Flags = StructDataType::SummaryFlags;

/// A type whose flags are being computed, as far as its elements have been looked at.
struct Visit {
    StructDataType* type;
    std::size_t next = 0;
    Flags found;
};

/// What one element adds; `nested` is the type of an element that is a struct, else null.
void add(const StructElement& element, const StructDataType* nested, Flags& found) {
    const bool isVariable = element.dimensionsMode == 1;
    found.hasFrameBasedElements |= element.samplingMode == 1;
    found.hasVarDims |= isVariable;
    if (nested == nullptr) {
        found.hasComplexData |= element.signalType == 1;
        return;
    }
    // The signal type of an element that is a struct itself says nothing.
    found.hasFrameBasedElements |= nested->hasFrameBasedElements();
    found.hasVarDims |= nested->hasVarDims();
    found.hasAOB |= nested->hasAOB() || isVariable || !TVTypeSys::isScalar(element);
    found.hasComplexData |= nested->hasComplexData();
}

} // namespace

void StructDataType::createCacheForFrequentlyAccessedProperties(
    const TVTypeSys::DataTypeTable* table) {
    cacheForFrequentlyAccessedProperties(table);
}

StructDataType::SummaryFlags
StructDataType::cacheForFrequentlyAccessedProperties(const TVTypeSys::DataTypeTable* table) {
    std::unordered_set<const StructDataType*> begun{this};
    std::vector<Visit> path;
    if (!propertiesCached_) {
        path.push_back({this, 0, {}});
    }
    while (!path.empty()) {
        Visit& visit = path.back();
        StructDataType& type = *visit.type;
        if (visit.next == type.elements_.size()) {
            type.summaryFlags_ = visit.found;
            type.propertiesCached_ = true;
            path.pop_back();
            continue;
        }
        const StructElement& element = *type.elements_[visit.next];
        StructDataType* const nested = TVTypeSys::structAt(*table, element.dataTypeId);
        if (nested != nullptr && !nested->propertiesCached_ && begun.insert(nested).second) {
            path.push_back({nested, 0, {}});
            continue;
        }
        add(element, nested, visit.found);
        ++visit.next;
    }
    return summaryFlags_;
}
