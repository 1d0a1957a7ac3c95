#include "model/layout_json.h"

#include "text/safe_text.h"

#include <boost/json.hpp>

namespace tvtool::model {

namespace {

namespace json = boost::json;

json::value textOrNull(const std::string& text) {
    return text.empty() ? json::value(nullptr) : json::value(text);
}

json::value numberOrNull(int number) {
    return number == noNumber ? json::value(nullptr) : json::value(number);
}

json::array rowsOf(const StructMap& map) {
    json::array rows;
    rows.reserve(map.rows.size());
    for (const LayoutRow& row : map.rows) {
        rows.push_back(json::object{{"kind", nameOf(row.kind)},
                                    {"depth", row.depth},
                                    {"offset", row.offset},
                                    {"size", row.size},
                                    {"path", textOrNull(row.path)},
                                    {"type", textOrNull(row.type)},
                                    {"dfs", numberOrNull(row.dfs)},
                                    {"flat", numberOrNull(row.flat)},
                                    {"raw", numberOrNull(row.raw)}});
    }
    return rows;
}

} // namespace

void printLayoutJson(const LayoutFindings& findings, std::ostream& os) {
    json::array structs;
    for (const StructMap& map : findings.structs) {
        structs.push_back(json::object{{"id", map.id},
                                       {"name", map.name},
                                       {"originalName", textOrNull(map.originalName)},
                                       {"size", map.size},
                                       {"alignment", map.alignment},
                                       {"elements", map.elements},
                                       {"leaves", map.leaves},
                                       {"scalars", map.scalars},
                                       {"rows", rowsOf(map)}});
    }
    const json::object report{
        {"file", findings.file}, {"problems", findings.problems}, {"structs", std::move(structs)}};
    os << text::safeText(json::serialize(report)) << '\n';
}

} // namespace tvtool::model
