/// \file
/// A model description with its types, units and dimensions in tables.
#pragma once

#include "findings/findings.h"
#include "fmi/description.h"
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
    /// Reads a description. `opening` are the findings from opening its source. Throws a
    /// files::ReadError, also if there are more than 2 million variables, 200000 types or 50000
    /// units.
    Model(const exchange::Source& source, findings::Findings opening);
    Model(const Model&) = delete;
    Model& operator=(const Model&) = delete;

    findings::Findings findings;
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
