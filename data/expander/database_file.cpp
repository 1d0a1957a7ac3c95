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

/// Adds the definition of a factor that the scaling does not represent exactly.
void addDefinition(boost::json::object& record, const Unit& unit) {
    const Number& factor = unit.factor;
    const bool isMeasured = factor.uncertainty != 0;
    if (unit.isMultiple ||
        (!isMeasured && factor.piPower == 0 && valueOf(unit.scaling) == factor.rational)) {
        return;
    }
    record["Exact"] = formatExact(factor);
    if (isMeasured) {
        record["Uncertainty"] = fmt::format("{:.1e}", static_cast<double>(factor.uncertainty));
    }
}

boost::json::object toRecord(const std::string& system) { return {{"Name", system}}; }

boost::json::object toRecord(const Quantity& quantity) {
    boost::json::object record{{"Name", quantity.name}, {"Expression", quantity.expression}};
    addForm(record, "Scaling", {1, 1, 0});
    addForm(record, "Offset", {});
    if (!quantity.commonUnits.empty()) {
        record["Common"] = fmt::format("{}", fmt::join(quantity.commonUnits, ","));
    }
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
    addDefinition(record, unit);
    return record;
}

template <class Records>
std::string formatVariable(std::string_view name, const Records& records) {
    std::string text = fmt::format("\"{}\": [", name);
    std::string_view separator = "\n";
    for (const auto& record : records) {
        text += separator;
        text += boost::json::serialize(toRecord(record));
        separator = ",\n";
    }
    return text + "\n]";
}

} // namespace

std::string databaseText(const Catalogue& catalogue, const CompoundFactors& compounds) {
    return fmt::format("{{\n{},\n{},\n{},\n\"compounds\": [\n{{\"Factors\":\"{}\"}}\n]\n}}\n",
                       formatVariable("unitSystems", catalogue.systems()),
                       formatVariable("abstractUnits", catalogue.quantities()),
                       formatVariable("units", catalogue.units()),
                       fmt::join(compounds.fractions(), " "));
}

} // namespace tvdata
