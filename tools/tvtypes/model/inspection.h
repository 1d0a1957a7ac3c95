/// \file
/// The inspection of one model description.
#pragma once

#include "dims/fact_records.h"
#include "findings/findings.h"
#include "model/model.h"

#include <cstddef>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace tvtool::model {

/// One type that the model declares or uses.
struct TypeRow {
    int id = 0;
    std::string name;
    const char* kind = "";     ///< "built-in", "alias", "enumerated", "fixed-point" or "struct"
    int size = 0;              ///< bytes of a value
    std::string storage;       ///< the built-in type that stores its values; empty if there is none
    std::string aliasOf;       ///< empty for a type that is no alias
    std::size_t variables = 0; ///< number of variables of this type, or inside a struct type
    std::string originalName;  ///< in the description, if it differs; else empty
    std::optional<int> elements = std::nullopt; ///< number of elements of a struct type
    std::optional<int> leaves = std::nullopt; ///< number of those that are no structs, at any depth
};

/// The number of variables and types of one base type that the table cannot represent.
struct OutsideRow {
    std::string baseType;
    std::size_t variables = 0;
    std::size_t types = 0;
};

/// One unit that the model defines or uses.
struct UnitRow {
    std::string name;
    std::optional<int> id;              ///< empty if the unit table cannot represent the unit
    std::string expression;             ///< in the unit table
    const char* source = "";            ///< of the expression: "name", "reading" or "base units"
    std::string baseUnits;              ///< with factor and offset; empty if the model gives none
    std::vector<std::string> variables; ///< names of the variables that have the unit
};

/// The dimensions of arrays: a size, or a list of sizes.
struct DimensionRow {
    int id = 0; ///< in the table of symbolic dimensions
    std::string text;
    std::vector<std::string> variables; ///< names of the variables that have the dimensions
};

/// The result of an inspection, from which every form of the report is printed. Texts are not safe
/// to print.
struct Inspection {
    std::string file;
    std::string fmiVersion;
    std::string modelName;
    std::size_t variables = 0;
    std::vector<TypeRow> types; ///< those that the model registered, and those of the table that it
                                ///< uses or makes an alias of, in the order of their ids
    std::vector<OutsideRow> outside;
    std::vector<UnitRow> units;           ///< in the order of the description
    std::vector<DimensionRow> dimensions; ///< in the order of the description
    std::vector<dims::DimsFact> facts;    ///< about sizes, implied by the description
    findings::Findings findings;
};

Inspection inspect(const Model& model, std::string file);

/// Prints the report as text.
void printText(const Inspection& inspection, bool colour, std::ostream& os);
/// Prints the report as one JSON object in one line. Absent values are null.
void printJson(const Inspection& inspection, std::ostream& os);

} // namespace tvtool::model
