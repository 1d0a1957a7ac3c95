#include "dims/json.h"

#include "text/safe_text.h"

#include <boost/json.hpp>

namespace tvtool::dims {

namespace {

namespace json = boost::json;

json::value textOrNull(const std::string& text) {
    return text.empty() ? json::value(nullptr) : json::value(text);
}

json::value lineOrNull(std::uint64_t line) {
    return line == 0 ? json::value(nullptr) : json::value(line);
}

json::object jsonOf(const DimsReason& reason) {
    json::array steps;
    for (const DimsStep& step : reason.steps) {
        steps.push_back(json::object{{"text", step.text},
                                     {"line", lineOrNull(step.line)},
                                     {"block", textOrNull(step.block)}});
    }
    return {{"steps", std::move(steps)},
            {"omitted", reason.omitted},
            {"sentence", textOrNull(reason.sentence)}};
}

void print(const json::object& object, std::ostream& os) {
    os << text::safeText(json::serialize(object)) << '\n';
}

} // namespace

json::array jsonOf(const std::vector<DimsFact>& facts) {
    json::array rows;
    for (const DimsFact& fact : facts) {
        rows.push_back(json::object{
            {"id", fact.id}, {"text", fact.text}, {"blocks", json::value_from(fact.blocks)}});
    }
    return rows;
}

void printJson(const std::vector<DimsSheet>& sheets, std::ostream& os) {
    json::array dimensions;
    for (const DimsSheet& sheet : sheets) {
        const bool isList = !sheet.size.empty();
        dimensions.push_back(json::object{
            {"text", sheet.text},
            {"id", sheet.id},
            {"simplified", sheet.simplified},
            {"simplifiedId", sheet.simplifiedId},
            {"size", textOrNull(sheet.size)},
            {"sizeId", isList ? json::value(sheet.sizeId) : json::value(nullptr)},
            {"obstacle", textOrNull(sheet.obstacle)},
            {"equals", sheet.equal ? json::value(*sheet.equal) : json::value(nullptr)}});
    }
    print({{"dimensions", std::move(dimensions)}}, os);
}

void printJson(const FactReport& report, std::ostream& os) {
    json::array answers;
    for (const DimsAnswer& answer : report.answers) {
        answers.push_back(json::object{{"line", answer.line},
                                       {"text", answer.text},
                                       {"answer", nameOf(answer.library)},
                                       {"follows", nameOf(answer.all)},
                                       {"because", jsonOf(answer.reason)}});
    }
    json::array contradictions;
    for (const DimsObjection& objection : report.objections) {
        contradictions.push_back(json::object{{"line", objection.line},
                                              {"text", objection.text},
                                              {"block", textOrNull(objection.block)},
                                              {"refused", objection.isRefused},
                                              {"because", jsonOf(objection.reason)}});
    }
    json::array notes;
    for (const DimsNote& note : report.notes) {
        notes.push_back(json::object{{"line", lineOrNull(note.line)}, {"sentence", note.sentence}});
    }
    json::array faults;
    for (const DimsFault& fault : report.faults) {
        faults.push_back(json::object{
            {"line", fault.line}, {"column", fault.column}, {"sentence", fault.sentence}});
    }
    print({{"file", report.file},
           {"stated", report.stated},
           {"answers", std::move(answers)},
           {"contradictions", std::move(contradictions)},
           {"notes", std::move(notes)},
           {"facts", jsonOf(report.facts)},
           {"faults", std::move(faults)},
           {"lastLine", lineOrNull(report.lastLine)}},
          os);
}

} // namespace tvtool::dims
