// What a struct type contains somewhere, found once and remembered.
#include <tvtypes/datatypetable.h>
#include <tvtypes/structdatatype.h>

#include <algorithm>

namespace {

bool isArray(const StructElement& element) {
    return element.dimensions != nullptr &&
           std::any_of(element.dimensions, element.dimensions + std::max(element.numDimensions, 0),
                       [](int size) { return size != 1; });
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
    SummaryFlags found;
    for (const StructElement* element : elements_) {
        const bool isVariable = element->dimensionsMode == 1;
        SummaryFlags here;
        here.hasFrameBasedElements = element->samplingMode == 1;
        here.hasVarDims = isVariable;
        here.hasComplexData = element->signalType == 1;
        TVTypeSys::DataType* type = element->dataTypeId == AUTO_DATA_TYPE_ID
                                        ? nullptr
                                        : table->getDataTypeAliasedThruTo(element->dataTypeId);
        if (type != nullptr && type->getIsType(TVTypeSys::DataTypeQualifierStruct)) {
            const SummaryFlags nested =
                static_cast<StructDataType*>(type)->cacheForFrequentlyAccessedProperties(table);
            here.hasFrameBasedElements |= nested.hasFrameBasedElements;
            here.hasVarDims |= nested.hasVarDims;
            here.hasAOB = isArray(*element) || isVariable || nested.hasAOB;
            // The signal type of an element that is a struct itself says nothing.
            here.hasComplexData = nested.hasComplexData;
        }
        found.hasFrameBasedElements |= here.hasFrameBasedElements;
        found.hasVarDims |= here.hasVarDims;
        found.hasAOB |= here.hasAOB;
        found.hasComplexData |= here.hasComplexData;
    }
    summaryFlags_ = found;
    propertiesCached_ = true;
    return summaryFlags_;
}
