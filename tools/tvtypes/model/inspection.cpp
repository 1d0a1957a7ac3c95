#include "model/inspection.h"

#include <memory>
#include <utility>

namespace tvtool::model {

namespace {

Inspection inspect(Model& model) {
    Inspection inspection;
    inspection.fmiVersion = model.description->fmiVersion;
    inspection.modelName = model.description->modelName;
    inspection.variables = model.description->variables.size();
    inspection.types = typeRows(model);
    inspection.outside = outsideRows(*model.description);
    inspection.units = unitRows(model);
    inspection.dimensions = dimensionRows(model);
    inspection.facts = model.dimensions.facts();
    inspection.remarks = std::move(model.remarks);
    return inspection;
}

} // namespace

Inspection inspectSource(fmi::Source& source, fmi::Remarks remarks) {
    Model model(source, std::move(remarks));
    return inspect(model);
}

Inspection inspectFile(const std::string& path) {
    const std::unique_ptr<Model> model = readModel(path);
    Inspection inspection = inspect(*model);
    inspection.file = path;
    return inspection;
}

} // namespace tvtool::model
