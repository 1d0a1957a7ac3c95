/// \file
/// Listed factors of products of units.
#pragma once

#include <tvtypes/units/rational.h>

#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace TVTypeSys {

/// Factors that a database file lists for products of units whose parts exceed 32 bits when they
/// are multiplied. They are fractions; equal factors that differ by a power of ten are one entry.
///
/// The list is parsed by the first search, since most programs have no such product. Searches may
/// run in several threads while nothing is added.
class CompoundFactors {
  public:
    /// Appends fractions such as "8009/5000", separated by blanks. Those whose parts are not
    /// positive integers within 32 bits are ignored.
    void add(std::u16string fractions);

    void clear() noexcept;

    /// Returns the listed fraction, times a power of ten, that equals value * 10^exponent within a
    /// relative difference of 1e-11; the nearest one if there are several. Logarithmic in their
    /// number.
    /// \param exponent an integer, which may be out of the range of int; then nothing is found
    std::optional<Rational> find(double value, double exponent) const;

  private:
    struct Entry {
        double mantissa; ///< of the fraction: in [1, 10), but for rounding
        int numerator;
        int denominator;
    };

    void parse() const;

    mutable std::mutex parsing_;
    mutable std::u16string unparsed_;
    mutable std::vector<Entry> entries_; ///< by mantissa
};

} // namespace TVTypeSys
