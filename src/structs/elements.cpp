#include "structs/elements.h"

#include "services/errors.h"

#include <tvtypes/datatypetable.h>

#include <algorithm>
#include <span>
#include <typeinfo>

namespace TVTypeSys {

namespace {

// Stands for a type that is not known yet, as "auto" does, and has no record.
constexpr int undeterminedTypeId = -2;

std::span<const int> dimensionsOf(const StructElement& element) {
    const bool hasAny = element.dimensions != nullptr && element.numDimensions > 0;
    return {element.dimensions, hasAny ? static_cast<std::size_t>(element.numDimensions) : 0};
}

} // namespace

StructDataType* structAt(const DataTypeTable& table, int id) {
    if (id == AUTO_DATA_TYPE_ID || id == undeterminedTypeId) {
        return nullptr;
    }
    DataType* const type = table.getDataTypeAliasedThruTo(id);
    if (!type->getIsType(DataTypeQualifierStruct)) {
        return nullptr;
    }
    // The qualifier can be set on any record. The class itself is told faster than one below it.
    return typeid(*type) == typeid(StructDataType) ? static_cast<StructDataType*>(type)
                                                   : dynamic_cast<StructDataType*>(type);
}

StructDataType& structOf(const DataTypeTable& table, int id) {
    StructDataType* const type = structAt(table, id);
    if (type == nullptr) {
        throwError(general::InvalidDataTypeId(id));
    }
    return *type;
}

StructElement& elementAt(const StructDataType& type, int index) {
    const std::vector<StructElement*>& elements = type.getElements();
    if (index < 0 || static_cast<std::size_t>(index) >= elements.size()) {
        refuseIndex(type, index);
    }
    return *elements[static_cast<std::size_t>(index)];
}

int sizeOfType(const DataTypeTable& table, int id) {
    table.checkDataTypeId(id);
    return table.getDataTypeAt(static_cast<std::size_t>(id + 1))->getSize();
}

bool isScalar(const StructElement& element) {
    return std::ranges::all_of(dimensionsOf(element), [](int size) { return size == 1; });
}

int widthOf(const StructElement& element) {
    int width = 1;
    for (const int size : dimensionsOf(element)) {
        width = wrapped(static_cast<long long>(width) * size);
    }
    return width;
}

int complexWidthOf(const StructElement& element) {
    const int width = widthOf(element);
    return element.signalType == 1 ? wrapped(2LL * width) : width;
}

void refuseIndex(const StructDataType& type, int index) {
    throwError(general::InvalidStructIndex(orEmpty(type.getName()), index));
}

} // namespace TVTypeSys
