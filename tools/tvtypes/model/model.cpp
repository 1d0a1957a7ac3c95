#include "model/model.h"

#include "fmi/reader.h"

#include <utility>

namespace tvtool::model {

namespace {

std::unique_ptr<const fmi::Description> readChecked(const fmi::Source& source,
                                                    fmi::Remarks& remarks) {
    std::unique_ptr<fmi::Description> description = fmi::readDescription(source, remarks);
    fmi::checkDescription(*description, remarks);
    return description;
}

} // namespace

Model::Model(const fmi::Source& source, fmi::Remarks opening)
    : remarks(std::move(opening)),
      description(readChecked(source, remarks)),
      types(*description, remarks),
      units(*description, remarks),
      dimensions(*description, remarks),
      structs(*description, units, types, remarks) {
    remarks.sort();
}

std::unique_ptr<Model> readModel(const std::string& path) {
    fmi::Remarks remarks;
    const fmi::Source source = fmi::openSource(path, remarks);
    return std::make_unique<Model>(source, std::move(remarks));
}

} // namespace tvtool::model
