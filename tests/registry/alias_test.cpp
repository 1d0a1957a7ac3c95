#include "table_fixture.h"

#include <ox/array.h>

#include <array>

using namespace TVTypeSys;
using namespace std::string_literals;

using Alias = TableTest;

TEST_F(Alias, ForwardsDefinitionToEndOfChain) {
    const int a = alias("A", 2);
    const int b = alias("B", a);
    DataType& type = at(b);
    EXPECT_EQ(a, type.getIdAliasedTo());
    EXPECT_EQ(2, type.getIdAliasedThruTo());
    EXPECT_EQ(std::vector<int>{a}, type.dependsOn());
    EXPECT_EQ(1, type.getSize());
    EXPECT_EQ(2, type.getStorageId());
    EXPECT_EQ(at(2).getGround(), type.getGround());
    EXPECT_EQ(at(2).getProperties(), table.getDataTypeProperties("", b));
    EXPECT_TRUE(type.isSignedIntDataType() && type.getDefaultGround());
    EXPECT_FALSE(type.groundHasNonZeroStoredValue());
    at(2).setIsAtomic(true);
    at(2).setTargetSize(3);
    EXPECT_TRUE(type.isAtomic() && type.getTargetSize() == 3);
    // Not forwarded:
    EXPECT_EQ(DataTypeQualifierUnspecified, type.getType());
    EXPECT_TRUE(type.getIsAliasToLocked() && !type.getAliasedToLocked());
    EXPECT_TRUE(at(alias("C", 3)).isSignedFixptDT()) << "by its own name and id";
    // An alias of "auto" is valid, and an existing type of the same name is kept.
    EXPECT_EQ(8, at(alias("D", -1)).getSize());
    EXPECT_EQ(a, alias("A", 0));
    EXPECT_EQ(a, plain("A"));
}

TEST_F(Alias, SettersOfDefinitionThrow) {
    DataType& type = at(alias("A", 0));
    const auto error = [](const char* name) {
        return "CannotSetDataType" + (name + "OfAlias(A)"s);
    };
    EXPECT_ERROR(error("Size"), type.setSize(8));
    EXPECT_ERROR(error("ConvertBetween"), type.setConvertBetweenFcn(nullptr));
    EXPECT_ERROR(error("GreaterThan"), type.setGreaterThanFcn(nullptr));
    EXPECT_ERROR(error("GreaterEqual"), type.setGreaterEqualFcn(nullptr));
    EXPECT_ERROR(error("IsNegative"), type.setIsNegativeFcn(nullptr));
    EXPECT_ERROR(error("IsPositive"), type.setIsPositiveFcn(nullptr));
    EXPECT_ERROR(error("StorageId"), type.setStorageId(0));
    EXPECT_ERROR(error("Ground"), type.setGround(nullptr));
    EXPECT_ERROR(error("Properties"), type.setProperties(nullptr));
    EXPECT_ERROR(error("PropertiesSize"), type.setPropertiesSize(0));
    EXPECT_ERROR(error("IsAtomic"), type.setIsAtomic(false));
    EXPECT_ERROR(error("GroundHasNonZero"), type.setGroundHasNonZeroStoredValue(false));
    // Ignored:
    type.setTargetSize(9);
    type.setDefaultGround(true);
    EXPECT_TRUE(at(0).getTargetSize() == 0 && !at(0).getDefaultGround());
}

TEST_F(Alias, PlainTypeBecomesAlias) {
    const int x = plain("X");
    oxArray_tag* value = oxCreateDoubleScalar(1.0);
    at(x).setInterface(value);
    const int before = alias("Before", x);
    EXPECT_NO_ERROR(table.setDataTypeIdAliasedTo(x, 6));
    EXPECT_EQ(2, oxGetReferenceCount(value));
    oxDestroyArray(value);
    EXPECT_EQ(x, table.getDataTypeId("X"));
    EXPECT_EQ(6, at(x).getIdAliasedTo());
    EXPECT_EQ(value, at(x).getInterface());
    // An alias that existed before forwards to the new alias, and so to the end in two calls.
    EXPECT_EQ(4, at(before).getSize());
    EXPECT_EQ(x, at(before).getIdAliasedThruTo());
    EXPECT_EQ(-10, table.getDataTypeIdCommonAncestor(before, x));
    EXPECT_FALSE(table.IsDataTypeNumericOrBoolean(before)) << "its end is an alias";
    EXPECT_NO_ERROR(table.setDataTypeIdAliasedTo(x, 6));
}

TEST_F(Alias, ErrorsInOrder) {
    const int p = plain("P");
    const int q = alias("Q", p);
    const int defined = plain("Defined");
    at(defined).setSize(4);
    EXPECT_ERROR("UndefinedDataTypeToBeAliasedTo(N, 17)", alias("N", 17));
    EXPECT_ERROR("InvalidDataType(N N)", alias("N N", 17));
    EXPECT_ERROR("DataType_SameNameAsExistingType(int8)", alias("int8", 0));
    const struct {
        int id, aliasedTo;
        const char* error;
    } cases[] = {{defined, -2, "UndefinedDataTypeToBeAliasedTo(Defined, -2)"},
                 {q, 0, "InconsistentDataTypeIdAliasedTo(Q, double, P)"},
                 {defined, p, "CannotSetAliasForDefinedType(Defined)"},
                 {-1, p, "CannotSetAliasForDefinedType(auto)"},
                 {9, p, "CannotSetAliasForDefinedType(fcn_call)"},
                 {plain("ufix7"), p, "CannotSetAliasForDefinedType(ufix7)"},
                 {p, q, "DataTypeAliasLoop(P, Q)"},
                 {p, p, "DataTypeAliasLoop(P, P)"}};
    for (const auto& c : cases) {
        EXPECT_ERROR(c.error, table.setDataTypeIdAliasedTo(c.id, c.aliasedTo));
    }
    EXPECT_EQ(-10, table.getDataTypeIdAliasedTo(p));
}

TEST_F(Alias, ChainQueries) {
    const int a = alias("A", 0);
    const int b = alias("B", a);
    const int c = alias("C", a);
    const int other = alias("Other", 1);
    EXPECT_TRUE(table.alreadyAliasedToDirectlyOrIndirectly(b, 0));
    EXPECT_FALSE(table.alreadyAliasedToDirectlyOrIndirectly(a, b));
    EXPECT_FALSE(table.alreadyAliasedToDirectlyOrIndirectly(a, a));
    EXPECT_FALSE(table.alreadyAliasedToDirectlyOrIndirectly(-10, 0));
    const std::array<int, 3> ancestors[] = {
        {b, c, a}, {b, a, a}, {b, 0, 0}, {b, b, b}, {b, other, -10}};
    for (const auto& [first, second, ancestor] : ancestors) {
        EXPECT_EQ(ancestor, table.getDataTypeIdCommonAncestor(first, second));
        EXPECT_EQ(ancestor, table.getDataTypeIdCommonAncestor(second, first));
    }
    for (int id = -1; id <= other; ++id) {
        EXPECT_FALSE(at(id).getVisitFlag()) << id;
    }
    EXPECT_EQ(-10, table.getDataTypeIdAliasedTo(-1));
    EXPECT_ERROR("InvalidDataTypeId(-10)", table.getDataTypeAliasedThruTo(-10));
}

// The next two must not be quadratic in the number of types: milliseconds, or else minutes.
constexpr int many = 100'000;

std::string nameAt(int i) { return "type_" + std::to_string(i); }

TEST_F(Alias, LongChains) {
    int id = 0;
    for (int i = 0; i < many; ++i) {
        id = alias(nameAt(i).c_str(), id);
    }
    EXPECT_EQ(8, at(id).getSize());
    EXPECT_EQ(0, table.getDataTypeIdCommonAncestor(id, 0));
    EXPECT_EQ(id - 2, table.getDataTypeIdCommonAncestor(id, id - 2));
}

TEST(ReplacedTypes, BecomeAliases) {
    ReplacingTable table;
    for (int i = 0; i < 3 * many; ++i) {
        const int id = 14 + i % many;
        if (i < 2 * many) {
            const std::string name = nameAt(i % many);
            ASSERT_EQ(id, table.registerDataType(name.c_str(), clientSource, nullptr));
        } else {
            table.setDataTypeIdAliasedTo(id, i % 9);
        }
    }
    EXPECT_EQ(15 + many, table.getNumDataTypes());
    EXPECT_EQ(2 * many % 9, table.getDataTypeAliasedThruTo(14)->getId());
}
