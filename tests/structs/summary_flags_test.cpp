#include "structs/struct_fixture.h"

namespace TVTypeSys {
namespace {

class SummaryFlagsTest : public StructTest {
  protected:
    // Registers a struct of a double and an element; the modes are c complex, f frame based and
    // v variable.
    StructDataType& add(const char* name, int elementId, const std::string& modes, int size) {
        StructDataType& type = addStruct(name, 2);
        fill(type, 0, "real", 0);
        StructElement& element =
            fill(type, 1, "element", elementId, {size}, modes.find('c') != std::string::npos);
        element.setSamplingMode(modes.find('f') != std::string::npos);
        element.setDimensionsMode(modes.find('v') != std::string::npos);
        return type;
    }

    // Computes the flags: the letters of the modes, and a for an array of structs.
    std::string flags(StructDataType& type) {
        type.createCacheForFrequentlyAccessedProperties(&table);
        const int id = type.getId();
        return std::string(table.doesBusDTHaveComplexData(id) ? "c" : "") +
               (table.doesBusDTHaveFrameBasedElements(id) ? "f" : "") +
               (table.doesBusDTHaveVarDims(id) ? "v" : "") +
               (table.doesBusDTHaveAoB(id) ? "a" : "");
    }
};

} // namespace

TEST_F(SummaryFlagsTest, ComputedOnceForAllDepths) {
    StructDataType& leaf = add("Leaf", -1, "", 3);
    StructDataType& complex = add("Complex", 1, "c", 1);
    StructDataType& array = add("Array", complex.getId(), "", 2);
    EXPECT_FALSE(complex.hasComplexData()) << "not computed yet";
    EXPECT_EQ("", flags(leaf)) << "an array, but not of structs";
    EXPECT_EQ("cfva", flags(add("Deep", array.getId(), "fv", 1)));
    EXPECT_TRUE(complex.hasComplexData() && array.hasAOB()) << "computed with the outer struct";
    EXPECT_EQ("f", flags(add("Framed", leaf.getId(), "cf", 1)))
        << "the signal type of a struct is ignored";
    EXPECT_EQ("va", flags(add("Variable", leaf.getId(), "v", 1)));

    StructDataType& late = add("Late", -2, "", 1);
    EXPECT_ERROR("InvalidDataTypeId(-2)", flags(late));
    late.getElements()[1]->setDataTypeId(complex.getId());
    EXPECT_EQ("c", flags(late));
    late.getElements()[1]->setDataTypeId(0);
    EXPECT_EQ("c", flags(late));
}

} // namespace TVTypeSys
