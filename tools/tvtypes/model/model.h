/// \file
/// A model description with its types in a table.
#pragma once

#include "fmi/description.h"
#include "fmi/remarks.h"
#include "fmi/source.h"
#include "model/dimensions.h"
#include "model/structs.h"
#include "model/types.h"
#include "model/units.h"

#include <memory>
#include <vector>

namespace tvtool::model {

class Model {
  public:
    /// Reads a description, of which `said` is what has been noticed so far. Throws a
    /// files::ReadError.
    Model(fmi::Source& source, fmi::Remarks said);
    Model(const Model&) = delete;
    Model& operator=(const Model&) = delete;

    fmi::Remarks remarks;
    const std::unique_ptr<const fmi::Description> description;
    Types types;
    const std::vector<int> variableIds; ///< the type of each variable
    const Units units;
    const Dimensions dimensions;
    const Structs structs;
};

/// Reads the description in a file, or in the archive that holds one. Throws a files::ReadError.
std::unique_ptr<Model> readModel(const std::string& path);

} // namespace tvtool::model
