#include "table_fixture.h"

#include <ox/array.h>

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
    EXPECT_NO_ERROR(type.setSize(0));
    EXPECT_TRUE(type.getIsAliasToLocked() && type.getDefaultGround());
    EXPECT_ERROR("CannotModifyDataTypeSize(T, 0)", type.setSize(4));
    EXPECT_ERROR("CannotModifyDataTypeSize(T, 0)", type.setSize(-1));
    EXPECT_NO_ERROR(type.setGround("")); // no bytes

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
}

TEST(DataType, PropertiesAreWriteOnce) {
    DataType type = plainType();
    EXPECT_ERROR("CannotSetPropertiesBeforeSettingSize(T)", type.setProperties("abcd"));
    EXPECT_ERROR("InvalidDataTypePropertiesSize(T, -8)", type.setPropertiesSize(-8));
    EXPECT_NO_ERROR(type.setPropertiesSize(0));
    EXPECT_TRUE(type.getAliasedToLocked());
    type.setAliasedToLocked(false);
    EXPECT_NO_ERROR(type.setProperties(nullptr));
    EXPECT_TRUE(type.getAliasedToLocked());
    EXPECT_NO_ERROR((type.setPropertiesSize(4), type.setPropertiesSize(4)));
    EXPECT_ERROR("CannotModifyDataTypePropertiesSize(T, 4, -8)", type.setPropertiesSize(-8));
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
    EXPECT_NO_ERROR((type.setHostToTargetFcn(stub<1>), type.setHostToTargetFcn(stub<1>)));
    EXPECT_NO_ERROR((type.setTargetToHostFcn(stub<1>), type.setTargetToHostFcn(stub<1>)));
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
                     type.setIsPositiveFcn(stub<1>), type.setStorageId(3)));
    EXPECT_EQ(8, type.getSize());
    EXPECT_EQ(-1, type.getStorageId());
}

TEST(DataType, ClassificationById) {
    using Test = bool (*)(int);
    const std::pair<Test, const char*> tests[] = {
        {DataType::isDataTypeFloatDT, "01"},        {DataType::isDataTypeIntDT, "234567"},
        {DataType::isDataTypeUnsignedIntDT, "357"}, {DataType::isDataTypeSignedIntDT, "246"},
        {DataType::isDataTypeBoolDT, "8"},          {DataType::isDataTypeSignedDT, "01246"}};
    for (const auto& [test, expected] : tests) {
        std::string ids;
        for (int id = -10; id < 15; ++id) {
            ids += test(id) ? std::to_string(id) : "";
        }
        EXPECT_EQ(expected, ids);
    }
    EXPECT_FALSE(DataType::isDataTypeSignedFixptDT("ufix8", 20));
    EXPECT_TRUE(DataType::isDataTypeSignedFixptDT("fltu8", 20));
    EXPECT_TRUE(DataType::isDataTypeSignedFixptDT(nullptr, 0));
    EXPECT_FALSE(DataType::isDataTypeSignedFixptDT("uint8", 3));
}
