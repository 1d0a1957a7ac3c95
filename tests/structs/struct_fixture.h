// A table and shorthands to fill it with struct types.
#pragma once

#include "support/errors.h"

#include <tvtypes/datatypetable.h>
#include <tvtypes/structdatatype.h>

#include <fndut/alloc.h>

#include <string>
#include <vector>

namespace TVTypeSys {

inline int widthOf(const std::vector<int>& dimensions) {
    int width = 1;
    for (const int size : dimensions) {
        width *= size;
    }
    return width;
}

class StructTest : public testing::Test {
  protected:
    StructDataType& addStruct(const std::string& name, int elements) {
        const int id = table.registerStructDataType(name.c_str(), DataTypeSourceUnchecked, nullptr);
        StructDataType& type = structAt(id);
        type.setNumElements(elements);
        return type;
    }

    StructDataType& structAt(int id) {
        return dynamic_cast<StructDataType&>(*table.getDataTypeAliasedThruTo(id));
    }

    static StructElement& fill(StructDataType& type, int index, const std::string& name, int typeId,
                               const std::vector<int>& dimensions = {}, bool isComplex = false) {
        StructElement& element = *type.getElements()[static_cast<std::size_t>(index)];
        element.setName(name.c_str());
        element.setDataTypeId(typeId);
        element.setSignalType(isComplex ? 1 : 0);
        element.setNumDimensions(static_cast<int>(dimensions.size()));
        if (!dimensions.empty()) {
            element.setDimensions(static_cast<int*>(utCalloc(dimensions.size(), sizeof(int))));
            std::copy(dimensions.begin(), dimensions.end(), element.dimensions);
        }
        return element;
    }

    // Computes the counts from those of the nested types.
    void count(StructDataType& type) {
        int nodes = 1;
        int leaves = 0;
        int scalars = 0;
        for (const StructElement* element : type.getElements()) {
            const std::vector<int> dimensions(element->dimensions,
                                              element->dimensions + element->numDimensions);
            const int width = widthOf(dimensions);
            auto* const nested = element->dataTypeId < 0
                                     ? nullptr
                                     : dynamic_cast<StructDataType*>(
                                           table.getDataTypeAliasedThruTo(element->dataTypeId));
            nodes +=
                nested == nullptr ? 1 : (width == 1 ? 0 : 1) + width * nested->getNumDFSElements();
            leaves += nested == nullptr ? 1 : width * nested->getNumFlatElements();
            scalars += width * (nested != nullptr          ? nested->getNumRawElements()
                                : element->signalType == 1 ? 2
                                                           : 1);
        }
        type.setNumDFSElements(nodes);
        type.setNumFlatElements(leaves);
        type.setNumRawElements(scalars);
    }

    DataTypeTable table;
};

} // namespace TVTypeSys
