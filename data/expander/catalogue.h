/// \file
/// Definitions of the sources: expanded, checked and in order.
#pragma once

#include "definition.h"
#include "form.h"
#include "record.h"

#include <map>
#include <set>
#include <string>
#include <vector>

namespace tvdata {

struct Quantity {
    std::string name;
    std::string expression;
    /// Symbols of the units in common use, the coherent unit of the SI first.
    std::vector<std::string> commonUnits;
    /// Powers by name of the base quantity, without powers of 0.
    Powers dimension;
};

struct Unit {
    std::string name;
    std::string symbol;
    std::string quantity;
    std::string systems;
    std::string expression;
    std::string display;
    std::vector<std::string> aliases;
    Form scaling;
    Form offset;
    /// Factor to the base units as defined, whether or not it has an exact form.
    Number factor;
    /// `expression` is the unit without the prefix, and `scaling` is that of the prefix.
    bool isMultiple = false;
    /// Expression with the factor 1 to the base units and the same dimension.
    std::string coherent;
    /// Powers by symbol of the base unit, as the library computes them: a unit that cancels has
    /// power 0.
    Powers dimension;
};

/// Systems, prefixes, quantities and units. Adding a record throws Fault if it is
/// invalid or contradicts an earlier one.
class Catalogue {
  public:
    void addSystem(Record& record);
    void addPrefix(Record& record);
    void addQuantity(Record& record);
    /// Adds the unit and its prefixed forms.
    void addUnit(Record& record);
    /// Throws Fault if the common units of a quantity are not units of it.
    void checkCommonUnits() const;

    const std::vector<std::string>& systems() const { return systems_; }
    const std::vector<Quantity>& quantities() const { return quantities_; }
    const std::vector<Unit>& units() const { return units_; }
    /// Returns the unit of which `key` is the name, the symbol or an alias; null if there is none.
    /// Valid until a unit is added.
    const Unit* findUnit(std::string_view key) const;

  private:
    struct Prefix {
        std::string name;
        std::string symbol;
        std::string display;
        std::vector<std::string> signs;
        std::vector<std::string> sets;
        Exact factor;
    };
    struct UnitSource;

    bool isSelected(const Prefix& prefix, const UnitSource& source) const;
    Powers dimensionOfQuantity(const Powers& terms) const;
    Powers dimensionOfUnits(const Powers& terms) const;
    std::string coherentExpression(const std::string& expression) const;
    void define(Unit& unit, const UnitSource& source) const;
    Unit prefixed(const Unit& unit, const Prefix& prefix, const UnitSource& source) const;
    void check(const Unit& unit, bool cancels) const;
    void add(Unit unit, bool cancels);

    std::vector<std::string> systems_;
    std::vector<Prefix> prefixes_;
    std::vector<Quantity> quantities_;
    std::map<std::string, std::size_t, std::less<>> quantityByName_;
    std::vector<Unit> units_;
    /// Index by name, symbol and alias.
    std::map<std::string, std::size_t, std::less<>> unitByKey_;
};

} // namespace tvdata
