#include "compound_factors.h"

#include "fault.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <limits>

namespace tvdata {

void CompoundFactors::addClass(Record& record) {
    const std::string name = record.text("name");
    std::vector<std::string> members = record.list("units");
    for (const std::string& quantity : record.list("common_units_of")) {
        const auto found = std::ranges::find(units_.quantities(), quantity, &Quantity::name);
        if (found == units_.quantities().end()) {
            throw Fault(fmt::format("unknown quantity \"{}\"", quantity));
        }
        members.insert(members.end(), found->commonUnits.begin(), found->commonUnits.end());
    }
    record.finish();
    Factors factors;
    for (const std::string& member : members) {
        addLarger(factors, factorsOf(member));
    }
    if (!classes_.emplace(name, std::move(factors)).second) {
        throw Fault("the class is already defined");
    }
}

void CompoundFactors::addCombination(Record& record) {
    const Factors over = productOfClasses(record.list("over"));
    const Factors under = productOfClasses(record.list("under"));
    record.finish();
    // A product of classes can be a power, as ft*ft, of which a unit such as ft2 has larger parts.
    constexpr double margin = 32;
    constexpr double largestPart = std::numeric_limits<std::int32_t>::max() / margin;
    for (const auto& [mantissa, bounds] : product(over, under, -1)) {
        if (std::max(bounds.numerator, bounds.denominator) > largestPart) {
            overflowing_.insert(mantissa);
        }
    }
}

std::vector<std::string> CompoundFactors::fractions() const {
    std::map<Mantissa, std::string> ofUnits;
    for (const Unit& unit : units_.units()) {
        if (!unit.isMultiple) {
            ofUnits.emplace(mantissa(unit.factor),
                            fmt::format("{}/{}", unit.scaling.numerator, unit.scaling.denominator));
        }
    }
    std::vector<std::string> texts;
    for (const Mantissa& factor : overflowing_) {
        const auto unit = ofUnits.find(factor);
        texts.push_back(unit == ofUnits.end() ? fraction(factor) : unit->second);
    }
    return texts;
}

CompoundFactors::Mantissa CompoundFactors::mantissa(const Number& number) {
    Integer top = numerator(number.rational);
    Integer bottom = denominator(number.rational);
    const int twos = divideOut(top, 2) - divideOut(bottom, 2);
    const int fives = divideOut(top, 5) - divideOut(bottom, 5);
    return {Exact(top, bottom), twos - fives, number.piPower};
}

/// Returns all products of a left factor and a power of a right one, 1 or -1.
CompoundFactors::Factors CompoundFactors::product(const Factors& left, const Factors& right,
                                                  int power) {
    Factors products;
    for (const auto& [first, firstBounds] : left) {
        for (const auto& [second, secondBounds] : right) {
            const bool inverts = power < 0;
            Bounds& bounds = products[{
                inverts ? first.rational / second.rational : first.rational * second.rational,
                first.twos + power * second.twos, first.piPower + power * second.piPower}];
            const auto [numerator, denominator] =
                inverts ? Bounds{secondBounds.denominator, secondBounds.numerator} : secondBounds;
            bounds.numerator = std::max(bounds.numerator, firstBounds.numerator * numerator);
            bounds.denominator =
                std::max(bounds.denominator, firstBounds.denominator * denominator);
        }
    }
    return products;
}

std::string CompoundFactors::fraction(const Mantissa& mantissa) {
    const Exact value =
        Number{mantissa.rational * raised(Exact(2), mantissa.twos), mantissa.piPower}.value();
    const Form form = shortForm(value * raised(Exact(10), -magnitude(value)));
    return fmt::format("{}/{}", form.numerator, form.denominator);
}

/// Adds factors; of equal ones the bounds become the larger ones.
void CompoundFactors::addLarger(Factors& factors, const Factors& added) {
    for (const auto& [mantissa, bounds] : added) {
        Bounds& largest = factors[mantissa];
        largest.numerator = std::max(largest.numerator, bounds.numerator);
        largest.denominator = std::max(largest.denominator, bounds.denominator);
    }
}

/// Returns the unit whose scaling has the parts of the factor of a unit: prefixes add a power of
/// ten.
const Unit& CompoundFactors::scaledUnit(const std::string& key) const {
    const Unit* const unit = units_.findUnit(key);
    if (unit == nullptr) {
        throw Fault(fmt::format("the unit \"{}\" is not defined", key));
    }
    return unit->isMultiple ? scaledUnit(unit->expression) : *unit;
}

/// Returns the factor of one expression. A power may also be written as one unit, ft^2 as ft2,
/// whose scaling can have other parts.
CompoundFactors::Factors CompoundFactors::factorsOf(const std::string& expression) const {
    const auto factorOf = [](const Unit& unit) {
        return Factors{{mantissa(unit.factor),
                        {static_cast<double>(unit.scaling.numerator),
                         static_cast<double>(unit.scaling.denominator)}}};
    };
    Factors factors{{Mantissa(), Bounds()}};
    for (const auto& [key, power] : parseExpression(expression)) {
        const int size = std::abs(power);
        Factors factor{{Mantissa(), Bounds()}};
        for (int i = 0; i < size; ++i) {
            factor = product(factor, factorOf(scaledUnit(key)), 1);
        }
        const std::string whole = fmt::format("{}{}", key, size);
        if (units_.findUnit(whole) != nullptr) {
            addLarger(factor, factorOf(scaledUnit(whole)));
        }
        factors = product(factors, factor, power < 0 ? -1 : 1);
    }
    return factors;
}

CompoundFactors::Factors
CompoundFactors::productOfClasses(const std::vector<std::string>& classes) const {
    Factors factors{{Mantissa(), Bounds()}};
    for (const std::string& name : classes) {
        const auto found = classes_.find(name);
        factors = product(factors, found == classes_.end() ? factorsOf(name) : found->second, 1);
    }
    return factors;
}

} // namespace tvdata
