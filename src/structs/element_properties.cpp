#include "structs/element_properties.h"

#include "services/errors.h"
#include "services/own_messages.h"

#include <tvtypes/datatypetable.h>

#include <algorithm>
#include <span>
#include <typeinfo>

namespace TVTypeSys {

namespace {

std::span<const int> dimensionSpan(const StructElement& element) {
    const bool hasAny = element.dimensions != nullptr && element.numDimensions > 0;
    return {element.dimensions, hasAny ? static_cast<std::size_t>(element.numDimensions) : 0};
}

} // namespace

StructDataType* resolveStruct(const DataTypeTable& table, int id) {
    DataType* const type = table.getDataTypeAliasedThruTo(id);
    if (!type->getIsType(DataTypeQualifierStruct)) {
        return nullptr;
    }
    // A client can set the qualifier on any record. Compares the exact typeid first; dynamic_cast
    // is slower.
    return typeid(*type) == typeid(StructDataType) ? static_cast<StructDataType*>(type)
                                                   : dynamic_cast<StructDataType*>(type);
}

StructDataType& requireStruct(const DataTypeTable& table, int id) {
    StructDataType* const type = findStruct(table, id);
    if (type == nullptr) {
        table.checkDataTypeId(id);
        throwError(own::NotAStruct(
            orEmpty(table.getDataTypeAt(static_cast<std::size_t>(id) + 1)->getName()), id));
    }
    return *type;
}

int typeSize(const DataTypeTable& table, int id) {
    table.checkDataTypeId(id);
    return table.getDataTypeAt(static_cast<std::size_t>(id) + 1)->getSize();
}

bool isScalar(const StructElement& element) {
    return std::ranges::all_of(dimensionSpan(element), [](int size) { return size == 1; });
}

int width(const StructElement& element) {
    int product = 1;
    for (const int size : dimensionSpan(element)) {
        product = truncateToInt(static_cast<long long>(product) * size);
    }
    return product;
}

int complexWidth(const StructElement& element) {
    const int realWidth = width(element);
    return element.signalType == 1 ? truncateToInt(2LL * realWidth) : realWidth;
}

void throwInvalidIndex(const StructDataType& type, int index) {
    throwError(own::InvalidStructIndex(orEmpty(type.getName()), index));
}

} // namespace TVTypeSys
