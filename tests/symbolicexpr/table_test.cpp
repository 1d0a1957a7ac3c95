#include "expression_fixture.h"

#include <limits>
#include <stdexcept>

namespace {

using namespace TV;
using SymbolicTable = ExpressionTest;

TEST_F(SymbolicTable, InternsEqualExpressions) {
    const SymbolicString n(table, "N");
    const SymbolicString m(table, "M");
    const SymbolicPlusExpr sum(table, m, n);
    const unsigned long sumId = sum.getId(table);
    EXPECT_EQ(2u, sumId) << "operands come first, from the left";
    EXPECT_EQ("(+ M N)", tree(sumId));
    EXPECT_EQ(1u, n.getId(table));
    EXPECT_EQ(sumId, apply('+', 0, 1));
    EXPECT_EQ(3u, table.size());

    // The list is evaluated from the left.
    const unsigned long ids[] = {apply('+', 1, 0),
                                 apply('-', 0, 1),
                                 apply('*', 0, 1),
                                 apply('/', 0, 1),
                                 apply('~', 1),
                                 SymbolicEqualExpr(table, 0, 1).getId(table),
                                 SymbolicGreaterThanExpr(table, 0, 1).getId(table),
                                 SymbolicNDExpr(table, {0, 1}).getId(table),
                                 SymbolicNDExpr(table, {1}).getId(table),
                                 SymbolicNDExpr(table, {}).getId(table),
                                 name(""),
                                 name("1"),
                                 SymbolicIntValue(table, 1).getId(table)};
    for (std::size_t i = 0; i < std::size(ids); ++i) {
        EXPECT_EQ(3 + i, ids[i]) << "unlike all before";
    }
}

TEST_F(SymbolicTable, NormalisesNumbers) {
    const int least = std::numeric_limits<int>::min();
    for (const auto& [digits, expected] :
         {std::pair("0", "0"), {"-0", "0"}, {"-000", "0"}, {"0010", "10"}, {"-0010", "-10"}}) {
        EXPECT_EQ(expected, SymbolicIntValue(table, digits).text());
    }
    EXPECT_EQ(SymbolicIntValue(table, std::to_string(least)).getId(table),
              SymbolicIntValue(table, least).getId(table));
    for (const char* digits : {"", "-", "+1", "1 ", "0x1", "--1", "1-"}) {
        EXPECT_THROW(SymbolicIntValue(table, digits), std::invalid_argument) << digits;
    }
}

TEST_F(SymbolicTable, RejectsMissingOperandsAndIds) {
    parse("N+1");
    EXPECT_ERROR("InvalidDataTypeId(2)", table.get(3));
    // If this were interned, it would be its own operand.
    EXPECT_ERROR("InvalidDataTypeId(2)", apply('~', 3));
    EXPECT_ERROR("InvalidDataTypeId(6)", apply('+', 0, 7));
    EXPECT_ERROR("InvalidDataTypeId(2)", SymbolicNDExpr(table, {0, 3}).getId(table));
    constexpr unsigned long wide = 1UL << 32;
    EXPECT_NE("no error", thrownError([&] { apply('+', wide, wide); }));
    EXPECT_EQ(3u, table.size());

    const SymbolicExpr& list = table.get(parse("[N,1]"));
    EXPECT_EQ(1u, list.getDimension(1));
    EXPECT_THROW(list.getDimension(2), std::out_of_range);
    EXPECT_THROW(table.get(0).getDimension(0), std::out_of_range);
}

} // namespace
