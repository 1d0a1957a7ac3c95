// A table and shorthands to fill it with struct types.
#pragma once

#include "support/errors.h"

#include <tvtypes/datatypetable.h>
#include <tvtypes/elementaccess.h>
#include <tvtypes/functions.h>
#include <tvtypes/structdatatype.h>

#include <fndut/alloc.h>

#include <array>
#include <functional>
#include <memory>
#include <numeric>
#include <string>
#include <vector>

namespace TVTypeSys {

inline int width(const StructElement& element) {
    return std::accumulate(element.dimensions, element.dimensions + element.numDimensions, 1,
                           std::multiplies<>());
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

    bool isStruct(int id) {
        return id >= 0 && table.getDataTypeAliasedThruTo(id)->getIsType(DataTypeQualifierStruct);
    }

    // Computes the counts from those of the nested types.
    void count(StructDataType& type) {
        int nodes = 1, leaves = 0, scalars = 0;
        for (const StructElement* element : type.getElements()) {
            const int copies = width(*element);
            if (isStruct(element->dataTypeId)) {
                const StructDataType& nested = structAt(element->dataTypeId);
                nodes += (copies == 1 ? 0 : 1) + copies * nested.getNumDFSElements();
                leaves += copies * nested.getNumFlatElements();
                scalars += copies * nested.getNumRawElements();
            } else {
                ++nodes;
                ++leaves;
                scalars += copies * (element->signalType == 1 ? 2 : 1);
            }
        }
        type.setNumDFSElements(nodes);
        type.setNumFlatElements(leaves);
        type.setNumRawElements(scalars);
    }

    DataTypeTable table;
};

} // namespace TVTypeSys
