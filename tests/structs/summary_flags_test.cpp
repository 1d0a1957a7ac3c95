#include "support/refusal.h"

#include <tvtypes/datatypetable.h>
#include <tvtypes/structdatatype.h>

#include <fndut/alloc.h>

namespace {

class SummaryFlagsTest : public testing::Test {
  protected:
    // A struct of a double and this element: c is complex, f frame based, v variable.
    StructDataType& add(const char* name, int elementId, const std::string& modes, int size) {
        const int id = table.registerStructDataType(name, DataTypeSourceUnchecked, nullptr);
        auto& type = dynamic_cast<StructDataType&>(*table.getDataTypeAliasedThruTo(id));
        type.setNumElements(2);
        type.getElements()[0]->setDataTypeId(0);
        StructElement& element = *type.getElements()[1];
        element.setDataTypeId(elementId);
        element.setSignalType(modes.find('c') != std::string::npos);
        element.setSamplingMode(modes.find('f') != std::string::npos);
        element.setDimensionsMode(modes.find('v') != std::string::npos);
        element.setNumDimensions(1);
        element.setDimensions(static_cast<int*>(utCalloc(1, sizeof(int))));
        *element.dimensions = size;
        return type;
    }

    // The modes found in the type, and a for an array of structs.
    std::string found(StructDataType& type) {
        type.createCacheForFrequentlyAccessedProperties(&table);
        const int id = type.getId();
        return std::string(table.doesBusDTHaveComplexData(id) ? "c" : "") +
               (table.doesBusDTHaveFrameBasedElements(id) ? "f" : "") +
               (table.doesBusDTHaveVarDims(id) ? "v" : "") +
               (table.doesBusDTHaveAoB(id) ? "a" : "");
    }

    TVTypeSys::DataTypeTable table;
};

} // namespace

TEST_F(SummaryFlagsTest, TellOnceWhatLiesAtAnyDepth) {
    StructDataType& leaf = add("Leaf", -1, "", 3);
    StructDataType& complex = add("Complex", 1, "c", 1);
    StructDataType& array = add("Array", complex.getId(), "", 2);
    EXPECT_FALSE(complex.hasComplexData()) << "not computed yet";
    EXPECT_EQ("", found(leaf)) << "an array, and none of structs";
    EXPECT_EQ("cfva", found(add("Deep", array.getId(), "fv", 1)));
    EXPECT_TRUE(complex.hasComplexData() && array.hasAOB()) << "computed with it";
    EXPECT_EQ("f", found(add("Framed", leaf.getId(), "cf", 1))) << "a struct is not complex itself";
    EXPECT_EQ("va", found(add("Variable", leaf.getId(), "v", 1)));

    StructDataType& late = add("Late", -10, "", 1);
    EXPECT_REFUSED("InvalidDataTypeId(-10)", found(late));
    late.getElements()[1]->setDataTypeId(complex.getId());
    EXPECT_EQ("c", found(late));
    late.getElements()[1]->setDataTypeId(0);
    EXPECT_EQ("c", found(late));
}
