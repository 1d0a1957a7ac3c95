/// \file
/// The inspection of one model description.
#pragma once

#include "dims/fact_records.h"
#include "fmi/remarks.h"
#include "fmi/source.h"
#include "model/type_rows.h"
#include "model/unit_rows.h"

#include <cstddef>
#include <string>
#include <vector>

namespace tvtool::model {

/// The result of an inspection, from which every form of the report is printed. Texts are not safe
/// to print.
struct Inspection {
    std::string file;
    std::string fmiVersion;
    std::string modelName;
    std::size_t variables = 0;
    std::vector<TypeRow> types;
    std::vector<OutsideRow> outside;
    std::vector<UnitRow> units;
    std::vector<DimensionRow> dimensions;
    std::vector<dims::DimsFact> facts; ///< about sizes, implied by the description
    fmi::Remarks remarks;
};

/// Inspects a description. `remarks` are those that opening it has produced; the result's `file` is
/// empty. Throws a files::ReadError.
Inspection inspectSource(fmi::Source& source, fmi::Remarks remarks);

/// Inspects the description in a file, or in the archive that contains one. Throws a
/// files::ReadError.
Inspection inspectFile(const std::string& path);

} // namespace tvtool::model
