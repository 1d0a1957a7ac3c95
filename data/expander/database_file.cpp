#include "database_file.h"

#include <boost/json/serialize.hpp>
#include <boost/json/value.hpp>
#include <fmt/format.h>
#include <fmt/ranges.h>

namespace tvdata {

namespace {

void addForm(boost::json::object& record, std::string_view what, const Form& form) {
    record[fmt::format("NumeratorOf{}", what)] = form.numerator;
    record[fmt::format("DenominatorOf{}", what)] = form.denominator;
    record[fmt::format("Base10ExponentOf{}", what)] = form.exponent;
}

/// Whether the scaling of a unit does not represent its factor exactly.
bool hasDefinition(const Unit& unit) {
    const Number& factor = unit.factor;
    return !unit.isMultiple && (factor.uncertainty != 0 || factor.piPower != 0 ||
                                valueOf(unit.scaling) != factor.rational);
}

boost::json::object definitionOf(const Unit& unit) {
    boost::json::object record{{"Name", unit.name}, {"Exact", formatExact(unit.factor)}};
    if (unit.factor.uncertainty != 0) {
        record["Uncertainty"] = fmt::format("{:.1e}", static_cast<double>(unit.factor.uncertainty));
    }
    return record;
}

boost::json::object commonUnitsOf(const Quantity& quantity) {
    return {{"Name", quantity.name},
            {"Common", fmt::format("{}", fmt::join(quantity.commonUnits, ","))}};
}

boost::json::object toRecord(const std::string& system) { return {{"Name", system}}; }

boost::json::object toRecord(const Quantity& quantity) {
    boost::json::object record{{"Name", quantity.name}, {"Expression", quantity.expression}};
    addForm(record, "Scaling", {1, 1, 0});
    addForm(record, "Offset", {});
    return record;
}

boost::json::object toRecord(const Unit& unit) {
    boost::json::object record{{"Name", unit.name},
                               {"Symbol", unit.symbol},
                               {"Expression", unit.expression},
                               {"Alias", fmt::format("{}", fmt::join(unit.aliases, ","))},
                               {"Display", unit.display},
                               {"UnitSystem", unit.systems},
                               {"AbstractUnit", unit.quantity}};
    addForm(record, "Scaling", unit.scaling);
    addForm(record, "Offset", unit.offset);
    return record;
}

/// Returns a variable of the records of all elements that `isIncluded`.
template <class Elements, class Included, class Conversion>
std::string formatVariable(std::string_view name, const Elements& elements,
                           const Included& isIncluded, const Conversion& convert) {
    std::string text = fmt::format("\"{}\": [", name);
    std::string_view separator = "\n";
    for (const auto& element : elements) {
        if (isIncluded(element)) {
            text += separator;
            text += boost::json::serialize(convert(element));
            separator = ",\n";
        }
    }
    return text + "\n]";
}

template <class Elements>
std::string formatVariable(std::string_view name, const Elements& elements) {
    return formatVariable(
        name, elements, [](const auto&) { return true; },
        [](const auto& element) { return toRecord(element); });
}

} // namespace

std::string databaseText(const Catalogue& catalogue, const CompoundFactors& compounds) {
    return fmt::format("{{\n{},\n{},\n{},\n\"compounds\": [\n{{\"Factors\":\"{}\"}}\n]\n}}\n",
                       formatVariable("unitSystems", catalogue.systems()),
                       formatVariable("abstractUnits", catalogue.quantities()),
                       formatVariable("units", catalogue.units()),
                       fmt::join(compounds.fractions(), " "));
}

std::string definitionsText(const Catalogue& catalogue) {
    return fmt::format(
        "{{\n\"database\": [\n{{\"Units\":{}}}\n],\n{},\n{}\n}}\n", catalogue.units().size(),
        formatVariable(
            "quantities", catalogue.quantities(),
            [](const Quantity& quantity) { return !quantity.commonUnits.empty(); }, commonUnitsOf),
        formatVariable("units", catalogue.units(), hasDefinition, definitionOf));
}

} // namespace tvdata
