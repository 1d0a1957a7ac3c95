// Views that have read before a change of the table or of a type, against new views for each read.
#include "structs/struct_fixture.h"

#include <functional>
#include <utility>

namespace TVTypeSys {
namespace {

// A client's struct, whose answers the library cannot know to have changed.
class ClientStruct : public StructDataType {
  public:
    using StructDataType::StructDataType;
    int getIdAliasedThruTo() const override { return target < 0 ? getId() : target; }
    bool getIsType(DataTypeQualifier qualifier) const override {
        return isStruct && StructDataType::getIsType(qualifier);
    }
    int target = -1;
    bool isStruct = true;
};

// Root has a Middle, Middle an Inner and a client's struct, and each of these two leaves. Other
// and Longer can take the place of Inner: the counts of Other are the same, its leaves and offsets
// are not.
class NestedModel : public StructTest {
  public:
    NestedModel() {
        fillLeaves(inner, 0, 3);
        fillLeaves(other, 1, 5);
        fillLeaves(longer, 2, 7);
        client.setNumElements(2);
        fillLeaves(client, 4, 6);
        fill(middle, 0, "inner", inner.getId()).setOffset(0);
        fill(middle, 1, "client", client.getId()).setOffset(16);
        count(middle);
        fill(root, 0, "middle", middle.getId()).setOffset(8);
        count(root);
    }
    void TestBody() override {}
    using StructTest::count;
    using StructTest::fill;
    using StructTest::table;

    ClientStruct& addClientStruct() {
        auto* const type =
            new ClientStruct(table.getNumDataTypes() - 1, "Client", DataTypeSourceUnchecked);
        table.addDataType(type);
        return *type;
    }

    void fillLeaves(StructDataType& type, int typeId, int offset) {
        for (int i = 0; i < type.getNumElements(); ++i) {
            fill(type, i, "leaf", typeId + i).setOffset(offset + i);
        }
        count(type);
    }

    // Reads the nodes with the indices `first`, `first` + 2 and so on, and all that is not cached
    // in the types, through the views that are kept or through new ones.
    std::vector<std::string> read(int first, bool keeps) {
        std::vector<std::string> all;
        const auto add = [&](const std::function<std::string()>& value) {
            std::string text;
            const std::string error = thrownError([&] { text = value(); });
            all.push_back(text + error);
        };
        for (int i = 0; i < 20; ++i) {
            DFSElementAccess newNodes(&table, rootId);
            RawElementAccess newScalars(&table, rootId);
            DFSElementAccess& node = keeps ? nodes : newNodes;
            RawElementAccess& scalar = keeps ? scalars : newScalars;
            if (i % 2 == first) {
                add([&] { return node.getName(i) + std::to_string(node.getDataTypeId(i)); });
                add([&] { return std::to_string(node.getOffset(i)); });
            }
            add([&] { return std::to_string(node.getRawElementIdx(i)); });
            add([&] {
                int parent = 0, element = 0;
                node.getImmediateParentDTypeIdAndOffset(i, parent, element);
                return std::to_string(parent) + " " + std::to_string(element);
            });
            add([&] { return std::to_string(scalar.getOffset(i)); });
            add([&] { return std::to_string(scalar.getDataTypeId(i)); });
        }
        return all;
    }

    StructDataType& unused = addStruct("Unused", 0);
    StructDataType& inner = addStruct("Inner", 2);
    StructDataType& middle = addStruct("Middle", 2);
    StructDataType& root = addStruct("Root", 1);
    ClientStruct& client = addClientStruct();
    StructDataType& other = addStruct("Other", 2);
    StructDataType& longer = addStruct("Longer", 3);
    const int rootId = root.getId();
    DFSElementAccess nodes{&table, rootId};
    RawElementAccess scalars{&table, rootId};
};

} // namespace

TEST(ViewFreshness, MatchesNewViewsAfterChanges) {
    const std::pair<const char*, std::function<void(NestedModel&)>> changes[] = {
        {"nested type replaced",
         [](NestedModel& m) { m.table.replaceDataType(&m.inner, &m.other); }},
        {"root replaced", [](NestedModel& m) { m.table.replaceDataType(&m.root, &m.longer); }},
        {"type before the others removed",
         [](NestedModel& m) { m.table.removeDataType(&m.unused); }},
        {"nested type made an alias",
         [](NestedModel& m) { m.table.setDataTypeIdAliasedTo(m.inner.getId(), m.other.getId()); }},
        {"root made an alias",
         [](NestedModel& m) { m.table.setDataTypeIdAliasedTo(m.root.getId(), m.middle.getId()); }},
        {"root without elements", [](NestedModel& m) { m.root.setNumElements(0); }},
        {"elements of the root replaced",
         [](NestedModel& m) {
             m.root.setNumElements(2);
             m.fill(m.root, 0, "leaf", 0).setOffset(0);
             m.fill(m.root, 1, "longer", m.longer.getId()).setOffset(8);
             m.count(m.root);
         }},
        {"elements of a nested type replaced",
         [](NestedModel& m) {
             m.inner.setNumElements(2);
             m.fillLeaves(m.inner, 6, 9);
         }},
        {"element of another type",
         [](NestedModel& m) { m.middle.getElements()[0]->setDataTypeId(m.other.getId()); }},
        {"count of the root", [](NestedModel& m) { m.root.setNumDFSElements(5); }},
        {"root no longer a struct", [](NestedModel& m) { m.root.setType(DataTypeQualifierEnum); }},
        {"client's type redirected", [](NestedModel& m) { m.client.target = m.other.getId(); }},
        {"reset", [](NestedModel& m) { m.table.resetToBuiltin(); }},
    };
    for (const auto& [name, change] : changes) {
        SCOPED_TRACE(name);
        NestedModel kept, renewed;
        ASSERT_EQ(renewed.read(0, false), kept.read(0, true));
        change(kept);
        change(renewed);
        EXPECT_EQ(renewed.read(1, false), kept.read(1, true));
        // Nodes whose elements may be those of destroyed types.
        EXPECT_EQ(renewed.read(0, false), kept.read(0, true));
    }
}

// A chain of nested structs, each with a leaf in front of the next struct.
class ChainTest : public StructTest {
  protected:
    StructDataType& add(std::size_t level) {
        StructDataType& type = addStruct("S" + std::to_string(++types_), 2);
        fill(type, 0, type.getName(), 1);
        fill(type, 1, "in" + std::to_string(types_), level == 0 ? 0 : ids[level - 1]);
        count(type);
        return type;
    }

    void replace(std::size_t level) {
        StructDataType& replacement = add(level);
        table.replaceDataType(&structAt(ids[level]), &replacement);
    }

    std::vector<int> ids;

  private:
    int types_ = 0;
};

// Elements stay as they were first read when the types that own them are destroyed, at depths with
// a cache in each struct (4 levels) and without (20).
TEST_F(ChainTest, CachedElementsOfReplacedTypes) {
    for (const std::size_t depth : {4U, 20U}) {
        SCOPED_TRACE(depth);
        ids.clear();
        for (std::size_t level = 0; level < depth; ++level) {
            ids.push_back(add(level).getId());
            DFSElementAccess view(&table, ids[level]);
            const auto names = [&view] {
                std::string all;
                for (int node = 0; node < view.getNumElements(); ++node) {
                    all += std::string(" ") + view.getName(node);
                }
                return all;
            };
            const std::string before = names();
            if (level > 0) {
                // The next level reads the element through the cache of this one.
                replace(level - 1);
            }
            EXPECT_EQ(before, names());
        }
    }
}

// The path that a view keeps ends in a struct deeper than those it checks one by one.
TEST_F(ChainTest, ReplacedParentOfInnermostStruct) {
    constexpr std::size_t depth = 20;
    for (std::size_t level = 0; level < depth; ++level) {
        ids.push_back(add(level).getId());
    }
    DFSElementAccess view(&table, ids.back());
    constexpr int innermost = 2 * (depth - 1);
    EXPECT_STREQ("S1", view.getName(innermost + 1));
    replace(1);
    EXPECT_STREQ("in21", view.getName(innermost));
}

TEST(ViewFreshness, StructsThatAreNoLongerStructs) {
    NestedModel model;
    const int id = model.client.getId();
    DFSElementAccess nodes(&model.table, id);
    EXPECT_EQ(6, nodes.getOffset(1));
    EXPECT_EQ(8 + 16 + 6, model.scalars.getOffset(2));
    model.client.isStruct = false;
    EXPECT_ERROR("InvalidDataTypeId(18)", nodes.getOffset(1));
    EXPECT_ERROR("InvalidDataTypeId(18)", model.scalars.getOffset(2));
    model.client.isStruct = true;
    EXPECT_EQ(6, nodes.getOffset(1));
    model.root.setType(DataTypeQualifierEnum);
    EXPECT_ERROR("InvalidDataTypeId(17)", model.nodes.getNumElements());
}

} // namespace TVTypeSys
