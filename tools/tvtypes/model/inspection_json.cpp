#include "model/inspection_json.h"

#include "dims/json.h"
#include "text/safe_text.h"

#include <boost/json.hpp>

namespace tvtool::model {

namespace {

namespace json = boost::json;

json::value textOrNull(const std::string& text) {
    return text.empty() ? json::value(nullptr) : json::value(text);
}

json::value countOrNull(const TypeRow& type, int count) {
    return type.kind == Kind::Struct ? json::value(count) : json::value(nullptr);
}

json::array typesOf(const Findings& findings) {
    json::array types;
    for (const TypeRow& type : findings.types) {
        types.push_back(json::object{{"id", type.id},
                                     {"name", type.name},
                                     {"kind", nameOf(type.kind)},
                                     {"size", type.size},
                                     {"storage", textOrNull(type.storage)},
                                     {"aliasOf", textOrNull(type.aliasOf)},
                                     {"variables", type.variables},
                                     {"originalName", textOrNull(type.originalName)},
                                     {"elements", countOrNull(type, type.elements)},
                                     {"leaves", countOrNull(type, type.leaves)}});
    }
    return types;
}

json::array outsideOf(const Findings& findings) {
    json::array rows;
    for (const OutsideRow& row : findings.outside) {
        rows.push_back(json::object{
            {"baseType", row.baseType}, {"variables", row.variables}, {"types", row.types}});
    }
    return rows;
}

json::array unitsOf(const Findings& findings) {
    json::array units;
    for (const UnitRow& unit : findings.units) {
        const bool hasPlace = unit.source != UnitSource::Nothing;
        units.push_back(json::object{{"name", unit.name},
                                     {"id", hasPlace ? json::value(unit.id) : json::value(nullptr)},
                                     {"expression", textOrNull(unit.expression)},
                                     {"from", textOrNull(nameOf(unit.source))},
                                     {"baseUnits", textOrNull(unit.baseUnits)},
                                     {"variables", json::value_from(unit.variables)}});
    }
    return units;
}

json::array dimensionsOf(const Findings& findings) {
    json::array rows;
    for (const DimensionRow& row : findings.dimensions) {
        rows.push_back(json::object{
            {"id", row.id}, {"text", row.text}, {"variables", json::value_from(row.variables)}});
    }
    return rows;
}

json::array remarksOf(const std::vector<fmi::Remark>& remarks) {
    json::array rows;
    for (const fmi::Remark& remark : remarks) {
        rows.push_back(json::object{
            {"element", remark.element},
            {"line", remark.line == 0 ? json::value(nullptr) : json::value(remark.line)},
            {"sentence", remark.sentence},
            {"count", remark.count}});
    }
    return rows;
}

} // namespace

void printJson(const Findings& findings, std::ostream& os) {
    const json::object report{{"file", findings.file},
                              {"fmiVersion", findings.fmiVersion},
                              {"modelName", findings.modelName},
                              {"variables", findings.variables},
                              {"types", typesOf(findings)},
                              {"outside", outsideOf(findings)},
                              {"units", unitsOf(findings)},
                              {"dimensions", dimensionsOf(findings)},
                              {"facts", jsonOf(findings.facts)},
                              {"problems", remarksOf(findings.remarks.problems())},
                              {"notes", remarksOf(findings.remarks.notes())}};
    // JSON lets most control characters stand; a terminal would obey them.
    os << text::safeText(json::serialize(report)) << '\n';
}

} // namespace tvtool::model
