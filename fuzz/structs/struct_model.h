/// \file
/// Reference model of the views of a struct type: one recursive walk that lists all nodes.
#pragma once

#include <tvtypes/datatypetable.h>
#include <tvtypes/structdatatype.h>

#include <functional>
#include <numeric>
#include <string>
#include <utility>
#include <vector>

namespace fuzzing {

using Path = std::vector<std::pair<std::string, int>>;

/// A node of the depth-first numbering of one instance.
struct Node {
    const StructElement* element = nullptr; ///< null for a struct or one of an array of structs
    std::string name;
    int typeId = 0;
    int parentId = INVALID_DATA_TYPE_ID;
    int position = -1; ///< in the parent
    int offset = 0;
    int varDimsOffset = 0;
    int scalarsBefore = 0;
    bool isLeaf = false;
    Path path;
};

/// A scalar of the raw numbering of one instance.
struct Scalar {
    const StructElement* element;
    int offset;
};

inline int widthOf(const StructElement& element) {
    return std::accumulate(element.dimensions, element.dimensions + element.numDimensions, 1,
                           std::multiplies<>());
}

/// The nodes and scalars of a struct type.
class StructModel {
  public:
    StructModel(const TVTypeSys::DataTypeTable& table, int typeId) : table_(table) {
        Node root;
        root.typeId = typeId;
        walk(root);
        for (std::size_t i = 0; i < nodes.size(); ++i) {
            if (nodes[i].isLeaf) {
                leaves.push_back(static_cast<int>(i));
            }
        }
    }

    static bool isStruct(const TVTypeSys::DataTypeTable& table, int typeId) {
        return typeId >= 0 && table.getDataTypeAliasedThruTo(typeId)->getIsType(
                                  TVTypeSys::DataTypeQualifierStruct);
    }

    std::vector<Node> nodes;
    std::vector<Scalar> scalars;
    std::vector<int> leaves; ///< indices of nodes

  private:
    int sizeOf(int typeId) const {
        return table_.getDataTypeAt(static_cast<std::size_t>(typeId + 1))->getSize();
    }

    /// Appends a struct, then all that is inside.
    void walk(Node self) {
        self.scalarsBefore = static_cast<int>(scalars.size());
        nodes.push_back(self);
        const auto& type =
            dynamic_cast<const StructDataType&>(*table_.getDataTypeAliasedThruTo(self.typeId));
        int position = 0;
        for (const StructElement* element : type.getElements()) {
            Node node = self;
            node.name = element->name;
            node.typeId = element->dataTypeId;
            node.parentId = self.typeId;
            node.position = position++;
            node.offset += element->offset;
            node.varDimsOffset += element->varDimsOffset;
            node.path.emplace_back(element->name, -1);
            add(*element, std::move(node));
        }
    }

    void add(const StructElement& element, Node node) {
        const int width = widthOf(element);
        const bool isNested = isStruct(table_, element.dataTypeId);
        if (isNested && width == 1) {
            return walk(std::move(node));
        }
        Node header = node;
        header.element = &element;
        header.isLeaf = !isNested;
        header.scalarsBefore = static_cast<int>(scalars.size());
        nodes.push_back(std::move(header));
        const int size = sizeOf(element.dataTypeId);
        if (!isNested) {
            for (int i = 0; i < width * (element.signalType == 1 ? 2 : 1); ++i) {
                scalars.push_back({&element, node.offset + i * size});
            }
            return;
        }
        for (int copy = 0; copy < width; ++copy) {
            Node one = node;
            one.offset += copy * size;
            one.path.back().second = copy;
            walk(std::move(one));
        }
    }

    const TVTypeSys::DataTypeTable& table_;
};

} // namespace fuzzing
