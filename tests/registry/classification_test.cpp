#include "table_fixture.h"

using namespace TVTypeSys;

using Classification = TableTest;

TEST_F(Classification, StorageIsSetOnce) {
    const int t = plain("T");
    EXPECT_ERROR("IllegalDataTypeToBeStorageId(T, fcn_call)", table.setDataTypeStorageId(t, 9));
    EXPECT_NO_ERROR(table.setDataTypeStorageId(t, t - 8));
    EXPECT_TRUE(at(t).getAliasedToLocked());
    EXPECT_NO_ERROR(table.setDataTypeStorageId(t, 6));
    EXPECT_ERROR("InconsistentDataTypeStorageId(T, uint32, int32)",
                 table.setDataTypeStorageId(t, 7));
    EXPECT_ERROR("CannotSetDataTypeStorageIdOfAlias(A)",
                 table.setDataTypeStorageId(alias("A", t), 9));
    EXPECT_ERROR("IllegalDataTypeToBeStorageId(T, 1000000)",
                 table.setDataTypeStorageId(t, 1000000));
    EXPECT_ERROR("InconsistentDataTypeStorageId(T, -7, int32)", table.setDataTypeStorageId(t, -7));
    // A type's own id means that the storage is not set, for built-in types as well.
    EXPECT_NO_ERROR(table.setDataTypeStorageId(3, 2));
    EXPECT_EQ(2, at(3).getStorageId());
    EXPECT_NO_ERROR(table.setDataTypeStorageId(plain("U"), -1));
}

TEST_F(Classification, FixedPointNames) {
    const std::pair<const char*, int> valid[] = {
        {"ufix1", 1},   {"sfix16_En3", 16}, {"fltu32_S1", 32},
        {"flts08x", 8}, {"sfix8OBS", 8},    {"sfix99999999999", 0x7FFFFFFF}};
    for (const auto& [name, expected] : valid) {
        int wordLength = -1;
        EXPECT_TRUE(table.isInstrinsicFixptName(name, &wordLength)) << name;
        EXPECT_EQ(expected, wordLength) << name;
        EXPECT_TRUE(table.isInstrinsicFixptName(name, nullptr));
    }
    for (const char* name : {"ufix", "sfix", "sfixed", "flt16", "fltx16", "sfix8_sfcn", "ufix8_OBS",
                             "Sfix16", "", static_cast<const char*>(nullptr)}) {
        int wordLength = -1;
        EXPECT_FALSE(table.isInstrinsicFixptName(name, &wordLength)) << (name ? name : "null");
        EXPECT_EQ(-1, wordLength);
    }
    EXPECT_EQ(DataTypeQualifierUnspecified, at(plain("sfix16_En3_sfcn")).getType());
    DataType& type = at(plain("sfix16_En3"));
    EXPECT_EQ(DataTypeQualifierFixpt, type.getType());
    EXPECT_EQ(-1, type.getSize());
    EXPECT_TRUE(type.getAliasedToLocked());
}

TEST_F(Classification, FixedPointAtomicityFollowsInteger) {
    table.setAtomicWordLengths({24, 64});
    EXPECT_FALSE(at(plain("sfix16_En1")).isAtomic());
    at(4).setIsAtomic(true); // int16, not uint16
    EXPECT_TRUE(at(plain("ufix16_En2")).isAtomic());
    EXPECT_TRUE(at(plain("sfix24")).isAtomic());
    EXPECT_FALSE(at(plain("sfix32_E1")).isAtomic());
    DataType& other = at(plain("T"));
    table.initializeFixptDataTypeAtomicity(&other, 24);
    EXPECT_FALSE(other.isAtomic()) << "not a fixed-point type";
}

TEST_F(Classification, KindsResolveAliases) {
    const int fixed = plain("flts16");
    const int enumerated = plain("E");
    at(enumerated).setType(DataTypeQualifierEnum);
    const auto expect = [this](const char* expected, int id) {
        const std::string kinds = {table.IsDataTypeNumericOrBoolean(id) ? 'n' : '.',
                                   table.IsDataTypeNumericNonBoolean(id) ? 'N' : '.',
                                   table.IsFixptDTNotScaledDouble(id) ? 'f' : '.',
                                   table.isEnumType(id) ? 'e' : '.'};
        EXPECT_EQ(expected, kinds) << id;
    };
    expect("nN..", -1);
    expect("nN..", alias("I", 2));
    expect("n...", alias("B", 8));
    expect("....", 10);
    expect("nN..", fixed);
    expect("nNf.", alias("F", plain("ufix16_En2")));
    expect("....", structure("S"));
    expect("...e", alias("EE", enumerated));
    EXPECT_ERROR("InvalidDataTypeId(-10)", table.IsDataTypeNumericOrBoolean(-10));
    EXPECT_ERROR("InvalidDataTypeId(-10)", table.IsDataTypeNumericNonBoolean(-10));
    EXPECT_ERROR("InvalidDataTypeId(-5)", table.IsFixptDTNotScaledDouble(-5));
    EXPECT_ERROR("InvalidDataTypeId(-5)", table.isEnumType(-5));
    EXPECT_FALSE(table.isEnumType(-10));
}
