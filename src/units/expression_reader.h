/// \file
/// Semantic actions of the unit grammar.
#pragma once

#include "units/factor_list.h"

#include <boost/container/small_vector.hpp>

#include <string_view>

namespace TVTypeSys {

/// Semantic actions of the grammar, called for each token in order. A false result rejects the
/// token, and with it the text. The grammar makes sure that operands and operators alternate.
///
/// Open parentheses are on a stack of this object, not on the call stack.
class ExpressionReader {
  public:
    static constexpr int maximumNesting = 1000;

    ExpressionReader() : levels_(1) {}

    /// Returns the number of open parentheses.
    int depth() const { return static_cast<int>(levels_.size()) - 1; }

    bool open();
    bool close();

    /// A name, as a view into the text. An integer is a name too, except for a placeholder: it is
    /// the first operand of its level, and the operator after it is a division.
    bool name(std::u16string_view name);

    /// An integer with a sign, which is valid only as a placeholder.
    bool signedNumber();

    bool power(int exponent);
    bool multiply() { return operate(1); }
    bool divide() { return operate(-1); }

    /// End of the text. Completes factors().
    bool end();

    const FactorList& factors() const { return factors_; }

  private:
    enum class Operand { Unit, UnsignedNumber, SignedNumber };

    /// The inside of a pair of parentheses, or the whole text.
    struct Level {
        std::size_t factor = 0; ///< position of the current factor in the list
        Exponent exponent;      ///< of the current factor
        Operand operand = Operand::Unit;
        bool first = true; ///< no operator has been read yet
        /// The first operand is a group. The level must not contain more, unless it is a number.
        bool isGroupAlone = false;
    };

    bool operate(int sign);

    boost::container::small_vector<Level, 4> levels_;
    FactorList factors_;
};

} // namespace TVTypeSys
