#include "findings/json.h"

#include "output/json.h"

#include <cstdint>

namespace tvtool::findings {

namespace json = boost::json;
using output::jsonValue;

const char* kindName(SubjectKind kind) {
    switch (kind) {
    case SubjectKind::Variable:
        return "variable";
    case SubjectKind::Type:
        return "type";
    case SubjectKind::Unit:
        return "unit";
    case SubjectKind::DisplayUnit:
        return "displayUnit";
    case SubjectKind::Dimension:
        return "dimension";
    case SubjectKind::Struct:
        return "struct";
    case SubjectKind::Element:
        return "element";
    case SubjectKind::Connector:
        return "connector";
    case SubjectKind::Connection:
        return "connection";
    case SubjectKind::Parameter:
        return "parameter";
    case SubjectKind::Fact:
        return "fact";
    case SubjectKind::Value:
        return "value";
    default:
        return "file";
    }
}

json::object jsonObject(const Finding& finding, std::string_view file) {
    const Rule& rule = ruleOf(finding.code);
    const auto position = [](std::uint32_t number) {
        return number == 0 ? json::value(nullptr) : json::value(number);
    };
    return {{"code", rule.name},
            {"severity", severityName(rule.severity)},
            {"file", jsonValue(file)},
            {"line", position(finding.line)},
            {"column", position(finding.column)},
            {"element", jsonValue(finding.element)},
            {"subject",
             {{"kind", kindName(finding.subject)}, {"name", jsonValue(finding.subjectName)}}},
            {"sentence", finding.sentence},
            {"advice", jsonValue(rule.advice)},
            {"count", finding.count},
            {"lastLine", position(finding.lastLine)}};
}

json::array jsonArray(const std::vector<Finding>& findings, std::string_view file) {
    json::array array;
    array.reserve(findings.size());
    for (const Finding& finding : findings) {
        array.push_back(jsonObject(finding, file));
    }
    return array;
}

void printJson(const std::vector<Finding>& findings, std::string_view file, std::ostream& os) {
    const char* separator = "";
    os << '[';
    for (const Finding& finding : findings) {
        os << separator << output::jsonText(jsonObject(finding, file));
        separator = ",";
    }
    os << ']';
}

} // namespace tvtool::findings
