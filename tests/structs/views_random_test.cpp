// The views of random struct types, which may change between reads, against their definition: a
// search from the first element at each level of nesting. And the views of struct types that are
// too deep for recursion and too wide for a search from the start at each index.
#include "structs/struct_fixture.h"
#include "support/random_seed.h"

#include <algorithm>
#include <map>
#include <random>
#include <tuple>

namespace TVTypeSys {
namespace {

using Path = std::vector<std::pair<std::string, int>>;
using Step = std::array<int, 4>; // element, copy, type id, start

struct Node {
    const StructElement* element; // null for a struct or a copy of one
    std::string name;
    int typeId, parentId, position, scalarsBefore;
    Path path; // without the instance
};

struct Scalar {
    int typeId, unitId, offset;
};

class RandomViewsTest : public StructTest {
  protected:
    int pick(int first, int last) { return std::uniform_int_distribution(first, last)(random); }

    // Registers up to six struct types, whose elements are built-in types or earlier structs.
    int addStructs() {
        const int aliasOfInt8 =
            table.registerAliasDataType("Alias", DataTypeSourceUnchecked, 2, nullptr);
        std::vector<int> structs;
        for (int i = pick(0, 5); i >= 0; --i) {
            StructDataType& type = addStruct("S" + std::to_string(i), pick(0, 4));
            for (int k = 0; k < type.getNumElements(); ++k) {
                const bool isStruct = !structs.empty() && pick(0, 1) == 1;
                const int plain[] = {0, 1, 5, 8, -1, aliasOfInt8};
                std::vector<int> dimensions(static_cast<std::size_t>(pick(0, 2)));
                std::ranges::generate(dimensions, [this] { return pick(1, pick(1, 3)); });
                StructElement& element =
                    fill(type, k, "e" + std::to_string(k),
                         isStruct ? structs[static_cast<std::size_t>(
                                        pick(0, static_cast<int>(structs.size()) - 1))]
                                  : plain[pick(0, 5)],
                         dimensions, pick(0, 1) == 1);
                element.setOffset(pick(-1, 99));
                element.setVarDimsOffset(pick(-1, 99));
                element.setUnitId(pick(0, 9));
            }
            type.setSize(pick(0, 99));
            count(type);
            structs.push_back(type.getId());
        }
        return structs.back();
    }

    int sizeAt(int typeId) {
        return table.getDataTypeAt(static_cast<std::size_t>(typeId + 1))->getSize();
    }

    StructElement& elementAt(int id, int i) {
        return *structAt(id).getElements()[static_cast<std::size_t>(i)];
    }

    Step compute(int id, int index) {
        const int count = structAt(id).getNumDFSElements();
        if (index == 0 || index >= count) {
            return {-1, index / count, id, index == 0 ? -1 : index / count * count};
        }
        for (int i = 0, before = 0, copy = 1;;) {
            const StructElement& element = elementAt(id, i);
            int nodes = 1, header = 0, copies = copy;
            if (isStruct(element.dataTypeId)) {
                copies = width(element);
                header = copies > 1 && copy == 1;
                if (header == 1 && before + 1 == index) {
                    return {i, -1, element.dataTypeId, -1};
                }
                nodes = structAt(element.dataTypeId).getNumDFSElements() + header;
            }
            if (before + nodes >= index) {
                return {i, copy - 1, element.dataTypeId, before + header + 1};
            }
            before += nodes;
            i += copy == copies;
            copy = copy == copies ? 1 : copy + 1;
        }
    }

    int nodeOffset(int id, int index, int StructElement::*field) {
        const bool isBytes = field == &StructElement::offset;
        const auto known = offsets.try_emplace({id, index, isBytes}, -1).first;
        if (known->second == -1) {
            const auto [element, copy, typeId, start] = compute(id, index);
            known->second =
                (element < 0 ? 0 : elementAt(id, element).*field) +
                (isBytes && copy > 0 ? copy * sizeAt(typeId) : 0) +
                (start >= 0 && isStruct(typeId) ? nodeOffset(typeId, index - start, field) : 0);
        }
        return known->second;
    }

    Node nodeAt(int id, int index) {
        const auto [i, copy, typeId, start] = compute(id, index);
        Node node{nullptr, "", typeId, INVALID_DATA_TYPE_ID, -1, 0, {}};
        const bool isCopy = start >= 0 && isStruct(typeId);
        if (isCopy) {
            node = nodeAt(typeId, index - start);
            node.scalarsBefore += copy * structAt(typeId).getNumRawElements();
        }
        if (i < 0) {
            return node;
        }
        const StructElement& element = elementAt(id, i);
        if (!isCopy || index == start) {
            node.element = isCopy ? nullptr : &element;
            node.name = element.name;
            node.parentId = id;
            node.position = i;
        }
        node.path.insert(node.path.begin(),
                         {element.name, isCopy && width(element) > 1 ? copy : -1});
        for (int k = 0; k < i; ++k) {
            node.scalarsBefore += scalarsOf(elementAt(id, k));
        }
        return node;
    }

    int scalarsOf(const StructElement& element) {
        return width(element) * (isStruct(element.dataTypeId)
                                     ? structAt(element.dataTypeId).getNumRawElements()
                                     : 1 + (element.signalType == 1));
    }

    // The element and the first index of the element with a scalar.
    std::pair<int, int> findScalar(int id, int index) {
        for (int i = 0, base = 0;; ++i) {
            const int next = base + scalarsOf(elementAt(id, i));
            if (next > index) {
                return {i, base};
            }
            base = next;
        }
    }

    Scalar scalarAt(int id, int index) {
        const auto [i, base] = findScalar(id, index);
        const StructElement& element = elementAt(id, i);
        const int inElement = index - base;
        const int typeId = element.dataTypeId;
        if (!isStruct(typeId)) {
            return {typeId, element.unitId, element.offset + inElement * sizeAt(typeId)};
        }
        const int scalarsOfCopy = structAt(typeId).getNumRawElements();
        Scalar scalar = scalarAt(typeId, inElement % scalarsOfCopy);
        scalar.offset += element.offset + inElement / scalarsOfCopy * sizeAt(typeId);
        return scalar;
    }

    // Changes offsets, or exchanges two elements, which leaves the counts as they are.
    void edit(int id) {
        const int last = structAt(id).getNumElements() - 1;
        StructElement& first = elementAt(id, pick(0, last));
        StructElement& second = elementAt(id, pick(0, last));
        first.setOffset(pick(-1, 99));
        second.setVarDimsOffset(pick(-1, 99));
        if (pick(0, 1) == 1) {
            std::swap(first.dataTypeId, second.dataTypeId);
            std::swap(first.dimensions, second.dimensions);
            std::swap(first.numDimensions, second.numDimensions);
            std::swap(first.signalType, second.signalType);
        }
    }

    // The indices below a bound in random order.
    std::vector<int> shuffled(int bound) {
        std::vector<int> indices(static_cast<std::size_t>(bound));
        std::iota(indices.begin(), indices.end(), 0);
        std::ranges::shuffle(indices, random);
        return indices;
    }

    std::mt19937 random{randomSeed(20)};
    std::map<std::tuple<int, int, bool>, int> offsets; // that have been read, for each type
};

} // namespace

// Each read is made through a new view. In every other round elements change between reads: then
// offsets of nodes are those of the first read, and other cached values are not compared.
TEST_F(RandomViewsTest, MatchDefinition) {
    for (int round = 0; round < 600; ++round) {
        table.resetToBuiltin();
        offsets.clear();
        const int outermost = addStructs();
        const bool edits = round % 2 == 1;
        const auto pickStruct = [&] {
            const int id = edits && pick(0, 1) == 1 ? pick(15, outermost) : outermost;
            if (edits && pick(0, 3) == 0 && structAt(id).getNumElements() > 0) {
                edit(id);
            }
            return id;
        };
        for (const int any : shuffled(2 * structAt(outermost).getNumDFSElements())) {
            const int id = pickStruct();
            const int count = structAt(id).getNumDFSElements();
            const int i = any % (2 * count); // of two instances
            SCOPED_TRACE("node " + std::to_string(i) + " in round " + std::to_string(round));
            DFSElementAccess view(&table, id);
            Step found{};
            view.computeDataTypeIdAndIndex(i, &found[0], &found[1], &found[2], &found[3]);
            ASSERT_EQ(compute(id, i), found);
            ASSERT_EQ(nodeOffset(id, i, &StructElement::offset), view.getOffset(i));
            ASSERT_EQ(nodeOffset(id, i, &StructElement::varDimsOffset), view.getVarDimsOffset(i));
            if (edits) {
                continue;
            }
            const Node node = nodeAt(id, i);
            ASSERT_EQ(node.name, view.getName(i));
            ASSERT_EQ(node.typeId, view.getDataTypeId(i));
            if (node.element != nullptr) {
                ASSERT_EQ(node.element, view.getStructElement(i));
            }
            ASSERT_EQ(node.element == nullptr ? 0 : node.element->signalType,
                      view.getSignalType(i));
            ASSERT_EQ(node.scalarsBefore, view.getRawElementIdx(i));
            int parentId = 0, position = 0;
            view.getImmediateParentDTypeIdAndOffset(i, parentId, position);
            ASSERT_EQ(std::pair(node.parentId, node.position), std::pair(parentId, position));
            Path path;
            view.getFullPath(i, true, path);
            Path expected{{"", i / count}};
            expected.insert(expected.end(), node.path.begin(), node.path.end());
            ASSERT_EQ(expected, path);
        }
        FlatElementAccess flat(&table, outermost);
        const int nodes = structAt(outermost).getNumDFSElements();
        for (int i = 0, leaf = 0; i < nodes && !edits; ++i) {
            if (!isStruct(nodeAt(outermost, i).typeId)) {
                ASSERT_EQ(i, flat.getDFSIdx(leaf));
                ASSERT_EQ(i + 2 * nodes, flat.getDFSIdx(leaf++ + 2 * flat.getNumElements()));
            }
        }
        for (const int any : shuffled(structAt(outermost).getNumRawElements())) {
            const int id = pickStruct();
            RawElementAccess raw(&table, id);
            if (const int count = raw.getNumElements(); count > 0) {
                const Scalar scalar = scalarAt(id, any % count);
                ASSERT_EQ(scalar.typeId, raw.getDataTypeId(any % count));
                ASSERT_EQ(scalar.unitId, raw.getUnitId(any % count));
                ASSERT_EQ(scalar.offset, raw.getOffset(any % count));
                const auto [element, base] = findScalar(id, any % count);
                ASSERT_EQ(base, ImmediateElementAccess(&table, id).getRawElementIdx(element));
            }
        }
    }
}

TEST_F(RandomViewsTest, DeepAndWideStructs) {
    const int depth = 20000;
    int inner = 0;
    for (int i = 0; i < depth; ++i) {
        StructDataType& type = addStruct("Deep" + std::to_string(i), 2);
        fill(type, 0, "leaf", 0).setOffset(0);
        fill(type, 1, "inner", inner, {1}).setOffset(8);
        count(type);
        inner = type.getId();
    }
    const int bytes = 8 * (depth + 1);
    structAt(inner).setSize(bytes);
    StructDataType& outer = addStruct("Outer", 1);
    fill(outer, 0, "copies", inner, {2}).setOffset(0);
    count(outer);
    DFSElementAccess nodes(&table, outer.getId());
    RawElementAccess scalars(&table, outer.getId());
    FlatElementAccess leaves(&table, outer.getId());
    const int last = nodes.getNumElements() - 1;
    for (int i = last; i > 0; --i) {
        nodes.getOffset(i);
    }
    EXPECT_EQ(2 * bytes - 8, nodes.getOffset(last));
    EXPECT_EQ(2 * bytes - 8, scalars.getOffset(scalars.getNumElements() - 1));
    EXPECT_EQ(last, leaves.getDFSIdx(leaves.getNumElements() - 1));
    Path path;
    nodes.getFullPath(last, false, path);
    EXPECT_EQ(static_cast<std::size_t>(depth) + 1, path.size());
    outer.createCacheForFrequentlyAccessedProperties(&table);
    EXPECT_TRUE(outer.hasAOB());
}

} // namespace TVTypeSys
