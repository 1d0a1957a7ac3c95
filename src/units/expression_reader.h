/// \file
/// What the texts of a unit expression mean where they stand.
#pragma once

#include "units/factor_list.h"

#include <string_view>
#include <vector>

namespace TVTypeSys {

/// Is told of the parts of an expression in their order, and says whether each may stand there.
/// Operands and operators alternate; this is the caller's concern. After a false answer the text
/// is no expression, whatever follows.
///
/// Nesting is kept here and not on the stack of the host.
class ExpressionReader {
  public:
    static constexpr int maximumNesting = 1000;

    ExpressionReader() : levels_(1) {}

    /// How many parentheses are open.
    int depth() const { return static_cast<int>(levels_.size()) - 1; }

    bool open();
    bool close();

    /// A name, as a view into the text. A whole number is one too, but a place holder where it
    /// stands alone ahead of the first operator of its level, and this is a division.
    bool name(std::u16string_view name);

    /// A number with a sign, which can only be a place holder.
    bool signedNumber();

    bool power(int exponent);
    bool multiply() { return operate(1); }
    bool divide() { return operate(-1); }

    /// Whether the text may end, and all has been read.
    bool end();

    const FactorList& factors() const { return factors_; }

  private:
    enum class Operand { unit, unsignedNumber, signedNumber };

    /// What a pair of parentheses encloses, or the whole text.
    struct Level {
        std::size_t factor = 0; ///< where the factor at hand begins in the list
        Exponent exponent;      ///< of this factor
        Operand operand = Operand::unit;
        bool first = true; ///< no operator has been read yet
        /// A group stands first. It is all that this level may hold, unless it is a number.
        bool isGroupAlone = false;
    };

    bool operate(int sign);

    std::vector<Level> levels_;
    FactorList factors_;
};

} // namespace TVTypeSys
