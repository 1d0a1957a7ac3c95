#include "table_fixture.h"

#include <limits>

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
        {"sfix16", 16},
        {"ufix1", 1},
        {"sfix16_En3", 16},
        {"fltu32_S1", 32},
        {"flts08x", 8},
        {"sfix8OBS", 8},
        {"sfix99999999999", std::numeric_limits<int>::max()}};
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
    EXPECT_FALSE(at(plain("sfix8_E1")).isAtomic());
    EXPECT_TRUE(at(plain("sfix24")).isAtomic());
    EXPECT_FALSE(at(plain("sfix32_E1")).isAtomic());
    EXPECT_FALSE(at(table.getDataTypeId("sfix16_En1")).isAtomic());
    DataType& other = at(plain("T"));
    table.initializeFixptDataTypeAtomicity(&other, 24);
    EXPECT_FALSE(other.isAtomic()) << "not a fixed-point type";
}

TEST_F(Classification, KindsResolveAliases) {
    const int fixed = plain("flts16");
    const int enumerated = plain("E");
    at(enumerated).setType(DataTypeQualifierEnum);
    struct {
        int id;
        const char* kinds; // numeric or boolean, numeric, fixed-point, enumerated
    } const cases[] = {{-1, "nN.."},
                       {0, "nN.."},
                       {8, "n..."},
                       {10, "...."},
                       {alias("I", 2), "nN.."},
                       {alias("B", 8), "n..."},
                       {fixed, "nN.."},
                       {plain("sfix16"), "nNf."},
                       {alias("F", plain("ufix16_En2")), "nNf."},
                       {structure("S"), "...."},
                       {enumerated, "...e"},
                       {alias("EE", enumerated), "...e"}};
    for (const auto& c : cases) {
        const std::string kinds = {table.IsDataTypeNumericOrBoolean(c.id) ? 'n' : '.',
                                   table.IsDataTypeNumericNonBoolean(c.id) ? 'N' : '.',
                                   table.IsFixptDTNotScaledDouble(c.id) ? 'f' : '.',
                                   table.isEnumType(c.id) ? 'e' : '.'};
        EXPECT_EQ(c.kinds, kinds) << c.id;
    }
    EXPECT_ERROR("InvalidDataTypeId(-10)", table.IsDataTypeNumericOrBoolean(-10));
    EXPECT_ERROR("InvalidDataTypeId(-10)", table.IsDataTypeNumericNonBoolean(-10));
    EXPECT_ERROR("InvalidDataTypeId(-5)", table.IsFixptDTNotScaledDouble(-5));
    EXPECT_FALSE(table.isEnumType(-10));
    EXPECT_ERROR("InvalidDataTypeId(-5)", table.isEnumType(-5));
}
