/// \file
/// Factors of a unit expression during parsing.
#pragma once

#include "units/wrapping_arithmetic.h"

#include <tvtypes/units/expression.h>

#include <boost/container/small_vector.hpp>

#include <cassert>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace TVTypeSys {

/// Product of the exponents after a factor and the sign of the operator before it.
struct Exponent {
    std::int32_t product = 1;
    bool removes = false; ///< whether one of them is 0; the factor is removed then

    void multiply(int exponent) {
        product = wrappingProduct(product, exponent);
        removes = removes || exponent == 0;
    }
};

/// The names in the order of the text, each with its power. A group is the names from a position to
/// the end.
class FactorList {
  public:
    std::size_t size() const { return factors_.size(); }

    /// Appends a name with the power 1. \pre The view stays valid.
    void add(std::u16string_view name) { factors_.push_back({name, 1}); }

    /// Removes the names from a position on. \pre `from` is at most size().
    void truncate(std::size_t from) {
        assert(from <= factors_.size());
        factors_.resize(from);
    }

    /// Raises the names from a position on to a power.
    void raise(std::size_t from, const Exponent& exponent);

    /// Sums the powers of equal names, in order of first appearance.
    void merge(Monomial& result) const;

  private:
    struct Factor {
        std::u16string_view name;
        std::int32_t power;
    };
    boost::container::small_vector<Factor, 8> factors_;
};

} // namespace TVTypeSys
