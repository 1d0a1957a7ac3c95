/// \file
/// The tokens of an expression, brought into the order in which a table takes them.
#pragma once

#include <symbolicexpr/expr.h>

#include <boost/container/small_vector.hpp>

#include <cstdint>
#include <string_view>

namespace TV {

/// Is told of the tokens of an expression in their order. Where a token may not stand everywhere,
/// the answer says whether it may stand there; after a false answer the text is no expression,
/// whatever follows. Operands and operators alternate; this is the caller's concern.
///
/// Nothing comes to a table before all has been read. What waits for its last operand is kept here
/// and not on the stack of the host.
class ExpressionBuilder {
  public:
    static constexpr int maximumNesting = 1000;

    explicit ExpressionBuilder(std::string_view text) : text_(text) {}

    /// What stands before an operand: a minus, or a parenthesis or a bracket that opens.
    bool before(char token);
    /// What stands between two: an operator, or a comma.
    bool between(char token);
    /// What stands behind one: a parenthesis or a bracket that closes.
    bool behind(char token);
    /// A bracket that closes where an operand could stand, in an empty list.
    bool closeEmptyList();

    /// Both are views into the text. A minus straight before a number is part of it.
    void name(std::string_view name);
    void number(std::string_view digits);

    /// Whether the text may end, and all has been read.
    bool end();

    /// Puts what has been read into a table, parts first and from the left. The id of the whole.
    unsigned long enter(const SymbolicExprTable& table) const;

  private:
    enum class Waiting : std::uint8_t { group, list, plus, minus, multiply, divide, unaryMinus };

    struct Frame {
        Waiting kind;
        std::uint32_t entries; ///< of a list, those that have a comma behind them
    };

    /// An expression whose parts are the last ones before it that are no parts yet.
    struct Step {
        SymbolicOp op;
        bool isNegative;      ///< of a number
        std::uint32_t offset; ///< of a name or of digits in the text
        std::uint32_t size;   ///< of that text; of a list, how many entries it takes
    };

    /// Gives their last operand to what waits for it and binds as strongly as this, or more so.
    void complete(int rank);
    void addText(SymbolicOp op, bool isNegative, std::string_view text);
    bool isLast(Waiting kind) const;

    std::string_view text_;
    int depth_ = 0;
    boost::container::small_vector<Frame, 16> waiting_;
    boost::container::small_vector<Step, 32> steps_;
};

} // namespace TV
