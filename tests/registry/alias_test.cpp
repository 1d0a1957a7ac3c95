#include "table_fixture.h"

#include <ox/array.h>

#include <functional>

using namespace TVTypeSys;

using Alias = TableTest;

TEST_F(Alias, AnswersForTheEndOfItsChain) {
    const int a = alias("A", 2);
    const int b = alias("B", a);
    DataType& type = at(b);
    EXPECT_STREQ("B", type.getName());
    EXPECT_EQ(a, type.getIdAliasedTo());
    EXPECT_EQ(2, type.getIdAliasedThruTo());
    EXPECT_EQ(std::vector<int>{a}, type.dependsOn());
    EXPECT_EQ(1, type.getSize());
    EXPECT_EQ(2, type.getStorageId());
    EXPECT_EQ(at(2).getGround(), type.getGround());
    EXPECT_EQ(at(2).getProperties(), type.getProperties());
    EXPECT_EQ(at(2).getProperties(), table.getDataTypeProperties("", b));
    EXPECT_TRUE(type.isSignedIntDataType() && type.getDefaultGround());
    EXPECT_FALSE(type.groundHasNonZeroStoredValue());
    at(2).setIsAtomic(true);
    at(2).setTargetSize(3);
    EXPECT_TRUE(type.isAtomic());
    EXPECT_EQ(3, type.getTargetSize());
    // Its own:
    EXPECT_EQ(DataTypeQualifierUnspecified, type.getType());
    EXPECT_TRUE(type.getIsAliasToLocked());
    EXPECT_FALSE(type.getAliasedToLocked());
    EXPECT_TRUE(at(alias("C", 3)).isSignedFixptDT()) << "by its own name and id";
    // "auto" can be aliased, and a name that is known is answered as it stands.
    EXPECT_EQ(8, at(alias("D", -1)).getSize());
    EXPECT_EQ(a, alias("A", 0));
    EXPECT_EQ(a, plain("A"));
}

TEST_F(Alias, RefusesADefinition) {
    DataType& type = at(alias("A", 0));
    const char bytes[8] = {};
    struct {
        const char* property;
        std::function<void()> set;
    } const setters[] = {
        {"Size", [&] { type.setSize(8); }},
        {"ConvertBetween", [&] { type.setConvertBetweenFcn(nullptr); }},
        {"GreaterThan", [&] { type.setGreaterThanFcn(nullptr); }},
        {"GreaterEqual", [&] { type.setGreaterEqualFcn(nullptr); }},
        {"IsNegative", [&] { type.setIsNegativeFcn(nullptr); }},
        {"IsPositive", [&] { type.setIsPositiveFcn(nullptr); }},
        {"StorageId", [&] { type.setStorageId(0); }},
        {"Ground", [&] { type.setGround(bytes); }},
        {"Properties", [&] { type.setProperties(nullptr); }},
        {"PropertiesSize", [&] { type.setPropertiesSize(0); }},
        {"IsAtomic", [&] { type.setIsAtomic(false); }},
        {"GroundHasNonZero", [&] { type.setGroundHasNonZeroStoredValue(false); }},
    };
    for (const auto& setter : setters) {
        EXPECT_EQ("CannotSetDataType" + std::string(setter.property) + "OfAlias(A)",
                  refusalOf(setter.set));
    }
    // These are dropped.
    type.setTargetSize(9);
    type.setDefaultGround(true);
    type.setHostToTargetFcn([](ExternalSim_tag*, char*, const void*, int, int) {});
    EXPECT_EQ(0, at(0).getTargetSize());
    EXPECT_FALSE(at(0).getDefaultGround());
    EXPECT_EQ(nullptr, type.getHostToTargetFcn());
}

TEST_F(Alias, IsMadeOfAPlainType) {
    const int x = plain("X");
    oxArray_tag* value = oxCreateDoubleScalar(1.0);
    at(x).setInterface(value);
    const int before = alias("Before", x);
    EXPECT_ACCEPTED(table.setDataTypeIdAliasedTo(x, 6));
    EXPECT_EQ(2, oxGetReferenceCount(value));
    oxDestroyArray(value);
    EXPECT_STREQ("X", at(x).getName());
    EXPECT_EQ(x, table.getDataTypeId("X"));
    EXPECT_EQ(6, at(x).getIdAliasedTo());
    EXPECT_EQ(value, at(x).getInterface());
    // What was an alias before reaches the end in two hops from now on.
    EXPECT_EQ(4, at(before).getSize());
    EXPECT_EQ(x, at(before).getIdAliasedThruTo());
    EXPECT_EQ(-10, table.getDataTypeIdCommonAncestor(before, x));
    EXPECT_FALSE(table.IsDataTypeNumericOrBoolean(before)) << "its end is neither";
    EXPECT_ACCEPTED(table.setDataTypeIdAliasedTo(x, 6));
}

TEST_F(Alias, IsRefusedInThisOrder) {
    const int p = plain("P");
    const int q = alias("Q", p);
    const int defined = plain("Defined");
    at(defined).setSize(4);
    EXPECT_REFUSED("UndefinedDataTypeToBeAliasedTo(N, -2)", alias("N", -2));
    EXPECT_REFUSED("UndefinedDataTypeToBeAliasedTo(N, 17)", alias("N", 17));
    EXPECT_REFUSED("InvalidDataType(N N)", alias("N N", 17));
    EXPECT_REFUSED("DataType_SameNameAsExistingType(int8)", alias("int8", 0));
    EXPECT_REFUSED("UndefinedDataTypeToBeAliasedTo(Defined, 17)",
                   table.setDataTypeIdAliasedTo(defined, 17));
    EXPECT_REFUSED("InconsistentDataTypeIdAliasedTo(Q, double, P)",
                   table.setDataTypeIdAliasedTo(q, 0));
    EXPECT_REFUSED("CannotSetAliasForDefinedType(Defined)",
                   table.setDataTypeIdAliasedTo(defined, p));
    for (int locked : {-1, 0, 8, 9, plain("ufix7")}) {
        EXPECT_EQ("CannotSetAliasForDefinedType(" + std::string(at(locked).getName()) + ")",
                  refusalOf([&] { table.setDataTypeIdAliasedTo(locked, p); }));
    }
    EXPECT_REFUSED("DataTypeAliasLoop(P, Q)", table.setDataTypeIdAliasedTo(p, q));
    EXPECT_REFUSED("DataTypeAliasLoop(P, P)", table.setDataTypeIdAliasedTo(p, p));
    EXPECT_EQ(-10, table.getDataTypeIdAliasedTo(p));
}

TEST_F(Alias, KnowsItsChain) {
    const int a = alias("A", 0);
    const int b = alias("B", a);
    const int c = alias("C", a);
    const int other = alias("Other", 1);
    EXPECT_TRUE(table.alreadyAliasedToDirectlyOrIndirectly(b, 0));
    EXPECT_FALSE(table.alreadyAliasedToDirectlyOrIndirectly(a, b));
    EXPECT_FALSE(table.alreadyAliasedToDirectlyOrIndirectly(a, a));
    EXPECT_FALSE(table.alreadyAliasedToDirectlyOrIndirectly(-10, 0));
    EXPECT_EQ(a, table.getDataTypeIdCommonAncestor(b, c));
    EXPECT_EQ(a, table.getDataTypeIdCommonAncestor(b, a));
    EXPECT_EQ(0, table.getDataTypeIdCommonAncestor(b, 0));
    EXPECT_EQ(b, table.getDataTypeIdCommonAncestor(b, b));
    EXPECT_EQ(-10, table.getDataTypeIdCommonAncestor(b, other));
    for (int id = -1; id <= other; ++id) {
        EXPECT_FALSE(at(id).getVisitFlag()) << id;
    }
    EXPECT_EQ(-10, table.getDataTypeIdAliasedTo(-10));
    EXPECT_EQ(-10, table.getDataTypeIdAliasedTo(-1));
    EXPECT_EQ(&at(0), table.getDataTypeAliasedThruTo(b));
    EXPECT_REFUSED("InvalidDataTypeId(-10)", table.getDataTypeAliasedThruTo(-10));
}
