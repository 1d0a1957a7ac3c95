/// \file
/// A model description with its types, units and dimensions in tables.
#pragma once

#include "fmi/description.h"
#include "fmi/remarks.h"
#include "fmi/source.h"
#include "model/dimensions.h"
#include "model/structs.h"
#include "model/types.h"
#include "model/units.h"

#include <memory>
#include <string>

namespace tvtool::model {

class Model {
  public:
    /// Reads a description. `opening` are the remarks from opening its source. Throws a
    /// files::ReadError.
    Model(const fmi::Source& source, fmi::Remarks opening);
    Model(const Model&) = delete;
    Model& operator=(const Model&) = delete;

    fmi::Remarks remarks;
    const std::unique_ptr<const fmi::Description> description;
    Types types;
    const Units units;
    const Dimensions dimensions;
    const Structs structs;
};

/// Reads the description in a file, or in the archive that contains one. Throws a
/// files::ReadError.
std::unique_ptr<Model> readModel(const std::string& path);

} // namespace tvtool::model
