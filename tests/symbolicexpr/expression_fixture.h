// Fixture with a table of expressions.
#pragma once

#include "support/errors.h"

#include <symbolicexpr/expr.h>
#include <symbolicexpr/parser.h>
#include <symbolicexpr/printer.h>
#include <symbolicexpr/simplify.h>

#include <gtest/gtest.h>

#include <string>

inline std::string repeated(const std::string& text, std::size_t count) {
    std::string all;
    for (std::size_t i = 0; i < count; ++i) {
        all += text;
    }
    return all;
}

class ExpressionTest : public testing::Test {
  protected:
    unsigned long parse(const std::string& text) { return TV::SymbolicExprParser(table)(text); }

    unsigned long name(const std::string& text) {
        return TV::SymbolicString(table, text).getId(table);
    }

    // The result of one of + - * / or, of the left operand alone, of the unary minus, ~.
    unsigned long apply(char op, unsigned long left, unsigned long right = 0) {
        switch (op) {
        case '+':
            return TV::SymbolicPlusExpr(table, left, right).getId(table);
        case '-':
            return TV::SymbolicMinusExpr(table, left, right).getId(table);
        case '*':
            return TV::SymbolicMultiplyExpr(table, left, right).getId(table);
        case '/':
            return TV::SymbolicDivideExpr(table, left, right).getId(table);
        default:
            return TV::SymbolicUnaryMinusExpr(table, left).getId(table);
        }
    }

    // Sets isSimplified. The result must be its own simplified form.
    unsigned long simplify(unsigned long id) {
        const unsigned long simplified = TV::SymbolicExprSimplify(table).simplify(id, isSimplified);
        unsigned long again = 0;
        EXPECT_EQ(simplified, TV::SymbolicExprSimplify(table).simplify(simplified, again));
        EXPECT_EQ(isSimplified, again);
        return simplified;
    }

    std::string print(unsigned long id, int rank = 0) const {
        return TV::SymbolicExprPrinter(table, rank)(table.get(id));
    }

    // Returns the structure in prefix notation: "(+ N (* 2 M))".
    std::string tree(unsigned long id) const { return tree(table, id); }
    static std::string tree(const TV::SymbolicExprTable& table, unsigned long id) {
        const char* const operators[] = {"", "", "-", "+", "-", "*", "/", "==", ">"};
        const TV::SymbolicExpr& expr = table.get(id);
        if (expr.op() == TV::SymbolicNameOp) {
            return static_cast<const TV::SymbolicString&>(expr).text();
        }
        if (expr.isNumValue()) {
            return static_cast<const TV::SymbolicIntValue&>(expr).text();
        }
        std::string text = expr.isMultiExpr() ? "[" : std::string("(") + operators[expr.op()];
        for (unsigned long i = 0; i < expr.getNumArgs(); ++i) {
            text += " " + tree(table, expr.getArg(i));
        }
        for (unsigned long i = 0; i < expr.getNumInputs(); ++i) {
            text += (i == 0 ? "" : " ") + tree(table, expr.getInput(i));
        }
        return text + (expr.isMultiExpr() ? "]" : ")");
    }

    TV::SymbolicExprTable table;
    unsigned long isSimplified = 0;
};
