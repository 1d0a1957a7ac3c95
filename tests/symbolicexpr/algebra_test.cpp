#include "expression_fixture.h"
#include "support/random_seed.h"

#include <symbolicexpr/simplify.h>

#include <boost/multiprecision/cpp_int.hpp>

#include <functional>
#include <iterator>
#include <optional>
#include <random>

namespace {

using namespace TV;

using Value = std::optional<boost::multiprecision::cpp_rational>;

class SymbolicAlgebra : public ExpressionTest {
  protected:
    std::string simplified(const std::string& text) { return print(simplify(parse(text))); }

    /// Evaluates an expression at a point that is derived from the names; no value on division by
    /// zero.
    Value valueOf(unsigned long id) {
        const SymbolicExpr& expr = table.get(id);
        if (expr.op() == SymbolicNameOp || expr.op() == SymbolicNumberOp) {
            const std::string text = print(id);
            return expr.isNumValue() ? Value(text)
                                     : Value(std::hash<std::string>()(text) % 1000003);
        }
        const Value left = valueOf(expr.getArg(0));
        const Value right = expr.getNumArgs() == 2 ? valueOf(expr.getArg(1)) : 0;
        if (!left || !right) {
            return std::nullopt;
        }
        switch (expr.op()) {
        case SymbolicPlusOp:
            return *left + *right;
        case SymbolicMinusOp:
            return *left - *right;
        case SymbolicMultiplyOp:
            return *left * *right;
        case SymbolicDivideOp:
            return *right == 0 ? std::nullopt : Value(*left / *right);
        default:
            return -*left;
        }
    }
};

TEST_F(SymbolicAlgebra, ProducesCanonicalForms) {
    for (const std::string row :
         {// Sums: the order of terms, numbers, signs.
          "1+N+1 -> N+2", "N*M+M*M+N*N+N+M+3 -> M*M+M*N+N*N+M+N+3", "b*b+a*c+A -> a*c+b*b+A",
          "-M+2 -> 2-M", "3-B+C-A -> C-A-B+3", "-A-B -> -A-B", "N-N -> 0", "N-(M-(K-N)) -> K-M",
          // Products and quotients.
          "N*-1 -> -N", "(N+1)*(N-1) -> N*N-1", "(b+a)*2*c -> 2*a*c+2*b*c",
          "B*A*2*A*-3 -> -6*A*A*B", "4*N/6 -> 2*N/3", "(N+2)/4 -> N/4+1/2", "N/-2 -> -N/2",
          "M/3-N/6 -> M/3-N/6", "(N*N-1)/(N-1) -> N+1", "(2*N+2)/(4*M) -> (N+1)/(2*M)",
          "1/(2-N) -> -1/(N-2)", "(A*A-B*B)/(A*A-2*A*B+B*B) -> (A+B)/(A-B)",
          "1/A+1/B -> (A+B)/(A*B)", "A/(B/C) -> A*C/B", "1/(x+1)-1/(x-1) -> -2/(x*x-1)",
          "(x/y+y/x)*x*y -> x*x+y*y", "N/2/(N/3) -> 3/2",
          // Numbers of any size.
          "9223372036854775807+1 -> 9223372036854775808",
          "-9223372036854775808/-1 -> 9223372036854775808",
          "99999999999*99999999999 -> 9999999999800000000001",
          "100000000000000000000*N/30000000000000000000 -> 10*N/3",
          // Lists.
          "[N+N,[M/M],3*2] -> [2*N,[1],6]"}) {
        const std::size_t arrow = row.find(" -> ");
        EXPECT_EQ(row.substr(arrow + 4), simplified(row.substr(0, arrow)));
        EXPECT_EQ(1u, isSimplified) << row;
    }
}

TEST_F(SymbolicAlgebra, LeavesUndefinedArithmetic) {
    for (const char* text : {"1/(N-N)", "0/0", "N/0*0", "1/0-1/0", "1/(1/(N-N))", "N+N+(M-M)/(M-M)",
                             "[N]+[N]", "[N,M]*0", "2*[]"}) {
        EXPECT_EQ(text, simplified(text));
        EXPECT_EQ(0u, isSimplified) << text;
    }
    EXPECT_EQ("[2*N,M/0]", simplified("[N+N,M/0]"));
    EXPECT_EQ(0u, isSimplified);

    const unsigned long relation =
        SymbolicGreaterThanExpr(table, parse("N+N"), parse("2-1")).getId(table);
    EXPECT_EQ("2*N>1", print(simplify(relation)));
}

TEST_F(SymbolicAlgebra, TreatsAnyNameAsAtom) {
    EXPECT_EQ("N+(N+1)+1", print(simplify(apply('+', name("N+1"), parse("N+1")))));
    EXPECT_EQ("2*INHERIT", simplified("INHERIT+INHERIT"));
}

/// A random expression and an equal one: operands of sums and products are swapped, and some
/// operands are simplified.
struct Twins {
    unsigned long id;
    unsigned long twin;
};

// The simplified form has the same value at a point, is the same for equal expressions in any order
// of creation, and round-trips through its text.
TEST_F(SymbolicAlgebra, PreservesValues) {
    std::mt19937 random(randomSeed(1));
    const char* const terms[] = {"a", "b", "C", "n1", "0", "1", "2", "-3", "12", "6"};
    const std::function<Twins(int)> make = [&](int depth) -> Twins {
        if (depth == 0 || random() % 6 == 0) {
            const unsigned long term = parse(terms[random() % std::size(terms)]);
            return {term, term};
        }
        const Twins a = make(depth - 1);
        const Twins b = random() % 8 == 0 ? a : make(depth - 1);
        const char op = "+-*/~"[random() % 5];
        const unsigned long twin =
            op == '+' || op == '*' ? apply(op, b.twin, a.twin) : apply(op, a.twin, b.twin);
        return {apply(op, a.id, b.id), random() % 3 == 0 ? simplify(twin) : twin};
    };
    int compared = 0;
    for (int i = 0; i < 3000; ++i) {
        const auto [id, twin] = make(1 + i % 5);
        const unsigned long form = simplify(id);
        if (isSimplified == 0) {
            EXPECT_EQ(id, form);
            continue;
        }
        EXPECT_EQ(form, simplify(twin)) << print(id);
        EXPECT_EQ(form, parse(print(form)));
        if (const auto value = valueOf(id)) {
            ++compared;
            EXPECT_EQ(value, valueOf(form)) << print(id);
        }
    }
    EXPECT_LT(2000, compared);
}

std::string joined(int count, char separator, const std::function<std::string(int)>& item) {
    std::string text = item(0);
    for (int i = 1; i < count; ++i) {
        text += separator + item(i);
    }
    return text;
}

std::string power(const std::string& base, std::size_t exponent) {
    return base + repeated("*" + base, exponent - 1);
}

TEST_F(SymbolicAlgebra, RespectsLimits) {
    const auto name = [](int i) { return "n" + std::to_string(i); };
    const auto pair = [](int i) {
        return "(a" + std::to_string(i) + "+b" + std::to_string(i) + ")";
    };
    // 1 + x + ... + x^15
    const auto geometric = [](int i) {
        const auto term = [i](int p) { return power({"xyz"[i]}, std::size_t(p) + 1); };
        return "(1+" + joined(15, '+', term) + ")";
    };
    const auto fraction = [&](int i) { return "1/" + name(i); };
    const auto quotient = [](const std::string& name, int i) {
        return name + "/" + std::to_string(1'000'003 + 2 * i);
    };
    const struct {
        std::string text;
        bool isSimplified;
    } cases[] = {
        {joined(4096, '+', name), true},
        {joined(4097, '+', name), false},
        {joined(5000, '+', name) + "-" + joined(5000, '-', name), true}, // 2*n0
        {joined(12, '*', pair), true},
        {joined(13, '*', pair), false},
        {power("(a+b+c+d)", 27), true}, // 4,060 terms
        {power("(a+b+c+d)", 28), false},
        {power("(a+b)", 4000), false}, // 16 million factors
        {power("N", 80'000), true},
        {joined(50'000, '*', name), true},
        {joined(3'000, '+', fraction), false},
        // Over the common denominator each coefficient would be as long as all denominators.
        {joined(20'000, '+', [&](int i) { return quotient(name(i), i); }), false},
        {joined(3'000, '+', [&](int i) { return quotient("N", i); }), true},
        {"(z+1)*(" + power("x", 100'000) + "+y)/((z-1)*(" + power("x", 100'000) + "+y))", true},
        {"(" + power("x", 100'001) + "-x)/(" + power("x", 100'000) + "-1)", true},
        {std::string(500'000, '7') + "*" + std::string(500'000, '3') + "*N", true},
        {"(x-1)*(y-1)*(z-1)*" + joined(3, '*', geometric), true}, // (x^16-1)*...
    };
    for (const auto& [text, isExpected] : cases) {
        simplify(parse(text));
        EXPECT_EQ(isExpected, isSimplified == 1) << text.substr(0, 100);
    }
}

// Repeated squaring, sharing and nesting: each step doubles the size of the written expression.
TEST_F(SymbolicAlgebra, RespectsLimitsStepByStep) {
    for (const char* start : {"3", "N/(M-1)", "-1"}) {
        unsigned long id = parse(start);
        for (int i = 0; i < 60; ++i) {
            id = simplify(apply('*', id, id));
        }
        EXPECT_EQ(start == std::string("-1"), isSimplified == 1);
    }
    unsigned long id = parse("N");
    for (int i = 0; i < 10'000; ++i) {
        id = apply('+', id, apply('~', id));
    }
    EXPECT_EQ("0", print(simplify(id)));
    id = parse("N");
    for (int i = 0; i < 300'000; ++i) {
        id = SymbolicNDExpr(table, {id}).getId(table);
    }
    EXPECT_EQ(id, simplify(id));
}

} // namespace
