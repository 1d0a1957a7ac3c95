#include "table_fixture.h"

#include <limits>

using namespace TVTypeSys;

using Classification = TableTest;

TEST_F(Classification, StorageIsSetOnce) {
    const int t = plain("T");
    EXPECT_REFUSED("IllegalDataTypeToBeStorageId(T, fcn_call)", table.setDataTypeStorageId(t, 9));
    EXPECT_ACCEPTED(table.setDataTypeStorageId(t, t - 8));
    EXPECT_TRUE(at(t).getAliasedToLocked());
    EXPECT_ACCEPTED(table.setDataTypeStorageId(t, 6));
    EXPECT_REFUSED("InconsistentDataTypeStorageId(T, uint32, int32)",
                   table.setDataTypeStorageId(t, 7));
    EXPECT_REFUSED("CannotSetDataTypeStorageIdOfAlias(A)",
                   table.setDataTypeStorageId(alias("A", t), 9));
    // A type's own id means that there is none yet, also in a built-in type.
    EXPECT_ACCEPTED(table.setDataTypeStorageId(3, 2));
    EXPECT_EQ(2, at(3).getStorageId());
    EXPECT_ACCEPTED(table.setDataTypeStorageId(plain("U"), -1));
}

TEST_F(Classification, FixedPointNamesAreRecognised) {
    struct {
        const char* name;
        int wordLength; // -1: no such name
    } const cases[] = {{"sfix16", 16},
                       {"ufix1", 1},
                       {"sfix16_En3", 16},
                       {"fltu32_S1", 32},
                       {"flts08x", 8},
                       {"sfix8OBS", 8},
                       {"ufix", -1},
                       {"sfix", -1},
                       {"sfixed", -1},
                       {"flt16", -1},
                       {"fltx16", -1},
                       {"sfix8_sfcn", -1},
                       {"ufix8_OBS", -1},
                       {"Sfix16", -1},
                       {"", -1},
                       {nullptr, -1},
                       {"sfix99999999999", std::numeric_limits<int>::max()}};
    for (const auto& c : cases) {
        int wordLength = -1;
        EXPECT_EQ(c.wordLength != -1, table.isInstrinsicFixptName(c.name, &wordLength));
        EXPECT_EQ(c.wordLength, wordLength) << (c.name ? c.name : "null");
        EXPECT_EQ(c.wordLength != -1, table.isInstrinsicFixptName(c.name, nullptr));
    }
    EXPECT_EQ(DataTypeQualifierUnspecified, at(plain("sfix16_En3_sfcn")).getType());
    DataType& type = at(plain("sfix16_En3"));
    EXPECT_EQ(DataTypeQualifierFixpt, type.getType());
    EXPECT_EQ(-1, type.getSize());
    EXPECT_TRUE(type.getAliasedToLocked());
}

TEST_F(Classification, AtomicityIsThatOfTheIntegerWhenTheTypeIsRegistered) {
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
    EXPECT_FALSE(other.isAtomic()) << "no fixed-point type";
}

TEST_F(Classification, TypesAreNumericByTheEndOfTheirAliases) {
    const int fixed = plain("flts16");
    const int structure = table.registerStructDataType("S", clientSource, nullptr);
    const int enumerated = plain("E");
    at(enumerated).setType(DataTypeQualifierEnum);
    struct {
        int id;
        bool numeric, nonBoolean, trueFixpt, enumType;
    } const cases[] = {
        {-1, true, true, false, false},
        {0, true, true, false, false},
        {8, true, false, false, false},
        {10, false, false, false, false},
        {alias("I", 2), true, true, false, false},
        {alias("B", 8), true, false, false, false},
        {fixed, true, true, false, false},
        {plain("sfix16"), true, true, true, false},
        {alias("F", plain("ufix16_En2")), true, true, true, false},
        {structure, false, false, false, false},
        {enumerated, false, false, false, true},
        {alias("EE", enumerated), false, false, false, true},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(c.numeric, table.IsDataTypeNumericOrBoolean(c.id)) << c.id;
        EXPECT_EQ(c.nonBoolean, table.IsDataTypeNumericNonBoolean(c.id)) << c.id;
        EXPECT_EQ(c.trueFixpt, table.IsFixptDTNotScaledDouble(c.id)) << c.id;
        EXPECT_EQ(c.enumType, table.isEnumType(c.id)) << c.id;
    }
    EXPECT_REFUSED("InvalidDataTypeId(-10)", table.IsDataTypeNumericOrBoolean(-10));
    EXPECT_REFUSED("InvalidDataTypeId(-10)", table.IsDataTypeNumericNonBoolean(-10));
    EXPECT_REFUSED("InvalidDataTypeId(-5)", table.IsFixptDTNotScaledDouble(-5));
    EXPECT_FALSE(table.isEnumType(-10));
    EXPECT_REFUSED("InvalidDataTypeId(-5)", table.isEnumType(-5));
}
