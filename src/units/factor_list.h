/// \file
/// What has been read of a unit expression so far.
#pragma once

#include "units/wrapping_arithmetic.h"

#include <tvtypes/units/expression.h>

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace TVTypeSys {

/// The exponents behind a factor, and the sign of the operator ahead of it, taken together.
struct Exponent {
    std::int32_t product = 1;
    bool removes = false; ///< one of them was 0

    void multiply(int exponent) {
        product = wrappingProduct(product, exponent);
        removes = removes || exponent == 0;
    }
};

/// Each name as it was written, with its power. A group is the names from a position to the end.
class FactorList {
  public:
    std::size_t size() const { return factors_.size(); }

    /// Takes the name as a view into the text.
    void add(std::u16string_view name) { factors_.push_back({name, 1}); }

    /// Forgets the names from a position on.
    void truncate(std::size_t from) { factors_.resize(from); }

    /// Raises the names from a position on.
    void raise(std::size_t from, const Exponent& exponent);

    /// Puts equal names together, in order of first appearance.
    void merge(Monomial& result) const;

  private:
    struct Factor {
        std::u16string_view name;
        std::int32_t power;
    };
    std::vector<Factor> factors_;
};

} // namespace TVTypeSys
