#include "expression_fixture.h"
#include "support/random_seed.h"

#include <algorithm>
#include <random>

namespace {

using namespace TV;

class SymbolicPrinter : public ExpressionTest {
  protected:
    // An expression without relations. It need not be the parse of a text.
    unsigned long randomExpression(int depth) {
        const auto below = [this](std::size_t bound) { return random() % bound; };
        const auto part = [&] { return randomExpression(depth - 1); };
        const std::size_t kind = depth == 0 ? below(2) : below(8);
        if (kind == 0) {
            return name(std::string(1, "NMK"[below(3)]));
        }
        if (kind == 1) {
            return SymbolicIntValue(table, static_cast<int>(below(7)) - 3).getId(table);
        }
        if (kind < 7) {
            return apply("~+-*/"[kind - 2], part(), part());
        }
        std::vector<unsigned long> entries(below(4));
        std::ranges::generate(entries, part);
        return SymbolicNDExpr(table, entries).getId(table);
    }

    std::mt19937 random{randomSeed(20260101)};
};

TEST_F(SymbolicPrinter, OmitsRedundantParentheses) {
    for (const std::string text :
         {"M-2",     "2*N+1",   "(N+1)/2", "-N",      "[2,N]",   "[]",           "A+B-C",
          "A-(B+C)", "A+(B+C)", "A*B/C",   "A*(B*C)", "A/(B*C)", "A+B*C",        "(A-B)*(C+D)",
          "N+-3",    "A*-B",    "-3*N",    "N--3",    "-(3)",    "--3",          "--(3)",
          "--N",     "-(A*B)",  "-(A+B)",  "-A*B",    "-[N]",    "[A+B,[-C]]*2", "-(-3*N)"}) {
        EXPECT_EQ(text, print(parse(text)));
        EXPECT_EQ(text, print(parse("(" + text + ")")));
    }
}

TEST_F(SymbolicPrinter, RoundTrips) {
    for (int i = 0; i < 3000; ++i) {
        const unsigned long id = randomExpression(i % 7);
        ASSERT_EQ(id, parse(print(id))) << tree(id) << " " << print(id);
    }
    unsigned long deep = name("N");
    for (int i = 0; i < 1000; ++i) {
        deep = i % 3 == 0 ? SymbolicNDExpr(table, {deep, name("M")}).getId(table)
                          : apply('-', name("M"), deep);
    }
    EXPECT_EQ(deep, parse(print(deep)));
}

TEST_F(SymbolicPrinter, PrintsRelationsAndOpaqueNames) {
    const unsigned long text = name("N+1");
    const unsigned long null = name(std::string("M\0", 2));
    const unsigned long sum = parse("A+B");
    const unsigned long equal = SymbolicEqualExpr(table, text, sum).getId(table);
    const unsigned long greater = SymbolicGreaterThanExpr(table, equal, text).getId(table);
    EXPECT_EQ("N+1", print(text));
    EXPECT_EQ("N+1==A+B", print(equal));
    EXPECT_EQ("(N+1==A+B)>N+1", print(greater));
    EXPECT_EQ(std::string("(N+1)*(M\0)", 10), print(apply('*', text, null)));
    EXPECT_EQ("-(N+1)", print(apply('~', text)));
    EXPECT_EQ("[N+1,N+1==A+B]", print(SymbolicNDExpr(table, {text, equal}).getId(table)));
    EXPECT_EQ("(N+1==A+B)-A", print(apply('-', equal, parse("A"))));

    EXPECT_EQ("(N+1)", print(text, 1));
    EXPECT_EQ("(A+B)", print(sum, 2));
    EXPECT_EQ("A*B", print(parse("A*B"), 2));
    EXPECT_EQ("A+B>0", SymbolicExprPrinter(table)(SymbolicGreaterThanExpr(table, sum, parse("0"))));
}

// Repeated squaring: the text has 2^200 names.
TEST_F(SymbolicPrinter, LimitsLength) {
    unsigned long id = name("N");
    for (int i = 0; i < 200; ++i) {
        id = apply('*', id, id);
    }
    const std::string text = print(id);
    EXPECT_GT(text.size(), 16u << 20);
    EXPECT_LT(text.size(), (16u << 20) + 2000);
    EXPECT_EQ("*...*...", text.substr(text.size() - 8));
}

} // namespace
