// Struct types of any elements, read through the four views in any order of indices, also of
// further instances, and compared with a recursive walk. An index that a struct does not have is an
// error, after which every read returns what it did before.
#include "structs/struct_model.h"
#include "support/require.h"

#include <tvtypes/elementaccess.h>

#include <fnd/except.h>
#include <fndut/alloc.h>
#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace {

using namespace TVTypeSys;
using namespace fuzzing;

constexpr int mostNodes = 3000;

/// Fills a table with struct types of built-in types and of structs before them.
class Types {
  public:
    explicit Types(FuzzedDataProvider& input) : input_(input) {
        usable_ = {0, 1, 2, 5, 8, -1};
        usable_.push_back(
            table.registerAliasDataType("Alias", DataTypeSourceUnchecked, 4, nullptr));
        for (int i = input_.ConsumeIntegralInRange(0, 5); i >= 0; --i) {
            outermost = addStruct("S" + std::to_string(i));
            usable_.push_back(outermost);
            if (input_.ConsumeIntegralInRange(0, 3) == 0) {
                usable_.push_back(table.registerAliasDataType(("A" + std::to_string(i)).c_str(),
                                                              DataTypeSourceUnchecked, outermost,
                                                              nullptr));
            }
        }
    }

    DataTypeTable table;
    int outermost = 0;

  private:
    StructDataType& structAt(int id) {
        return dynamic_cast<StructDataType&>(*table.getDataTypeAliasedThruTo(id));
    }

    int addStruct(const std::string& name) {
        const int id = table.registerStructDataType(name.c_str(), DataTypeSourceUnchecked, nullptr);
        StructDataType& type = structAt(id);
        const int count = input_.ConsumeIntegralInRange(0, 5);
        type.setNumElements(count);
        int nodes = 1;
        int leaves = 0;
        int scalars = 0;
        for (int i = 0; i < count; ++i) {
            StructElement& element = *type.getElements()[static_cast<std::size_t>(i)];
            fill(element, "e" + std::to_string(i));
            const int width = widthOf(element);
            const bool isNested = StructModel::isStruct(table, element.dataTypeId);
            const int inside = isNested ? structAt(element.dataTypeId).getNumDFSElements() : 0;
            if (!isNested || nodes + width * inside > mostNodes) {
                element.setDataTypeId(isNested ? 0 : element.dataTypeId);
                ++nodes;
                ++leaves;
                scalars += width * (element.signalType == 1 ? 2 : 1);
                continue;
            }
            const StructDataType& nested = structAt(element.dataTypeId);
            nodes += (width == 1 ? 0 : 1) + width * inside;
            leaves += width * nested.getNumFlatElements();
            scalars += width * nested.getNumRawElements();
        }
        type.setSize(input_.ConsumeIntegralInRange(0, 200));
        type.setNumDFSElements(nodes);
        type.setNumFlatElements(leaves);
        type.setNumRawElements(scalars);
        return id;
    }

    void fill(StructElement& element, const std::string& name) {
        element.setName(name.c_str());
        element.setDataTypeId(
            usable_[input_.ConsumeIntegralInRange<std::size_t>(0, usable_.size() - 1)]);
        element.setUnitId(input_.ConsumeIntegralInRange(0, 9));
        element.setSignalType(input_.ConsumeIntegralInRange(0, 1));
        element.setSamplingMode(input_.ConsumeIntegralInRange(0, 1));
        element.setOffset(input_.ConsumeIntegralInRange(0, 99));
        element.setVarDimsOffset(input_.ConsumeIntegralInRange(0, 99));
        const int count = input_.ConsumeIntegralInRange(0, 2);
        auto* const sizes =
            static_cast<int*>(utCalloc(static_cast<std::size_t>(std::max(count, 1)), sizeof(int)));
        for (int i = 0; i < count; ++i) {
            sizes[i] = input_.ConsumeIntegralInRange(0, 3);
        }
        element.setDimensions(sizes);
        element.setNumDimensions(count);
    }

    FuzzedDataProvider& input_;
    std::vector<int> usable_; ///< ids of types of elements
};

/// The views of one struct type, with their expected results.
class Views {
  public:
    Views(const DataTypeTable& table, int typeId) : model_(table, typeId), typeId_(typeId) {
        size_ = table.getDataTypeAt(static_cast<std::size_t>(typeId + 1))->getSize();
        const auto& type =
            dynamic_cast<const StructDataType&>(*table.getDataTypeAliasedThruTo(typeId));
        elements_ = type.getElements();
        table_ = &table;
        renew();
        require(nodes_->getNumElements() == static_cast<int>(model_.nodes.size()));
        require(leaves_->getNumElements() == static_cast<int>(model_.leaves.size()));
        require(scalars_->getNumElements() == static_cast<int>(model_.scalars.size()));
        require(own_->getNumElements() == static_cast<int>(elements_.size()));
    }

    /// Drops the positions that the views keep.
    void renew() {
        nodes_.emplace(table_, typeId_);
        leaves_.emplace(table_, typeId_);
        scalars_.emplace(table_, typeId_);
        own_.emplace(table_, typeId_);
    }

    void read(FuzzedDataProvider& input) {
        const int view = input.ConsumeIntegralInRange(0, 4);
        const int index =
            input.ConsumeIntegralInRange(-1, 1 << input.ConsumeIntegralInRange(1, 13));
        if (view == 0) {
            renew();
        } else if (index < 0) {
            readInvalid(view, index);
        } else if (view == 1) {
            readNode(index);
        } else if (view == 2) {
            readLeaf(index);
        } else if (view == 3) {
            readScalar(index);
        } else {
            readOwn(index);
        }
    }

    void readAll() {
        for (int i = 0; i < static_cast<int>(model_.nodes.size()); ++i) {
            readNode(i);
        }
        for (int i = static_cast<int>(model_.scalars.size()); i >= 0; --i) {
            readScalar(i);
        }
        for (int i = 0; i <= static_cast<int>(elements_.size()); ++i) {
            readOwn(i);
        }
    }

  private:
    template <class Read>
    static void requireError(const Read& read) {
        try {
            read();
        } catch (const fnd::except::IException&) {
            return;
        }
        require(false);
    }

    void readInvalid(int view, int index) {
        if (view == 3) {
            require(!scalars_->isIdxValid(index));
            requireError([&] { scalars_->getOffset(index); });
            requireError([&] { scalars_->getDataTypeId(index); });
        } else if (view == 4) {
            require(!own_->isIdxValid(index));
            requireError([&] { own_->getOffset(index); });
            requireError([&] { own_->getName(index); });
        }
    }

    int resolved(int typeId) const { return table_->getDataTypeAliasedThruTo(typeId)->getId(); }

    void readNode(int index) {
        const int count = static_cast<int>(model_.nodes.size());
        const int instance = index / count;
        const Node& node = model_.nodes[static_cast<std::size_t>(index % count)];
        require(nodes_->getName(index) == node.name);
        // The element of a struct is made once, with the alias by which it is read first.
        const int type = nodes_->getDataTypeId(index);
        require(type == node.typeId ||
                (node.element == nullptr && resolved(type) == resolved(node.typeId)));
        require(nodes_->getOffset(index) == instance * size_ + node.offset);
        require(nodes_->getVarDimsOffset(index) == node.varDimsOffset);
        require(nodes_->getRawElementIdx(index) ==
                instance * static_cast<int>(model_.scalars.size()) + node.scalarsBefore);
        require(nodes_->getWidth(index) == (node.element == nullptr ? 1 : widthOf(*node.element)));
        require(nodes_->getSignalType(index) ==
                (node.element == nullptr ? 0 : node.element->signalType));
        if (node.element != nullptr) {
            require(nodes_->getStructElement(index) == node.element);
        }
        int parentId = 0;
        int position = 0;
        nodes_->getImmediateParentDTypeIdAndOffset(index, parentId, position);
        require(parentId == node.parentId && position == node.position);
        Path expected{{"", instance}};
        expected.insert(expected.end(), node.path.begin(), node.path.end());
        Path path;
        nodes_->getFullPath(index, true, path);
        require(path == expected);
    }

    void readLeaf(int index) {
        const int count = static_cast<int>(model_.leaves.size());
        if (count == 0) {
            return requireError([&] { leaves_->getDFSIdx(index); });
        }
        const int node = model_.leaves[static_cast<std::size_t>(index % count)] +
                         index / count * static_cast<int>(model_.nodes.size());
        require(leaves_->getDFSIdx(index) == node);
        require(leaves_->getOffset(index) == nodes_->getOffset(node));
        require(leaves_->getUnitId(index) == nodes_->getUnitId(node));
        require(leaves_->getComplexWidth(index) == nodes_->getComplexWidth(node));
        readNode(node);
    }

    void readScalar(int index) {
        const bool isValid = index < static_cast<int>(model_.scalars.size());
        require(scalars_->isIdxValid(index) == isValid);
        if (!isValid) {
            return readInvalid(3, index);
        }
        const Scalar& scalar = model_.scalars[static_cast<std::size_t>(index)];
        require(scalars_->getDataTypeId(index) == scalar.element->dataTypeId);
        require(scalars_->getUnitId(index) == scalar.element->unitId);
        require(scalars_->getOffset(index) == scalar.offset);
        int position = 0;
        int type = 0;
        int base = 0;
        scalars_->computeDataTypeIdAndIndex(index, position, type, base);
        require(type == elements_[static_cast<std::size_t>(position)]->dataTypeId);
        require(base <= index && own_->getRawElementIdx(position) == base &&
                own_->getRawElementIdx(position + 1) > index);
    }

    void readOwn(int index) {
        const bool isValid = index < static_cast<int>(elements_.size());
        require(own_->isIdxValid(index) == isValid);
        if (!isValid) {
            return readInvalid(4, index);
        }
        const StructElement& element = *elements_[static_cast<std::size_t>(index)];
        require(own_->getName(index) == element.name);
        require(own_->getOffset(index) == element.offset);
        require(own_->getWidth(index) == widthOf(element));
        const auto node = std::ranges::find_if(model_.nodes, [&](const Node& one) {
            return one.path.size() == 1 && one.position == index;
        });
        require(own_->getRawElementIdx(index) == node->scalarsBefore);
    }

    StructModel model_;
    int typeId_;
    int size_;
    const DataTypeTable* table_;
    std::vector<StructElement*> elements_;
    std::optional<DFSElementAccess> nodes_;
    std::optional<FlatElementAccess> leaves_;
    std::optional<RawElementAccess> scalars_;
    std::optional<ImmediateElementAccess> own_;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    const Types types(input);
    Views views(types.table, types.outermost);
    while (input.remaining_bytes() > 0) {
        views.read(input);
    }
    views.renew();
    views.readAll();
    return 0;
}
