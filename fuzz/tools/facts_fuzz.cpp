// Any bytes as a file of facts: an error, or a report that is safe to print. The listed facts and
// the JSON are files of facts themselves, with the same facts.
#include "dims/fact_file.h"
#include "dims/report.h"
#include "files/read_error.h"
#include "support/output.h"
#include "text/safe_text.h"

#include <cstdint>
#include <set>
#include <sstream>
#include <string>

namespace {

using namespace tvtool;
using namespace fuzzing;

dims::FactReport readText(const std::string& text) {
    std::istringstream is(text);
    dims::FactReport report = dims::readFacts(is);
    report.file = "f";
    return report;
}

/// Returns the facts as they are printed.
std::multiset<std::string> factTexts(const dims::FactReport& report) {
    std::multiset<std::string> texts;
    for (const dims::DimsFact& fact : report.facts) {
        texts.insert(text::safeText(fact.text));
    }
    return texts;
}

void check(const dims::FactReport& report) {
    checkText(printed([&](std::ostream& os) { dims::printText(report, false, false, os); }));
    const std::string listed =
        printed([&](std::ostream& os) { dims::printText(report, true, false, os); });
    const std::string json = printed([&](std::ostream& os) { dims::printJson(report, os); });
    checkText(listed);
    checkJson(json);
    if (!report.faults.empty()) {
        return;
    }
    for (const std::string& text : {listed, json}) {
        const dims::FactReport again = readText(text);
        require(again.faults.empty());
        require(again.areWhole == report.areWhole);
        require(factTexts(again) == factTexts(report));
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    try {
        check(readText(std::string(reinterpret_cast<const char*>(data), size)));
    } catch (const files::ReadError&) {
        // The bytes are no text.
    }
    return 0;
}
