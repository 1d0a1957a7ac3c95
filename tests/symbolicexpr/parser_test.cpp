#include "expression_fixture.h"

namespace {

using SymbolicParser = ExpressionTest;

TEST_F(SymbolicParser, BuildsTrees) {
    for (const std::string row :
         {" \t\n\v\f\rN  -> N",
          "_a1 -> _a1",
          "A+B-C+D -> (+ (- (+ A B) C) D)",
          "A/B*C/D -> (/ (* (/ A B) C) D)",
          "A+B*C-D -> (- (+ A (* B C)) D)",
          "(A+B)*(C) -> (* (+ A B) C)",
          "00 -> 0",
          "007 -> 7",
          "-3*N -> (* -3 N)",
          "- 3 -> -3",
          "-0 -> 0",
          "N--3 -> (- N -3)",
          "N-3 -> (- N 3)",
          "--3 -> (- -3)",
          "-(3) -> (- 3)",
          "(-3) -> -3",
          "--N -> (- (- N))",
          "-A*-B -> (* (- A) (- B))",
          "-A+B -> (+ (- A) B)",
          "A/-2*B -> (* (/ A -2) B)",
          "[ ] -> []",
          "[a, b+1 ,-c] -> [a (+ b 1) (- c)]",
          "[a,[],[b,[2]]] -> [a [] [b [2]]]",
          "-[N]*2+[(a)] -> (+ (* (- [N]) 2) [a])",
          "123456789012345678901234567890 -> 123456789012345678901234567890"}) {
        const std::size_t arrow = row.find(" -> ");
        EXPECT_EQ(row.substr(arrow + 4), tree(parse(row.substr(0, arrow))));
    }
}

TEST_F(SymbolicParser, ReportsErrorColumn) {
    using namespace std::string_literals;
    const std::pair<std::string, int> cases[] = {
        {"", 1},        {"  ", 3},        {"N+", 3},   {"N + ", 5},   {"-", 2},   {"+N", 1},
        {"N++M", 3},    {"N*/M", 3},      {"2N", 2},   {"N 2", 3},    {"N M", 3}, {"2 3", 3},
        {"N(2)", 2},    {"(N)M", 4},      {"A^2", 2},  {"A==B", 2},   {"A>B", 2}, {"1.5", 2},
        {"'N'", 1},     {"N\xC3\xA9", 2}, {"N\0"s, 2}, {"\0N"s, 1},   {"N)", 2},  {"(N", 3},
        {"(N ", 4},     {"()", 2},        {"(", 2},    {"-)", 2},     {"[", 2},   {"[N", 3},
        {"[N,", 4},     {"[N,]", 4},      {"[,N]", 2}, {"[N,,M]", 4}, {"[-]", 3}, {"[+]", 2},
        {"[(])", 3},    {"[N)", 3},       {"(N]", 3},  {"N]", 2},     {"A,B", 2}, {"(A,B)", 3},
        {"[(A,B)]", 4}, {"[]]", 3},       {"[][]", 3},
    };
    for (const auto& [text, column] : cases) {
        try {
            parse(text);
            ADD_FAILURE() << text;
        } catch (const fnd::except::IException& error) {
            EXPECT_EQ((std::vector<std::string>{text, std::to_string(column)}),
                      error.diagnostic().arguments(0));
        }
    }
    EXPECT_EQ(0u, table.size());
}

TEST_F(SymbolicParser, InternsInPostOrder) {
    EXPECT_EQ(6u, parse("(B+1)/[A,B]-B"));
    const char* const expected[] = {"B", "1", "(+ B 1)", "A", "[A B]", "(/ (+ B 1) [A B])"};
    for (unsigned long id = 0; id < std::size(expected); ++id) {
        EXPECT_EQ(expected[id], tree(id));
    }
    EXPECT_EQ(2u, parse(" B + 1"));
    EXPECT_EQ(7u, table.size());
}

TEST_F(SymbolicParser, LimitsNesting) {
    const auto nested = [](std::size_t depth, const std::string& open, const std::string& close) {
        return repeated(open, depth) + "N" + repeated(close, depth);
    };
    EXPECT_EQ("N", tree(parse(nested(1000, "(", ")"))));
    EXPECT_EQ(nested(1000, "[", "]"), print(parse(nested(1000, "[", "]"))));
    EXPECT_NO_ERROR(parse(nested(500, "([1,", "])")));
    EXPECT_NO_ERROR(parse("[" + repeated("(((N))),", 2000) + "N]"));
    const std::string tooDeep = nested(1001, "( ", ")");
    EXPECT_ERROR("InvalidSymbolicDimensionExpr(" + tooDeep + ", 2001)", parse(tooDeep));
}

TEST_F(SymbolicParser, LimitsLength) {
    for (const std::string& text :
         {"N" + repeated("+M*2", 100'000), "N" + repeated("/M", 100'000),
          repeated("-", 500'000) + "N", repeated("-", 500'000) + "3", std::string(500'000, '9'),
          "[N" + repeated(",M", 100'000) + "]"}) {
        EXPECT_EQ(text, print(parse(text)));
    }
    std::string longest(1 << 20, ' ');
    longest.front() = 'N';
    EXPECT_EQ("N", print(parse(longest)));
    const std::size_t size = table.size();
    longest += "+";
    EXPECT_ERROR("InvalidSymbolicDimensionExpr(" + longest + ", 1048577)", parse(longest));
    EXPECT_EQ(size, table.size());
}

} // namespace
