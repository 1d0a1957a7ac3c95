/// \file
/// The units and the array dimensions of a model as rows of the inspection report.
#pragma once

#include "model/model.h"
#include "output/columns.h"

#include <optional>
#include <string>
#include <vector>

namespace tvtool::model {

/// One unit that the model defines or uses. Texts are not safe to print.
struct UnitRow {
    std::string name;
    std::optional<int> id;              ///< empty if the unit table cannot represent the unit
    std::string expression;             ///< in the unit table
    const char* source = "";            ///< of the expression: "name", "reading" or "base units"
    std::string baseUnits;              ///< with factor and offset; empty if the model gives none
    std::vector<std::string> variables; ///< names of the variables that have the unit
};

/// Returns the units in the order of the description.
std::vector<UnitRow> unitRows(const Model& model);

extern const output::Columns<UnitRow> unitColumns;

/// The dimensions of arrays: a size, or a list of sizes.
struct DimensionRow {
    int id = 0; ///< in the table of symbolic dimensions
    std::string text;
    std::vector<std::string> variables; ///< names of the variables that have the dimensions
};

/// Returns the distinct dimensions in the order of the description.
std::vector<DimensionRow> dimensionRows(const Model& model);

extern const output::Columns<DimensionRow> dimensionColumns;

} // namespace tvtool::model
