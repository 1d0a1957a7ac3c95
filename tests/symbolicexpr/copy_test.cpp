#include "expression_fixture.h"

#include <symbolicexpr/copy.h>

namespace {

using namespace TV;
using SymbolicCopy = ExpressionTest;

TEST_F(SymbolicCopy, CopiesInPostOrder) {
    SymbolicExprTable other;
    const SymbolicExprCopy copy(table, other);
    parse("unused");
    const unsigned long size = parse("[-(A+2)*(A+2)/B,A-B,-7]");
    const unsigned long relation =
        SymbolicGreaterThanExpr(table, size, SymbolicEqualExpr(table, 1, 0).getId(table))
            .getId(table);

    const unsigned long copied = copy(relation);
    EXPECT_EQ(tree(relation), tree(other, copied));
    EXPECT_EQ(table.size(), other.size());
    const char* const order[] = {"A", "2", "(+ A 2)", "(- (+ A 2))"};
    for (unsigned long id = 0; id < std::size(order); ++id) {
        EXPECT_EQ(order[id], tree(other, id));
    }
    EXPECT_EQ(copied, copy(relation));
    EXPECT_EQ(size, SymbolicExprCopy(table, table)(size));
    EXPECT_ERROR("InvalidDataTypeId(9999)", copy(10'000));
    EXPECT_EQ(table.size(), other.size());
}

// 2^100000 names if each occurrence were copied, and a recursion of depth 100,000.
TEST_F(SymbolicCopy, CopiesDeepSharedExpressions) {
    unsigned long id = parse("N");
    for (int i = 0; i < 100'000; ++i) {
        id = apply('*', id, id);
    }
    SymbolicExprTable other;
    EXPECT_EQ(id, SymbolicExprCopy(table, other)(id));
    EXPECT_EQ(id + 1, other.size());
}

} // namespace
