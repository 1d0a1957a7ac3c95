#include "model/model.h"

#include "fmi/reader.h"

#include <fmt/format.h>

#include <cstddef>
#include <utility>

namespace tvtool::model {

namespace {

// Limits of time and memory, far above the descriptions of real models.
constexpr std::size_t mostVariables = 2'000'000;
constexpr std::size_t mostTypes = 200'000;
constexpr std::size_t mostUnits = 50'000;

void checkLimit(std::size_t count, std::size_t limit, const char* things) {
    if (count > limit) {
        throw files::ReadError(
            fmt::format("the description has {} {}; at most {} are read", count, things, limit));
    }
}

std::unique_ptr<const fmi::Description> readChecked(const fmi::Source& source,
                                                    findings::Findings& findings) {
    std::unique_ptr<fmi::Description> description = fmi::readDescription(source, findings);
    checkLimit(description->variables.size(), mostVariables, "variables");
    checkLimit(description->types.size(), mostTypes, "types");
    fmi::checkDescription(*description, findings);
    // Units that are used without a definition were added.
    checkLimit(description->units.size(), mostUnits, "units");
    return description;
}

} // namespace

Model::Model(const fmi::Source& source, findings::Findings opening)
    : findings(std::move(opening)),
      description(readChecked(source, findings)),
      types(*description, findings),
      units(*description, findings),
      dimensions(*description, findings),
      structs(*description, units, types, findings) {
    findings.sort();
}

std::unique_ptr<Model> readModel(const std::string& path) {
    findings::Findings findings;
    const fmi::Source source = fmi::openSource(path, findings);
    return std::make_unique<Model>(source, std::move(findings));
}

} // namespace tvtool::model
