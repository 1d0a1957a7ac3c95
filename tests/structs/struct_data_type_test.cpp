#include "support/errors.h"

#include <tvtypes/datatypetable.h>
#include <tvtypes/functions.h>
#include <tvtypes/structdatatype.h>

#include <fndut/alloc.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

TEST(StructDataType, RegistrationAndElements) {
    TVTypeSys::DataTypeTable table;
    const int id = table.registerStructDataType("Wheel", static_cast<DataTypeSource>(2), nullptr);
    auto* type =
        dynamic_cast<StructDataType*>(table.getDataTypeAt(static_cast<std::size_t>(id) + 1));
    ASSERT_NE(nullptr, type);
    EXPECT_EQ(TVTypeSys::DataTypeQualifierStruct, type->getType());
    EXPECT_EQ(id, type->getStorageId());
    EXPECT_FALSE(type->isBusType());

    type->setNumElements(3);
    const int ids[] = {0, -1, 0};
    for (int i = 0; i < 3; ++i) {
        StructElement& element = *type->getElements()[static_cast<std::size_t>(i)];
        EXPECT_EQ(INVALID_DATA_TYPE_ID, element.dataTypeId);
        element.setDataTypeId(ids[i]);
        element.setDimensions(static_cast<int*>(utCalloc(2, sizeof(int))));
    }
    EXPECT_EQ((std::vector<int>{0, -1, 0}), type->dependsOn());
    type->setNumElements(-1);
    EXPECT_EQ(0, type->getNumElements());
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

TEST(StructElement, SpecifiedLimits) {
    StructElement element;
    EXPECT_FALSE(element.getMinSpec() || element.getMaxSpec());
    element.setMin(std::numeric_limits<double>::quiet_NaN());
    element.setMax(-std::numeric_limits<double>::infinity());
    EXPECT_TRUE(element.getMinSpec() && element.getMaxSpec());
}
