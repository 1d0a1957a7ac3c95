#include "model/struct_elements.h"

#include <fndut/alloc.h>

#include <algorithm>
#include <cstddef>
#include <new>
#include <string>

namespace tvtool::model {

namespace {

/// Returns a copy that the element will own; null for none.
int* allocateDimensions(std::span<const int> sizes) {
    if (sizes.empty()) {
        return nullptr;
    }
    auto* const dimensions = static_cast<int*>(utMalloc(sizes.size() * sizeof(int)));
    if (dimensions == nullptr) {
        throw std::bad_alloc();
    }
    std::ranges::copy(sizes, dimensions);
    return dimensions;
}

} // namespace

void setElements(StructDataType& type, const std::vector<TypeElement>& elements) {
    type.setNumElements(static_cast<int>(elements.size()));
    for (std::size_t i = 0; i < elements.size(); ++i) {
        const TypeElement& from = elements[i];
        StructElement& element = *type.getElements()[i];
        element.setName(std::string(from.name).c_str());
        element.setDataTypeId(from.type);
        element.setUnitId(from.unit);
        element.setNumDimensions(static_cast<int>(from.dimensions.size()));
        element.setDimensions(allocateDimensions(from.dimensions));
        element.setSignalType(0);
        element.setSamplingMode(0);
        element.setDimensionsMode(0);
    }
}

} // namespace tvtool::model
