#include "expression_fixture.h"
#include "support/random_seed.h"

#include <symbolicexpr/simplify.h>

#include <algorithm>
#include <iterator>
#include <random>
#include <string>
#include <vector>

namespace {

using namespace TV;

std::string sum(const std::string& name, int terms) {
    std::string text = "(" + name + "0";
    for (int i = 1; i < terms; ++i) {
        text += "+" + name + std::to_string(i);
    }
    return text + ")";
}

// A sum of 70 names; a sum of 5,000, a product that has 4,900 terms, and one of 2^20, none of which
// is expanded.
const std::string small = sum("s", 70);
const std::string longSum = sum("n", 5000);
const std::string otherSum = sum("m", 5000);
const std::string product = "(" + sum("a", 70) + "*" + sum("b", 70) + ")";
const std::string otherProduct = "(" + sum("a", 70) + "*" + sum("c", 70) + ")";
const std::string pairs = [] {
    std::string text = "(1";
    for (int i = 0; i < 20; ++i) {
        text += "*" + sum("p" + std::to_string(i), 2);
    }
    return text + ")";
}();

// The last operand can be expanded, but not in a product with others.
const std::string pairsOfOperands[][2] = {{longSum, otherSum},   {longSum, otherProduct},
                                          {product, otherSum},   {product, otherProduct},
                                          {pairs, otherProduct}, {product, small}};

class EqualOperands : public ExpressionTest {
  protected:
    // Parses a text after replacing X and Y.
    unsigned long parseWith(const std::string (&operands)[2], const std::string& form) {
        std::string text;
        for (const char c : form) {
            text += c == 'X' || c == 'Y' ? operands[c - 'X'] : std::string(1, c);
        }
        return parse(text);
    }
};

TEST_F(EqualOperands, CancelOrCombine) {
    for (const auto& operands : pairsOfOperands) {
        for (const std::string row :
             {"X-X -> 0", "X/X -> 1", "(X+1)-1 -> X", "1+(X-1) -> X", "-1-(-X-1) -> X",
              "(X+Y)-X -> Y", "Y-X-Y -> -X", "(X+N+Y)-N-Y -> X", "X+0 -> X", "2*X-X-X -> 0",
              "2*X-X -> X", "2*X+3*X -> 5*X", "X*Y/X -> Y", "X*N/X -> N", "(X+1)/(X+1) -> 1",
              "X*0 -> 0", "3*(X-X)+N -> N", "X/(Y/Y) -> X", "[X-X,X/X] -> [0,1]"}) {
            const std::size_t arrow = row.find(" -> ");
            const unsigned long expected = simplify(parseWith(operands, row.substr(arrow + 4)));
            const unsigned long isCanonical = isSimplified;
            EXPECT_EQ(expected, simplify(parseWith(operands, row.substr(0, arrow))))
                << row << " with X = " << operands[0].substr(0, 20);
            EXPECT_EQ(isCanonical, isSimplified) << row;
        }
        // May be, or is, zero once expanded.
        for (const char* form : {"X/(X-X)", "1/(X-X)-1/(X-X)", "X/0", "[X]-[X]"}) {
            const unsigned long id = parseWith(operands, form);
            EXPECT_EQ(id, simplify(id)) << form;
            EXPECT_EQ(0u, isSimplified);
        }
    }
}

// A difference that is zero once expanded is no divisor that cancels.
TEST_F(EqualOperands, KeepDivisorsThatMayBeZero) {
    const std::string zero = "(" + product + "-" + sum("b", 70) + "*" + sum("a", 70) + ")";
    for (const std::string& text : {zero + "/" + zero, "1/" + zero + "-1/" + zero}) {
        const unsigned long id = parse(text);
        EXPECT_EQ(id, simplify(id));
        EXPECT_EQ(0u, isSimplified);
    }
    EXPECT_EQ("0", print(simplify(parse(zero + "-" + zero))));
}

// Where operands are combined, the others stay as and where they are.
TEST_F(EqualOperands, KeepTheRest) {
    const unsigned long first = parse("y"); // has the lowest id
    const unsigned long sum = apply('+', first, parse(longSum));
    const unsigned long factor = parse("N*2");
    const unsigned long nested = apply('-', sum, apply('*', factor, parse("M*3")));
    EXPECT_EQ(nested, simplify(apply('-', apply('+', nested, parse("z")), parse("z"))));
    const std::string text = print(simplify(apply('-', nested, parse("n17+2*n18-y"))));
    EXPECT_EQ(text.substr(0, 8), "2*y+(n0+");
    EXPECT_NE(text.find("+n16-n18+n19+"), text.npos) << text.substr(0, 200);
    EXPECT_EQ(text.substr(text.size() - 17), "+n4999)-N*2*(M*3)");
}

// Sums and differences of names are still zero when a name is replaced by an operand that cannot
// be expanded.
TEST_F(EqualOperands, AreTreatedAsNames) {
    std::mt19937 random(randomSeed(1));
    for (int i = 0; i < 200; ++i) {
        const auto& operands = pairsOfOperands[random() % std::size(pairsOfOperands)];
        std::vector<std::string> terms;
        for (int term = 0; term < 6; ++term) {
            const char* const names[] = {"X", "Y", "N", "3"};
            const std::string name = names[random() % std::size(names)];
            const bool isNegative = random() % 2 == 0;
            terms.push_back((isNegative ? "-" : "+") + name);
            terms.push_back((isNegative ? "+" : "-") + name);
        }
        std::shuffle(terms.begin(), terms.end(), random);
        std::string text = "0";
        for (const std::string& term : terms) {
            text = random() % 3 == 0 ? "(" + text + ")" + term : text + term;
        }
        EXPECT_EQ("0", print(simplify(parseWith(operands, text)))) << text;
    }
}

} // namespace
