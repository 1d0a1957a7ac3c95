#include "model/model.h"

#include "fmi/checks.h"
#include "fmi/reader.h"

#include <utility>

namespace tvtool::model {

namespace {

std::unique_ptr<const fmi::Description> checkedDescription(fmi::Source& source,
                                                           fmi::Remarks& remarks) {
    std::unique_ptr<fmi::Description> description = fmi::readDescription(source, remarks);
    fmi::checkDescription(*description, remarks);
    return description;
}

std::vector<int> idsOf(const fmi::Description& description, Types& types) {
    std::vector<int> ids;
    ids.reserve(description.variables.size());
    for (const fmi::Variable& variable : description.variables) {
        ids.push_back(types.idOf(variable));
    }
    return ids;
}

} // namespace

Model::Model(fmi::Source& source, fmi::Remarks said)
    : remarks(std::move(said)),
      description(checkedDescription(source, remarks)),
      types(*description, remarks),
      variableIds(idsOf(*description, types)),
      units(*description, remarks),
      dimensions(*description, remarks),
      structs(*description, {variableIds, units.variableIds()}, types, remarks) {
    remarks.sort();
}

std::unique_ptr<Model> readModel(const std::string& path) {
    fmi::Remarks remarks;
    const std::unique_ptr<fmi::Source> source = fmi::openSource(path, remarks);
    return std::make_unique<Model>(*source, std::move(remarks));
}

} // namespace tvtool::model
