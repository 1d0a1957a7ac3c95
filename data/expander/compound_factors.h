/// \file
/// Factors of compounds whose products exceed 32 bits.
#pragma once

#include "catalogue.h"

#include <functional>
#include <map>
#include <set>
#include <string>
#include <tuple>
#include <vector>

namespace tvdata {

/// Enumerates compounds and collects the factors of those that can overflow when the library
/// multiplies the factors of their units. Factors that differ by a power of ten are one: only the
/// exponents of such products differ.
class CompoundFactors {
  public:
    /// \param units must outlive this object and have all units
    explicit CompoundFactors(const Catalogue& units) : units_(units) {}

    /// Adds a class: a list of units and products of units, and the common units of some
    /// quantities. Throws Fault if it is invalid, as addCombination() does.
    void addClass(Record& record);
    /// Adds all compounds that have one member of each of some classes in the numerator, and one of
    /// each of others in the denominator.
    void addCombination(Record& record);

    /// Returns fractions that equal the factors up to a power of ten: "8009/5000". A factor of a
    /// database unit has the fraction of that unit.
    std::vector<std::string> fractions() const;

  private:
    /// A factor modulo powers of ten: rational * 2^twos * pi^piPower. The rational number has
    /// neither 2 nor 5 as a factor.
    struct Mantissa {
        Exact rational = 1;
        int twos = 0;
        int piPower = 0;

        friend bool operator<(const Mantissa& left, const Mantissa& right) {
            return std::tie(left.twos, left.piPower, left.rational) <
                   std::tie(right.twos, right.piPower, right.rational);
        }
    };
    /// Upper bounds of the numerators and denominators that the library computes for a factor.
    struct Bounds {
        double numerator = 1;
        double denominator = 1;
    };
    using Factors = std::map<Mantissa, Bounds>;

    static Mantissa mantissa(const Number& number);
    static Factors product(const Factors& left, const Factors& right, int power);
    static void addLarger(Factors& factors, const Factors& added);
    static std::string fraction(const Mantissa& mantissa);
    const Unit& scaledUnit(const std::string& key) const;
    Factors factorsOf(const std::string& expression) const;
    Factors productOfClasses(const std::vector<std::string>& classes) const;

    const Catalogue& units_;
    std::map<std::string, Factors, std::less<>> classes_;
    std::set<Mantissa> overflowing_;
};

} // namespace tvdata
