/// \file
/// Conversion of an expression's tokens from infix to postfix order.
#pragma once

#include <symbolicexpr/expr.h>

#include <boost/container/small_vector.hpp>

#include <cstdint>
#include <string_view>

namespace TV {

/// Semantic actions of the grammar: operator precedence parsing with an operator stack
/// (shunting-yard algorithm). A false result rejects the token, and with it the text. The grammar
/// makes sure that operands and operators alternate.
///
/// The table is not changed until the whole text has been read. Pending operators are on a stack of
/// this object, not on the call stack.
class ExpressionBuilder {
  public:
    static constexpr int maximumNesting = 1000;

    explicit ExpressionBuilder(std::string_view text) : text_(text) {}

    /// Token before an operand: a minus, an opening parenthesis or an opening bracket.
    bool prefix(char token);
    /// Token between operands: an operator or a comma.
    bool infix(char token);
    /// Token after an operand: a closing parenthesis or bracket.
    bool postfix(char token);
    /// A closing bracket in place of an operand, as in an empty list.
    bool closeEmptyList();

    /// Operands, as views into the text. A minus directly before a number is part of the number.
    void name(std::string_view name);
    void number(std::string_view digits);

    /// End of the text. Returns false if a parenthesis or bracket is open.
    bool end();

    /// Interns the expression, operands before operators and from left to right. Returns its id.
    /// \pre end() has returned true.
    unsigned long intern(const SymbolicExprTable& table) const;

  private:
    enum class Pending : std::uint8_t { Group, List, Plus, Minus, Multiply, Divide, UnaryMinus };

    /// An entry of the operator stack.
    struct Frame {
        Pending kind;
        std::uint32_t entries; ///< for a list, the number of entries followed by a comma
    };

    /// An item of the postfix sequence.
    struct Step {
        SymbolicOp op;
        bool isNegative;      ///< for a number
        std::uint32_t offset; ///< for a name or number, the position in the text
        std::uint32_t
            size; ///< for a name or number, the length in the text; for a list, its entries
    };

    /// Moves operators of at least this precedence from the stack to the postfix sequence, up to
    /// the innermost open parenthesis or bracket.
    void reduce(int precedence);
    void addOperand(SymbolicOp op, bool isNegative, std::string_view text);
    bool isLast(Pending kind) const;

    std::string_view text_;
    int depth_ = 0;
    boost::container::small_vector<Frame, 16> pending_;
    boost::container::small_vector<Step, 32> steps_;
};

} // namespace TV
