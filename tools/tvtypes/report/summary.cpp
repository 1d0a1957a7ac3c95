// The first line of a report.
#include "findings/text.h"
#include "report/inspection.h"
#include "text/quote.h"
#include "text/safe_text.h"

#include <fmt/format.h>

#include <cstddef>

namespace tvtool::report {

using findings::Severity;

std::string summaryText(const model::Model& model, const std::string& file,
                        const Variables& variables) {
    const fmi::Description& description = *model.description;
    std::string counts = text::counted(description.variables.size(), "variable", "variables");
    const auto add = [&](Section section, const char* one, const char* many) {
        if (const std::size_t count = variables.count(section); count > 0) {
            counts += ", " + text::counted(count, one, many);
        }
    };
    add(Section::Inputs, "input", "inputs");
    add(Section::Outputs, "output", "outputs");
    add(Section::Parameters, "parameter", "parameters");
    return fmt::format("{}: FMI {}, model \"{}\": {}; {}", text::safeText(file),
                       text::safeText(description.fmiVersion),
                       text::safeText(description.modelName), counts,
                       findings::countsText(model.findings.count(Severity::Error),
                                            model.findings.count(Severity::Warning),
                                            model.findings.count(Severity::Note)));
}

} // namespace tvtool::report
