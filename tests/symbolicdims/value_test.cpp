#include "symbolicdims/symbolicdims_fixture.h"

namespace TVTypeSys {
namespace {

using SymbolicValueTest = SymbolicTest;

TEST_F(SymbolicValueTest, ComputesArithmetic) {
    const SymbolicDims n = dims("N");
    const SymbolicDims m = dims("M");
    EXPECT_EQ((n + m + n).toString(), "M+2*N");
    EXPECT_EQ((n - m).getId(), (dims("2*N") - (m + n)).getId());
    EXPECT_EQ((n * m / n).getId(), m.getId());
    EXPECT_EQ((n / (m - m)).toString(), "N/0");
    const int count = table.getNumSymbolicDimss();
    EXPECT_EQ((-(-n)).toString(), "--N");
    EXPECT_EQ(table.getNumSymbolicDimss(), count + 2);
    SymbolicDimsTable other; // the table of the right operand is not used
    EXPECT_EQ((n + other.getSymbolicDims(m.getId())).getId(), (n + m).getId());
}

TEST_F(SymbolicValueTest, AccessesDimensions) {
    EXPECT_EQ(table.getSymbolicDims(-1).getExprWithEmptyInherit(), "");
    EXPECT_EQ(table.getSymbolicDims(0).getExprWithEmptyInherit(), "");
    EXPECT_EQ(dims("N").getExprWithEmptyInherit(), "N");
    for (const char* single : {"N", "[]"}) {
        const SymbolicDims value = dims(single);
        EXPECT_EQ(value.getNumDimensions(), 1);
        EXPECT_EQ(value.getDimension(7).getId(), value.getId());
        EXPECT_EQ(value.getSize().getId(), value.getId());
        EXPECT_EQ(value.getSize(9).getId(), value.getId());
    }
    const SymbolicDims list = dims("[2+N+N,N,3]");
    EXPECT_EQ(list.getNumDimensions(), 3);
    EXPECT_EQ(list.getDimension(0).toString(), "2+N+N");
    EXPECT_EQ(list.getSize(0).toString(), "2*N+2");
    EXPECT_EQ(list.getSize(1).toString(), "2*N+2");
    EXPECT_EQ(list.getSize(2).toString(), "2*N*N+2*N");
    EXPECT_EQ(list.getSize().getId(), list.getSize(3).getId());
    const int count = table.getNumSymbolicDimss();
    EXPECT_ERROR("InvalidDimensionIndex(3, 3)", list.getDimension(3));
    EXPECT_ERROR("InvalidDimensionIndex(3, 3)", list.getSize(4));
    EXPECT_EQ(table.getNumSymbolicDimss(), count);
    EXPECT_EQ(dims("[N]").getSize().toString() + dims("[N]").getSize(1).toString(), "[N]N");
}

TEST_F(SymbolicValueTest, ConstructsFromTextsIntegersAndLists) {
    EXPECT_EQ(SymbolicDimsString(table, "5").getId(), SymbolicDimsString(&table, "5").getId());
    EXPECT_EQ(SymbolicDimsIntValue(table, -5).toString(), "-5");
    const int five = SymbolicDimsIntValue(&table, 5).getId();
    EXPECT_EQ(SymbolicDimsND(table, {five, -1}).toString(), "[5,INHERIT]");
    const int count = table.getNumSymbolicDimss();
    for (const int none : {-2, 999}) {
        const std::string error = "InvalidDataTypeId(" + std::to_string(none) + ")";
        const SymbolicDims value(&table, none);
        EXPECT_ERROR(error, SymbolicDimsND(&table, {five, none}));
        EXPECT_ERROR(error, value.toString());
        EXPECT_ERROR(error, -value);
        EXPECT_ERROR(error, table.getSymbolicDims(five) * value);
        EXPECT_ERROR(error, value.getSize());
    }
    EXPECT_EQ(table.getNumSymbolicDimss(), count);
    EXPECT_EQ(convertSymbDimsId2SymbolicExprId({-1, 7}), (std::vector<unsigned long>{0, 8}));
}

} // namespace
} // namespace TVTypeSys
