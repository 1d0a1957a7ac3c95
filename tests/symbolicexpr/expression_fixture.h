// Fixture with a table of expressions.
#pragma once

#include "support/errors.h"

#include <symbolicexpr/expr.h>
#include <symbolicexpr/parser.h>
#include <symbolicexpr/printer.h>

#include <gtest/gtest.h>

#include <string>

class ExpressionTest : public testing::Test {
  protected:
    unsigned long parse(const std::string& text) { return TV::SymbolicExprParser(table)(text); }

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
};
