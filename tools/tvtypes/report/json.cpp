// The report of an inspection as JSON. Long lists are printed as they are computed: their document
// tree would take several times the memory of the description.
#include "findings/json.h"
#include "dims/fact_columns.h"
#include "output/columns.h"
#include "report/inspection.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace tvtool::report {

namespace {

namespace json = boost::json;
using findings::Severity;
using output::Columns;
using output::jsonValue;
using output::none;

json::array aliasNames(const VariableRow& row) {
    json::array names;
    for (const fmi::Alias& alias : row.aliases()) {
        names.emplace_back(alias.name);
    }
    return names;
}

const Columns<VariableRow> jsonVariableColumns{
    {none, "name", &VariableRow::name},
    {none, "causality", &VariableRow::causality},
    {none, "variability", &VariableRow::variability},
    {none, "initial", &VariableRow::initial},
    {none, "type", &VariableRow::type},
    {none, "baseType", &VariableRow::baseType},
    {none, "unit", &VariableRow::unit},
    {none, "displayUnit", &VariableRow::displayUnit},
    {none, "dimensions", &VariableRow::dimensions},
    {none, "start", &VariableRow::start},
    {none, "min", &VariableRow::min},
    {none, "max", &VariableRow::max},
    {none, "nominal", &VariableRow::nominal},
    {none, "description", &VariableRow::description},
    {none, "line", [](const VariableRow& row) { return row.record().place.line; }},
    {none, "aliases", aliasNames},
};

const Columns<exchange::Item> itemColumns{
    {none, "name", &exchange::Item::name},
    {none, "value", &exchange::Item::value},
};

const Columns<TypeRow> typeColumns{
    {none, "id", &TypeRow::id},
    {none, "name", &TypeRow::name},
    {none, "originalName", &TypeRow::originalName},
    {none, "kind", &TypeRow::kind},
    {none, "size", &TypeRow::size},
    {none, "storage", &TypeRow::storage},
    {none, "aliasOf", &TypeRow::aliasOf},
    {none, "elements", &TypeRow::elements},
    {none, "leaves", &TypeRow::leaves},
    {none, "variables", &TypeRow::variables},
};

const Columns<OutsideRow> outsideColumns{
    {none, "baseType", &OutsideRow::baseType},
    {none, "variables", &OutsideRow::variables},
    {none, "types", &OutsideRow::types},
};

const Columns<exchange::DisplayUnit> displayUnitColumns{
    {none, "name", &exchange::DisplayUnit::name},
    {none, "factor", &exchange::DisplayUnit::factor},
    {none, "offset", &exchange::DisplayUnit::offset},
    {none, "inverse", &exchange::DisplayUnit::isInverse},
};

const Columns<UnitRow> unitColumns{
    {none, "name", [](const UnitRow& row) { return json::value(row.definition->name); }},
    {none, "id", &UnitRow::id},
    {none, "expression", &UnitRow::expression},
    {none, "from", &UnitRow::source},
    {none, "baseUnits", &UnitRow::baseUnits},
    {none, "displayUnits",
     [](const UnitRow& row) {
         return output::jsonArray(row.definition->displayUnits, displayUnitColumns);
     }},
};

const Columns<DimensionRow> dimensionColumns{
    {none, "id", &DimensionRow::id},
    {none, "text", &DimensionRow::text},
};

class JsonReport {
  public:
    JsonReport(const Inspection& inspection, std::ostream& os) : inspection_(inspection), os_(os) {}

    void print() {
        const fmi::Description& description = inspection_.description();
        const Variables& variables = inspection_.variables;
        printOpen(output::envelope("inspect",
                                   {{"file", inspection_.file},
                                    {"fmiVersion", description.fmiVersion},
                                    {"modelName", description.modelName},
                                    {"counts",
                                     {{"variables", description.variables.size()},
                                      {"inputs", variables.count(Section::Inputs)},
                                      {"outputs", variables.count(Section::Outputs)},
                                      {"parameters", variables.count(Section::Parameters)}}}}));
        printVariables();
        printList("types", inspection_.types, [this](const TypeRow& row) { printType(row); });
        printMember("outside", output::jsonArray(inspection_.outside, outsideColumns));
        printList("units", inspection_.units, [this](const UnitRow& row) {
            printOpen(output::jsonObject(row, unitColumns));
            printNames("variables", row.users);
            os_ << '}';
        });
        printList("dimensions", inspection_.dimensions, [this](const DimensionRow& row) {
            printOpen(output::jsonObject(row, dimensionColumns));
            printNames("variables", row.users);
            os_ << '}';
        });
        printMember("facts", output::jsonArray(inspection_.facts, dims::factColumns));
        const findings::Findings& found = inspection_.model.findings;
        os_ << ",\"findings\":";
        findings::printJson(found.all(), inspection_.file, os_);
        printMember("errors", found.count(Severity::Error));
        printMember("warnings", found.count(Severity::Warning));
        printMember("notes", found.count(Severity::Note));
        os_ << "}\n";
    }

  private:
    /// Prints an object without its closing brace.
    void printOpen(const json::object& object) {
        std::string text = output::jsonText(object);
        text.pop_back();
        os_ << text;
    }

    void printMember(const char* name, const json::value& value) {
        os_ << ",\"" << name << "\":" << output::jsonText(value);
    }

    /// Prints a member with a list, and each of its rows by the function.
    template <class Rows, class PrintRow>
    void printList(const char* name, const Rows& rows, PrintRow printRow) {
        os_ << ",\"" << name << "\":[";
        for (std::size_t i = 0; i < rows.size(); ++i) {
            os_ << (i > 0 ? "," : "");
            printRow(rows[i]);
        }
        os_ << ']';
    }

    void printText(std::string_view text) {
        buffer_.clear();
        output::appendJsonValue(text, buffer_);
        os_ << (text.empty() ? "\"\"" : buffer_);
    }

    void printNames(const char* name, const std::vector<std::uint32_t>& variables) {
        printList(name, variables, [this](std::uint32_t variable) {
            printText(inspection_.variableName(variable));
        });
    }

    void printVariables() {
        const std::vector<std::uint32_t> listed = inspection_.variables.listed();
        printList("variables", VariableRows(inspection_.variables, listed),
                  [this](const VariableRow& row) {
                      buffer_.clear();
                      output::appendJsonObject(row, jsonVariableColumns, buffer_);
                      os_ << buffer_;
                  });
    }

    void printType(const TypeRow& row) {
        static const fmi::TypeDefinition undeclared;
        const fmi::TypeDefinition& type = row.definition == nullptr ? undeclared : *row.definition;
        json::object object = output::jsonObject(row, typeColumns);
        const std::string_view unit = type.unitUse == exchange::noIndex
                                          ? std::string_view()
                                          : inspection_.description().unitUses[type.unitUse].unit;
        object.emplace("items", output::jsonArray(type.items, itemColumns));
        object.emplace("unit", jsonValue(unit));
        object.emplace("min", jsonValue(type.min));
        object.emplace("max", jsonValue(type.max));
        object.emplace("description", jsonValue(type.description));
        printOpen(object);
        printList("usedBy", row.users,
                  [&](std::uint32_t user) { printText(inspection_.userName(row, user)); });
        os_ << '}';
    }

    const Inspection& inspection_;
    std::ostream& os_;
    std::string buffer_;
};

} // namespace

void printJson(const Inspection& inspection, std::ostream& os) {
    JsonReport(inspection, os).print();
}

} // namespace tvtool::report
