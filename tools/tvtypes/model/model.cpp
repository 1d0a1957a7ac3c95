#include "model/model.h"

#include "fmi/reader.h"

#include <utility>

namespace tvtool::model {

namespace {

std::unique_ptr<const fmi::Description> readChecked(const exchange::Source& source,
                                                    findings::Findings& findings) {
    std::unique_ptr<fmi::Description> description = fmi::readDescription(source, findings);
    fmi::checkDescription(*description, findings);
    return description;
}

} // namespace

Model::Model(const exchange::Source& source, findings::Findings opening)
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
    const exchange::Source source = fmi::openSource(path, findings);
    return std::make_unique<Model>(source, std::move(findings));
}

} // namespace tvtool::model
