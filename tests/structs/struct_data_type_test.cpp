#include "structs/struct_fixture.h"

#include <tvtypes/datatypetable.h>
#include <tvtypes/functions.h>

#include <gtest/gtest.h>

#include <cmath>

TEST(StructDataType, OwnsElements) {
    StructDataType type(20, "Wheel", static_cast<DataTypeSource>(2));
    type.setNumElements(3);
    for (StructElement* element : type.getElements()) {
        EXPECT_EQ(INVALID_DATA_TYPE_ID, element->dataTypeId);
        element->setDimensions(static_cast<int*>(utCalloc(2, sizeof(int))));
    }
    type.getElements()[1]->setDataTypeId(-1);
    EXPECT_EQ((std::vector<int>{INVALID_DATA_TYPE_ID, -1, INVALID_DATA_TYPE_ID}), type.dependsOn());
    StructElement& element = *type.getElements()[0];
    EXPECT_FALSE(element.getMinSpec() || element.getMaxSpec());
    element.setMin(std::nan(""));
    element.setMax(-HUGE_VAL);
    EXPECT_TRUE(element.getMinSpec() && element.getMaxSpec());
    type.setNumElements(-1);
    EXPECT_EQ(0, type.getNumElements());
}

TEST(StructDataType, FlatTableOfFurtherInstances) {
    StructDataType type(20, "Pair", static_cast<DataTypeSource>(2));
    EXPECT_ERROR("InvalidStructIndex(Pair, 0)", type.getDFSIdxFromFlatIdx(0));
    type.setNumFlatElements(2);
    type.setNumDFSElements(4);
    type.setDFSIdxFromFlatIdx({1, 3});
    const int nodes[] = {1, 3, 5, 7, 9};
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(nodes[i], type.getDFSIdxFromFlatIdx(i));
    }
    EXPECT_ERROR("InvalidStructIndex(Pair, -1)", type.getDFSIdxFromFlatIdx(-1));
    type.setNumFlatElements(3);
    EXPECT_ERROR("InvalidStructIndex(Pair, 2)", type.getDFSIdxFromFlatIdx(2));
}

TEST(StructDataType, ChecksumResolvesAliases) {
    TVTypeSys::DataTypeTable table;
    const int id = table.registerStructDataType("Wheel", DataTypeSourceUnchecked, nullptr);
    const int alias = table.registerAliasDataType("Tyre", DataTypeSourceUnchecked, id, nullptr);
    EXPECT_EQ(0U, DtGetStructDataTypeChecksum(&table, id).words[3]);
    DtSetStructDataTypeChecksum(&table, alias, {{1, 2, 3, 4}});
    EXPECT_EQ(4U, DtGetStructDataTypeChecksum(&table, id).words[3]);
    EXPECT_ERROR("InvalidDataTypeId(0)", DtGetStructDataTypeChecksum(&table, 0));
}
