#include "symbolicdims/symbolicdims_fixture.h"

#include <symbolicexpr/expr.h>

namespace TVTypeSys {
namespace {

using Sizes = std::vector<std::string>;

class SymbolicTableTest : public SymbolicTest {
  protected:
    const TV::SymbolicExpr& expression(int dimsId) {
        return table.getSymbolicExpr(static_cast<unsigned long>(dimsId) + 1);
    }
};

TEST_F(SymbolicTableTest, HasPredefinedIds) {
    table.initialize();
    EXPECT_NO_ERROR(table.checkSymbolicDimsId(-1));
    EXPECT_FALSE(table.isSymbolicDimsIdValid_NotInherit(-1));
    EXPECT_TRUE(table.isSymbolicDimsIdValid_NotInherit(0));
    for (const int none : {-2, 1}) {
        const std::string error = "InvalidDataTypeId(" + std::to_string(none) + ")";
        EXPECT_ERROR(error, table.checkSymbolicDimsId(none));
        EXPECT_ERROR(error, table.getDisplayString(none));
    }
    for (const unsigned long none : {2UL, 1UL << 32, ~0UL}) {
        EXPECT_NE(thrownError([&] { table.getSymbolicDimsAt(none).toString(); }), "no error");
    }
    std::ostringstream printed;
    printed << table << table.getSymbolicDimsAt(0);
    EXPECT_EQ(printed.str(), "SymbolicDimsTable\nNumber of SymbolicDimss : 2\n\n"
                             "SymbolicDims : 'INHERIT'\nSymbolicDims : 'NOSYMBOLIC'\n\n"
                             "SymbolicDims : 'INHERIT'\n");
}

TEST_F(SymbolicTableTest, DistinguishesIntegersFromNames) {
    for (const auto& [text, value] :
         {std::pair("5", 5), {"010", 10}, {"+7", 7}, {"-3", -3}, {"-2147483648", -2147483648}}) {
        EXPECT_EQ(table.registerSymbolicDims(text), table.registerSymbolicDims(value)) << text;
    }
    for (const char* name : {"N", "N+1", "089", "5 ", "1.5", "0x", "INHERIT"}) {
        const int named = table.registerSymbolicDims(name);
        EXPECT_TRUE(expression(named).isTermExpr()) << name;
        EXPECT_EQ(named, table.getSymbolicDims(name).getId()) << name;
        EXPECT_STREQ(table.getDisplayString(named), name);
    }
    EXPECT_NE(table.registerSymbolicDims("N+1"), id("N+1"));
    const int count = table.getNumSymbolicDimss();
    const char* none = nullptr;
    for (const char* text : {"0x10", " 5", "2147483648", "99999999999999999999", "", none}) {
        EXPECT_THROW(table.registerSymbolicDims(text), boost::bad_lexical_cast);
    }
    EXPECT_ERROR("InvalidSymbolicDimensionExpr(N+, 3)", id("N+"));
    EXPECT_NE(thrownError([&] { id(nullptr); }), "no error");
    EXPECT_EQ(table.getNumSymbolicDimss(), count);
}

TEST_F(SymbolicTableTest, RegistersListsOfSizes) {
    EXPECT_EQ(table.registerSymbolicDims(Sizes{"N"}), table.registerSymbolicDims("N"));
    EXPECT_EQ(table.registerSymbolicDims(Sizes{"07"}), table.registerSymbolicDims(7));
    EXPECT_TRUE(expression(table.registerSymbolicDims(Sizes{"-3"})).isTermExpr());
    EXPECT_TRUE(expression(table.registerSymbolicDims(Sizes{""})).isTermExpr());
    EXPECT_STREQ(table.getDisplayString(table.registerSymbolicDims(Sizes{"2", "N"})), "[2,N]");
    EXPECT_TRUE(expression(table.registerSymbolicDims(Sizes{})).isMultiExpr());
    const int count = table.getNumSymbolicDimss();
    EXPECT_THROW(table.registerSymbolicDims(Sizes{"M", "2147483648"}), boost::bad_lexical_cast);
    EXPECT_EQ(table.getNumSymbolicDimss(), count);
}

TEST_F(SymbolicTableTest, ValidatesNames) {
    EXPECT_TRUE(SymbolicDimsTable::isAValidSymbolicDims("N_1"));
    EXPECT_FALSE(SymbolicDimsTable::isAValidSymbolicDims(nullptr));
    EXPECT_ERROR("InvalidDataType(N+1)", SymbolicDimsTable::validateSymbolicDimsExpr("N+1"));
    int given = 7;
    EXPECT_EQ(SymbolicDimsTable::RegisterSymbolicDims(&table, "Model/In", "N", &given), nullptr);
    EXPECT_EQ(given, 1);
}

TEST_F(SymbolicTableTest, ImportsExpressionsAndResets) {
    SymbolicDimsTable other;
    const int imported = other.importSymbolicDims(table, id("[2,N*(M+1)]"));
    EXPECT_STREQ(other.getDisplayString(imported), "[2,N*(M+1)]");
    EXPECT_ERROR("InvalidDataTypeId(-2)", other.importSymbolicDims(table, -2));
    table.addEqualConstraint(1, 3, block(1));
    table.resetToBuiltin();
    EXPECT_EQ(table.getNumSymbolicDimss(), 2);
    EXPECT_STREQ(table.getDisplayString(id("M")), "M");
    EXPECT_FALSE(table.hasEqualConstraint(1, 3));
    EXPECT_EQ(table.getNumSymbolicDimss(), 4); // the query has registered the integer
}

} // namespace
} // namespace TVTypeSys
