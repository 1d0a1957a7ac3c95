// The views of a struct type: a worked example, caching, errors, and flags of buses.
#include "structs/struct_fixture.h"

#include <iterator>

namespace TVTypeSys {
namespace {

using Path = std::vector<std::pair<std::string, int>>;

// T has a (double) and b (two complex int16); S has x (uint8), y (T), z (two T) and w (single).
class ViewsTest : public StructTest {
  protected:
    ViewsTest() {
        fill(t, 0, "a", 0).setOffset(0);
        fill(t, 1, "b", 4, {2}, true).setOffset(8);
        t.setSize(16);
        count(t);
        fill(s, 0, "x", 3).setOffset(0);
        fill(s, 1, "y", t.getId(), {1, 1}).setOffset(8);
        fill(s, 2, "z", t.getId(), {2}).setOffset(24);
        fill(s, 3, "w", 1).setOffset(56);
        s.setSize(64);
        count(s);
    }

    StructDataType& t = addStruct("T", 2);
    StructDataType& s = addStruct("S", 4);
    DFSElementAccess nodes{&table, s.getId()};
    FlatElementAccess leaves{&table, s.getId()};
    RawElementAccess scalars{&table, s.getId()};
    ImmediateElementAccess elements{&table, s.getId()};
};

} // namespace

TEST_F(ViewsTest, WorkedExample) {
    ASSERT_EQ((std::array{13, 8, 17}), (std::array{nodes.getNumElements(), leaves.getNumElements(),
                                                   scalars.getNumElements()}));
    const struct {
        const char* name;
        std::array<int, 4> place; // element, copy, start of the copy, offset in bytes
        int leaf, scalar;
    } rows[] = {
        {"", {-1, 0, -1, 0}, -1, 0},  {"x", {0, 0, 1, 0}, 0, 0},     {"y", {1, 0, 2, 8}, -1, 1},
        {"a", {1, 0, 2, 8}, 1, 1},    {"b", {1, 0, 2, 16}, 2, 2},    {"z", {2, -1, -1, 24}, -1, 6},
        {"z", {2, 0, 6, 24}, -1, 6},  {"a", {2, 0, 6, 24}, 3, 6},    {"b", {2, 0, 6, 32}, 4, 7},
        {"z", {2, 1, 9, 40}, -1, 11}, {"a", {2, 1, 9, 40}, 5, 11},   {"b", {2, 1, 9, 48}, 6, 12},
        {"w", {3, 0, 12, 56}, 7, 16}, {"", {-1, 1, 13, 64}, -1, 17}, {"x", {-1, 1, 13, 64}, 8, 17}};
    for (int i = 0; i < static_cast<int>(std::size(rows)); ++i) {
        SCOPED_TRACE(i);
        const auto& row = rows[i];
        std::array<int, 4> place{};
        int typeId = 0;
        nodes.computeDataTypeIdAndIndex(i, &place[0], &place[1], &typeId, &place[2]);
        place[3] = nodes.getOffset(i);
        EXPECT_EQ(row.place, place);
        EXPECT_STREQ(row.name, nodes.getName(i));
        EXPECT_EQ(row.scalar, nodes.getRawElementIdx(i));
        if (row.leaf >= 0) {
            EXPECT_EQ(i, leaves.getDFSIdx(row.leaf));
            EXPECT_EQ(row.place[3], leaves.getOffset(row.leaf));
        }
    }
    EXPECT_EQ(16, elements.getRawElementIdx(3));
    int element = 1, typeId = 0, base = 101;
    scalars.computeDataTypeIdAndIndex(112, element, typeId, base);
    EXPECT_EQ((std::array{2, t.getId(), 106}), (std::array{element, typeId, base}))
        << "search from y";
    element = 2, base = 6;
    scalars.computeDataTypeIdAndIndex(5, element, typeId, base);
    EXPECT_EQ((std::array{2, t.getId(), 6}), (std::array{element, typeId, base}))
        << "start behind the scalar";
    EXPECT_EQ(0, ImmediateElementAccess(&table, t.getId()).getPadding(1));
    EXPECT_EQ(22, scalars.getOffset(5)) << "the imaginary part of the second value of y.b";
    EXPECT_EQ((std::array{7, 0, 0, 4}),
              (std::array{elements.getPadding(0), elements.getPadding(1), elements.getPadding(2),
                          elements.getPadding(3)}));
    Path path;
    nodes.getFullPath(10, true, path);
    leaves.getFullPath(8 + 5, false, path);
    EXPECT_EQ((Path{{"", 0}, {"z", 1}, {"a", -1}, {"", 1}, {"z", 1}, {"a", -1}}), path);
}

TEST_F(ViewsTest, CacheValues) {
    DFSElementCache* const node = s.getCachedElement(10);
    EXPECT_EQ(nullptr, node->element);
    StructElement& a = *t.getElements()[0];
    EXPECT_EQ(&a, nodes.getStructElement(10));
    for (int i = 0; i < 1000; ++i) {
        nodes.getOffset(i);
    }
    EXPECT_EQ(node, s.getCachedElement(10));
    EXPECT_EQ((std::pair{&a, 40}), (std::pair{node->element, node->offset}));
    a.setOffset(4);
    EXPECT_EQ(40, nodes.getOffset(10));
    EXPECT_EQ(0, DFSElementAccess(&table, t.getId()).getOffset(1)) << "cached in the nested type";

    EXPECT_EQ(-1, nodes.getVarDimsOffset(12));
    s.getElements()[3]->setVarDimsOffset(5);
    EXPECT_EQ(5, nodes.getVarDimsOffset(12)) << "-1 counts as not cached";

    // The element of a nested struct has the dimensions of its type and its own name.
    StructElement* const y = nodes.getStructElement(2);
    EXPECT_TRUE(s.getCachedElement(2)->ownsElement);
    EXPECT_EQ(DFSElementAccess(&table, t.getId()).getDimensions(0), y->dimensions);
    EXPECT_EQ((std::array{1, t.getId(), 0}),
              (std::array{nodes.getWidth(2), y->dataTypeId, y->unitId}));

    // New elements and counts: positions are computed again, cached values stay.
    s.setNumElements(1);
    fill(s, 0, "only", t.getId());
    count(s);
    EXPECT_STREQ("b", nodes.getName(3 + 4)) << "cached; now a node of the second instance";
    EXPECT_EQ((std::array{1, 5, 0}),
              (std::array{nodes.getRawElementIdx(3), elements.getRawElementIdx(1),
                          scalars.getDataTypeId(0)}));
}

TEST_F(ViewsTest, NestedTypeIsReplaced) {
    EXPECT_EQ(24, scalars.getOffset(6));
    EXPECT_EQ(7, nodes.getRawElementIdx(8));
    StructDataType& other = addStruct("Other", 2);
    fill(other, 0, "b", 4, {2}, true).setOffset(1);
    fill(other, 1, "a", 0).setOffset(9);
    count(other);
    table.replaceDataType(&t, &other);
    EXPECT_EQ(24 + 9, scalars.getOffset(6 + 4));
    EXPECT_EQ(6 + 4, DFSElementAccess(&table, s.getId()).getRawElementIdx(8));
    EXPECT_STREQ("b", nodes.getName(10));
}

TEST_F(ViewsTest, InvalidIndices) {
    EXPECT_TRUE(nodes.isIdxValid(-1) && leaves.isIdxValid(-1) && elements.isIdxValid(3));
    EXPECT_FALSE(elements.isIdxValid(-1) || elements.isIdxValid(4) || scalars.isIdxValid(17));
    EXPECT_ERROR("InvalidStructIndex(S, -1)", nodes.getName(-1));
    EXPECT_ERROR("InvalidStructIndex(S, -1)", leaves.getOffset(-1));
    EXPECT_ERROR("InvalidStructIndex(S, 17)", scalars.getOffset(17));
    EXPECT_ERROR("InvalidStructIndex(S, 4)", elements.getName(4));
    EXPECT_ERROR("InvalidDataTypeId(0)", DFSElementAccess(&table, 0).getNumElements());

    // Counts that are not set, elements without a type, and a struct that contains itself.
    StructDataType& empty = addStruct("Empty", 1);
    DFSElementAccess unset(&table, empty.getId());
    EXPECT_EQ(0, unset.getOffset(0));
    EXPECT_ERROR("InvalidStructIndex(Empty, 1)", unset.getOffset(1));
    empty.setNumDFSElements(9);
    EXPECT_ERROR("InvalidDataTypeId(-10)", unset.getOffset(1));
    fill(empty, 0, "self", empty.getId());
    empty.setNumRawElements(5);
    EXPECT_EQ(-8, unset.getOffset(8));
    EXPECT_ERROR("InvalidStructIndex(Empty, 3)",
                 RawElementAccess(&table, empty.getId()).getOffset(3));
}

namespace {

class Bus : public StructDataType {
  public:
    using StructDataType::StructDataType;
    bool isBusType() const override { return true; }
};

} // namespace

TEST_F(ViewsTest, FlagsOfBuses) {
    const auto addBus = [this](const char* name, int elementCount) -> StructDataType& {
        const int id = table.getNumDataTypes() - 1;
        table.addDataType(new Bus(id, name, DataTypeSourceUnchecked));
        structAt(id).setNumElements(elementCount);
        return structAt(id);
    };
    StructDataType& inner = addBus("Inner", 2);
    StructElement& variable = fill(inner, 0, "variable", 0);
    fill(inner, 1, "again", inner.getId());
    StructDataType& outer = addBus("Outer", 3);
    StructElement& noBus = fill(outer, 0, "noBus", s.getId(), {2});
    StructElement& bus = fill(outer, 1, "bus", inner.getId(), {1, 1});
    StructElement& last = fill(outer, 2, "last", 0);
    const auto expect = [&](bool aob, bool varDims, bool frames) {
        std::array<bool, 3> found{};
        ImmediateElementAccess(&table, outer.getId())
            .containsAoBOrVarDimsOrFrames(&found[0], &found[1], &found[2]);
        EXPECT_EQ((std::array{aob, varDims, frames}), found);
    };
    last.setSamplingMode(1);
    noBus.setDimensionsMode(1);
    expect(false, true, true);
    bus.dimensions[1] = 2;
    expect(true, true, false); // the search stops
    noBus.setDimensionsMode(0);
    expect(true, false, true);
    bus.dimensions[1] = 1;
    bus.setDimensionsMode(1);
    expect(true, true, false);
    bus.setDimensionsMode(0);
    last.setSamplingMode(0);
    variable.setDimensionsMode(1);
    expect(false, true, false);

    EXPECT_TRUE(DtGetDataTypeIsBus(&table, outer.getId()));
    EXPECT_FALSE(DtGetDataTypeIsBus(&table, s.getId()) || DtGetDataTypeIsBus(&table, -1));
    EXPECT_ERROR("InvalidDataTypeId(-2)", DtGetDataTypeIsBus(&table, -2));
}

} // namespace TVTypeSys
