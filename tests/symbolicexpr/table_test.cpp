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
    EXPECT_EQ(sumId, SymbolicPlusExpr(table, 0, 1).getId(table));
    EXPECT_EQ(3u, table.size());

    std::vector<unsigned long> ids;
    ids.push_back(SymbolicPlusExpr(table, 1, 0).getId(table));
    ids.push_back(SymbolicMinusExpr(table, 0, 1).getId(table));
    ids.push_back(SymbolicMultiplyExpr(table, 0, 1).getId(table));
    ids.push_back(SymbolicDivideExpr(table, 0, 1).getId(table));
    ids.push_back(SymbolicEqualExpr(table, 0, 1).getId(table));
    ids.push_back(SymbolicGreaterThanExpr(table, 0, 1).getId(table));
    ids.push_back(SymbolicUnaryMinusExpr(table, n).getId(table));
    ids.push_back(SymbolicNDExpr(table, {0, 1}).getId(table));
    ids.push_back(SymbolicNDExpr(table, {1}).getId(table));
    ids.push_back(SymbolicNDExpr(table, {}).getId(table));
    ids.push_back(SymbolicString(table, "").getId(table));
    ids.push_back(SymbolicString(table, "1").getId(table));
    ids.push_back(SymbolicIntValue(table, 1).getId(table));
    for (std::size_t i = 0; i < ids.size(); ++i) {
        EXPECT_EQ(3 + i, ids[i]) << "unlike all before";
    }
}

TEST_F(SymbolicTable, NormalisesNumbers) {
    const int least = std::numeric_limits<int>::min();
    const std::pair<const char*, const char*> cases[] = {
        {"0", "0"}, {"-0", "0"}, {"-000", "0"}, {"0010", "10"}, {"-0010", "-10"}};
    for (const auto& [digits, expected] : cases) {
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
    EXPECT_ERROR("InvalidDataTypeId(2)", SymbolicUnaryMinusExpr(table, 3).getId(table));
    EXPECT_ERROR("InvalidDataTypeId(6)", SymbolicPlusExpr(table, 0, 7).getId(table));
    EXPECT_ERROR("InvalidDataTypeId(2)", SymbolicNDExpr(table, {0, 3}).getId(table));
    constexpr unsigned long wide = 1UL << 32;
    EXPECT_NE("no error", thrownError([&] { SymbolicPlusExpr(table, wide, wide).getId(table); }));
    EXPECT_EQ(3u, table.size());

    const SymbolicExpr& list = table.get(parse("[N,1]"));
    EXPECT_EQ(1u, list.getDimension(1));
    EXPECT_THROW(list.getDimension(2), std::out_of_range);
    EXPECT_THROW(table.get(0).getDimension(0), std::out_of_range);
}

} // namespace
