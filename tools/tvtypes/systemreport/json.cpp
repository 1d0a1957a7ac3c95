// The report of a system as JSON. Long lists are printed as they are computed.
#include "findings/json.h"
#include "dims/fact_columns.h"
#include "output/columns.h"
#include "systemreport/report.h"

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace tvtool::systemreport {

namespace {

namespace json = boost::json;
using findings::Severity;
using output::Columns;
using output::jsonValue;
using output::none;
using systems::ConnectionRow;
using systems::ElementRow;
using systems::End;
using systems::ParameterRow;
using systems::StructRow;

const char* elementKindName(ssp::ElementKind kind) {
    constexpr const char* names[] = {"system", "component", "dictionary"};
    return names[static_cast<std::size_t>(kind)];
}

const fmi::Description* modelOf(const ElementRow& row) {
    return row.element->model == nullptr ? nullptr : row.element->model->description.get();
}

const Columns<ElementRow> elementColumns{
    {none, "name", &ElementRow::path},
    {none, "kind", [](const ElementRow& row) { return elementKindName(row.element->kind); }},
    {none, "source",
     [](const ElementRow& row) { return row.element->source.value_or(std::string_view()); }},
    {none, "model",
     [](const ElementRow& row) {
         const fmi::Description* const model = modelOf(row);
         return model == nullptr ? std::string_view() : model->modelName;
     }},
    {none, "fmiVersion",
     [](const ElementRow& row) {
         const fmi::Description* const model = modelOf(row);
         return model == nullptr ? std::string_view() : model->fmiVersion;
     }},
    {none, "file",
     [](const ElementRow& row) { return std::string_view(row.element->file->file.path); }},
    {none, "line", [](const ElementRow& row) { return row.element->place.line; }},
};

json::object endObject(const End& end) {
    json::value indices;
    if (end.indices != nullptr) {
        indices = json::value_from(*end.indices);
    }
    return {
        {"element", jsonValue(end.elementName)},
        {"connector", end.connectorName},
        {"indices", std::move(indices)},
        {"kind", jsonValue(ssp::kindName(end.kind))},
        {"type", end.base == exchange::BaseType::Enumeration ? json::value("Enumeration")
                                                             : jsonValue(end.typeName)},
        {"enumeration", end.base == exchange::BaseType::Enumeration && end.typeName != "Enumeration"
                            ? jsonValue(end.typeName)
                            : json::value(nullptr)},
        {"unit", jsonValue(end.unit)},
        {"dimensions", jsonValue(end.dimensionText)}};
}

json::array codeNames(const std::vector<findings::Code>& codes) {
    json::array names;
    for (const findings::Code code : codes) {
        names.emplace_back(findings::ruleOf(code).name);
    }
    return names;
}

json::array effectNames(const ConnectionRow& row) {
    json::array names;
    for (const systems::Effect effect : row.effects) {
        names.emplace_back(systems::effectName(effect));
    }
    return names;
}

const Columns<StructRow> jsonStructColumns{
    {none, "source", &StructRow::source},       {none, "target", &StructRow::target},
    {none, "connected", &StructRow::connected}, {none, "elements", &StructRow::elements},
    {none, "sameType", &StructRow::isSameType},
};

class JsonReport {
  public:
    JsonReport(const Report& report, std::ostream& os)
        : report_(report), checked_(report.checked), os_(os) {
        for (const ElementRow& row : checked_.elements) {
            paths_.emplace(row.element, &row.path);
        }
    }

    void print() {
        const ssp::SystemFile& system = checked_.package->systems.front();
        const systems::Counts& counts = checked_.counts;
        std::string text =
            output::jsonText(output::envelope("check", {{"file", report_.file},
                                                        {"name", jsonValue(system.name)},
                                                        {"version", jsonValue(system.version)},
                                                        {"counts",
                                                         {{"systems", counts.systems},
                                                          {"components", counts.components},
                                                          {"connectors", counts.connectors},
                                                          {"connections", counts.connections},
                                                          {"parameters", counts.parameters}}}}));
        text.pop_back();
        os_ << text;
        printList("components", checked_.elements, [](const ElementRow& row) {
            return output::jsonText(output::jsonObject(row, elementColumns));
        });
        printList("connections", checked_.connections, [this](const ConnectionRow& row) {
            return isListed(row, report_.options.connections)
                       ? output::jsonText(connectionObject(row))
                       : std::string();
        });
        printList("parameters", checked_.parameters, [this](const ParameterRow& row) {
            return output::jsonText(parameterObject(row));
        });
        printList("structs", checked_.structs, [](const StructRow& row) {
            return output::jsonText(output::jsonObject(row, jsonStructColumns));
        });
        printList("facts", checked_.facts, [](const dims::DimsFact& fact) {
            return output::jsonText(output::jsonObject(fact, dims::factColumns));
        });
        printFindings();
        printCount("errors", Severity::Error);
        printCount("warnings", Severity::Warning);
        printCount("notes", Severity::Note);
        os_ << "}\n";
    }

  private:
    /// Prints a member with a list of objects; rows with an empty text are omitted.
    template <class Row, class Function>
    void printList(const char* name, const std::vector<Row>& rows, Function text) {
        const char* separator = "";
        os_ << ",\"" << name << "\":[";
        for (const Row& row : rows) {
            const std::string object = text(row);
            if (!object.empty()) {
                os_ << separator << object;
                separator = ",";
            }
        }
        os_ << ']';
    }

    json::object connectionObject(const ConnectionRow& row) const {
        return {{"system", jsonValue(*paths_.at(row.system))},
                {"source", endObject(row.source)},
                {"target", endObject(row.target)},
                {"reversed", row.isReversed},
                {"effects", effectNames(row)},
                {"factor", jsonValue(row.factor)},
                {"offset", jsonValue(row.offset)},
                {"file", row.system->file->file.path},
                {"line", row.record->place.line},
                {"findings", codeNames(row.codes)}};
    }

    static std::string placeText(const ParameterRow& row) {
        return row.set->file->path + ':' + std::to_string(row.parameter->place.line);
    }

    json::object parameterObject(const ParameterRow& row) const {
        const std::string overriding =
            row.overriddenBy ? placeText(checked_.parameters[*row.overriddenBy]) : std::string();
        return {{"target", row.target},
                {"value", jsonValue(row.value)},
                {"unit", jsonValue(row.unit)},
                {"applied", jsonValue(row.applied)},
                {"targetUnit", jsonValue(row.targetUnit)},
                {"file", row.set->file->path},
                {"line", row.parameter->place.line},
                {"overriddenBy", jsonValue(overriding)},
                {"findings", codeNames(row.codes)}};
    }

    void printFindings() {
        const char* separator = "";
        os_ << ",\"findings\":[";
        for (const ssp::File* const file : checked_.files()) {
            for (const findings::Finding& finding : file->findings.all()) {
                os_ << separator << output::jsonText(findings::jsonObject(finding, file->path));
                separator = ",";
            }
        }
        os_ << ']';
    }

    void printCount(const char* name, Severity severity) {
        os_ << ",\"" << name << "\":" << countFindings(checked_, severity);
    }

    const Report& report_;
    const systems::CheckedSystem& checked_;
    std::ostream& os_;
    std::unordered_map<const ssp::Element*, const std::string*> paths_;
};

} // namespace

void printJson(const Report& report, std::ostream& os) { JsonReport(report, os).print(); }

} // namespace tvtool::systemreport
