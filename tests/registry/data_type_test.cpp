#include "table_fixture.h"

#include <ox/array.h>

#include <cstring>

using namespace TVTypeSys;

namespace {

DataType plainType() { return DataType(20, "T", clientSource); }

// A function of any signature; stub<1> and stub<2> differ.
template <int status, class Result, class... Arguments>
Result stub(Arguments...) {
    return Result(status);
}

// The setter accepts null while no function is set, and then one function only.
template <class Function>
void expectWriteOnce(void (DataType::*set)(Function), const std::string& property) {
    const std::string conflict = "InconsistentDataType" + property + "Fcn(T)";
    DataType type = plainType();
    EXPECT_NO_ERROR((type.*set)(nullptr));
    EXPECT_TRUE(type.getAliasedToLocked()) << "null locks as well";
    EXPECT_NO_ERROR((type.*set)(stub<1>));
    EXPECT_NO_ERROR((type.*set)(stub<1>));
    EXPECT_ERROR(conflict, (type.*set)(stub<2>));
    EXPECT_ERROR(conflict, (type.*set)(nullptr));
}

} // namespace

TEST(DataType, SizeIsWriteOnce) {
    DataType type = plainType();
    EXPECT_ERROR("InvalidDataTypeSize(T, -1)", type.setSize(-1));
    EXPECT_FALSE(type.getAliasedToLocked());
    EXPECT_NO_ERROR(type.setSize(4));
    EXPECT_TRUE(type.getIsAliasToLocked() && type.getDefaultGround());
    EXPECT_EQ(0, std::memcmp(type.getGround(), "\0\0\0\0\0\0\0\0", 8));
    EXPECT_ERROR("CannotModifyDataTypeSize(T, 4)", type.setSize(5));
    EXPECT_ERROR("CannotModifyDataTypeSize(T, 4)", type.setSize(-1));

    DataType empty = plainType();
    EXPECT_NO_ERROR(empty.setSize(0));
    EXPECT_ERROR("CannotModifyDataTypeSize(T, 0)", empty.setSize(4));
    EXPECT_NO_ERROR(empty.setGround("")); // no bytes

    DataType boolean(8, "boolean", DataTypeSourceBuiltIn);
    boolean.setSize(1);
    boolean.setGround("a");
    EXPECT_ERROR("InvalidDataTypeSize(boolean, -2)", boolean.setSize(-2));
    EXPECT_NO_ERROR(boolean.setSize(2));
    EXPECT_EQ(0, std::memcmp(boolean.getGround(), "\0\0\0\0", 4));
    EXPECT_TRUE(boolean.getDefaultGround());
}

TEST(DataType, GroundIsWriteOncePerSetSize) {
    DataType type = plainType();
    EXPECT_ERROR("CannotSetGroundRepBeforeSettingSize(T)", type.setGround("abcd"));
    type.setSize(4);
    EXPECT_NO_ERROR(type.setGround("abcd"));
    EXPECT_EQ(0, std::memcmp(type.getGround(), "abcdabcd", 8));
    EXPECT_FALSE(type.getDefaultGround());
    EXPECT_NO_ERROR(type.setGround("abcd"));
    EXPECT_ERROR("CannotModifyDataTypeGroundRepresentation(T)", type.setGround("abce"));
    type.setSize(4);
    EXPECT_EQ(0, std::memcmp(type.getGround(), "abcdabcd", 8)) << "writable again, not cleared";
    EXPECT_NO_ERROR(type.setGround("wxyz"));
    EXPECT_EQ(0, std::memcmp(type.getGround(), "wxyzwxyz", 8));
}

TEST(DataType, PropertiesAreWriteOnce) {
    DataType type = plainType();
    EXPECT_ERROR("CannotSetPropertiesBeforeSettingSize(T)", type.setProperties("abcd"));
    EXPECT_ERROR("InvalidDataTypePropertiesSize(T, -8)", type.setPropertiesSize(-8));
    EXPECT_NO_ERROR(type.setPropertiesSize(0));
    EXPECT_TRUE(type.getAliasedToLocked());
    EXPECT_NO_ERROR(type.setProperties(nullptr));
    EXPECT_NO_ERROR(type.setPropertiesSize(4));
    EXPECT_EQ(nullptr, type.getProperties());
    EXPECT_ERROR("CannotModifyDataTypePropertiesSize(T, 4, -8)", type.setPropertiesSize(-8));
    EXPECT_NO_ERROR(type.setPropertiesSize(4));
    const char bytes[] = "abcd";
    EXPECT_NO_ERROR(type.setProperties(bytes));
    EXPECT_NE(static_cast<const void*>(bytes), type.getProperties());
    EXPECT_EQ(0, std::memcmp(type.getProperties(), bytes, 4));
    EXPECT_NO_ERROR(type.setProperties("abcd"));
    EXPECT_ERROR("CannotModifyDataTypeProperties(T)", type.setProperties("abce"));
    EXPECT_ERROR("CannotModifyDataTypeProperties(T)", type.setProperties(nullptr));
}

TEST(DataType, FunctionsAreWriteOnce) {
    expectWriteOnce(&DataType::setConvertBetweenFcn, "ConvertBetween");
    expectWriteOnce(&DataType::setIsPositiveFcn, "IsPositive");
    expectWriteOnce(&DataType::setIsNegativeFcn, "IsNegative");
    expectWriteOnce(&DataType::setGreaterThanFcn, "GreaterThan");
    expectWriteOnce(&DataType::setGreaterEqualFcn, "GreaterEqual");

    DataType type = plainType();
    for (int i = 0; i < 2; ++i) {
        EXPECT_NO_ERROR(type.setHostToTargetFcn(stub<1>));
        EXPECT_NO_ERROR(type.setTargetToHostFcn(stub<1>));
    }
    EXPECT_ERROR("InConsistentTargetToHostFcn()", type.setHostToTargetFcn(nullptr));
    EXPECT_ERROR("InConsistentTargetToHostFcn()", type.setTargetToHostFcn(nullptr));
    EXPECT_FALSE(type.getAliasedToLocked());
}

TEST(DataType, InterfaceIsReferenceCounted) {
    oxArray_tag* value = oxCreateString("enumeration");
    {
        DataType type = plainType();
        type.setInterface(value);
        EXPECT_EQ(2, oxGetReferenceCount(value));
        EXPECT_FALSE(oxIsTemporary(value));
        oxDestroyArray(value); // the type has the only reference
        type.setInterface(value);
        EXPECT_EQ(1, oxGetReferenceCount(type.getInterface()));
        oxShareArray(value);
    }
    EXPECT_EQ(1, oxGetReferenceCount(value));
    oxDestroyArray(value);
}

TEST(DataType, AutoIgnoresSetters) {
    AutoDataType type;
    EXPECT_NO_ERROR((type.setSize(-4), type.setGround("abcdefgh"), type.setPropertiesSize(-1),
                     type.setIsPositiveFcn(stub<1>), type.setStorageId(3),
                     type.setDefaultGround(true)));
    EXPECT_EQ(8, type.getSize());
    EXPECT_EQ(-1, type.getStorageId());
    EXPECT_EQ(-1, type.getIdAliasedToForTesting());
    EXPECT_FALSE(type.getDefaultGround());
}

TEST(DataType, ClassificationById) {
    struct {
        int id;
        const char* classes; // float, int, unsigned int, signed int, bool, signed
    } const cases[] = {{-1, "......"}, {0, "f....s"}, {1, "f....s"}, {2, ".i.n.s"},
                       {3, ".iu..."},  {4, ".i.n.s"}, {5, ".iu..."}, {6, ".i.n.s"},
                       {7, ".iu..."},  {8, "....b."}, {9, "......"}, {-10, "......"}};
    for (const auto& c : cases) {
        const std::string classes = {DataType::isDataTypeFloatDT(c.id) ? 'f' : '.',
                                     DataType::isDataTypeIntDT(c.id) ? 'i' : '.',
                                     DataType::isDataTypeUnsignedIntDT(c.id) ? 'u' : '.',
                                     DataType::isDataTypeSignedIntDT(c.id) ? 'n' : '.',
                                     DataType::isDataTypeBoolDT(c.id) ? 'b' : '.',
                                     DataType::isDataTypeSignedDT(c.id) ? 's' : '.'};
        EXPECT_EQ(c.classes, classes) << c.id;
        EXPECT_EQ(DataType::isDataTypeSignedIntDT(c.id),
                  DataType(c.id, "T", clientSource).isSignedIntDataType());
    }
    EXPECT_FALSE(DataType::isDataTypeSignedFixptDT("ufix8", 20));
    EXPECT_TRUE(DataType::isDataTypeSignedFixptDT("sfix8", 20));
    EXPECT_TRUE(DataType::isDataTypeSignedFixptDT("fltu8", 20));
    EXPECT_TRUE(DataType::isDataTypeSignedFixptDT(nullptr, 0));
    EXPECT_FALSE(DataType::isDataTypeSignedFixptDT("uint8", 3));
    EXPECT_FALSE(DataType::isDataTypeSignedFixptDT("boolean", 8));
}
