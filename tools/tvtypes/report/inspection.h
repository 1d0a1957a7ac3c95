/// \file
/// The inspection of one model description.
#pragma once

#include "dims/fact_records.h"
#include "model/model.h"
#include "report/options.h"
#include "report/variables.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace tvtool::report {

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
    const fmi::TypeDefinition* definition =
        nullptr; ///< null if the description does not declare it
    /// The variables of this type, or the instances of a struct type; see Inspection::userName().
    std::vector<std::uint32_t> users;

    bool isStruct() const { return elements.has_value(); }
};

/// The number of variables and types of one base type that the table cannot represent.
struct OutsideRow {
    std::string_view baseType;
    std::size_t variables = 0;
    std::size_t types = 0;
};

/// One unit that the model defines or uses.
struct UnitRow {
    const exchange::UnitDefinition* definition = nullptr;
    std::optional<int> id;            ///< empty if the unit table cannot represent the unit
    std::string_view expression;      ///< in the unit table
    std::string_view source;          ///< of the expression: "name", "reading" or "base units"
    std::string baseUnits;            ///< with factor and offset; empty if the model gives none
    std::vector<std::uint32_t> users; ///< the variables that have the unit
};

/// The dimensions of arrays: a size, or a list of sizes.
struct DimensionRow {
    int id = 0; ///< in the table of symbolic dimensions
    std::string text;
    std::vector<std::uint32_t> users; ///< the variables that have the dimensions
};

/// The result of an inspection, from which every form of the report is printed. Texts are not safe
/// to print.
class Inspection {
  public:
    /// \param model must outlive the inspection
    Inspection(const model::Model& model, std::string file, Options options);

    const fmi::Description& description() const { return *model.description; }
    /// Returns the name of one of TypeRow::users.
    std::string userName(const TypeRow& type, std::uint32_t user) const;
    std::string_view variableName(std::uint32_t variable) const {
        return description().variables[variable].name;
    }

    const model::Model& model;
    const std::string file;
    const Options options;
    const Variables variables;
    std::vector<TypeRow> types; ///< those that the model registered, and those of the table that it
                                ///< uses or makes an alias of, in the order of their ids
    std::vector<OutsideRow> outside;
    std::vector<UnitRow> units;           ///< in the order of the description
    std::vector<DimensionRow> dimensions; ///< in the order of the description
    std::vector<dims::DimsFact> facts;    ///< about sizes, implied by the description
};

/// Returns "FILE: FMI 3.0, model "M": 3 variables, ...; 1 error, no warnings, no notes".
std::string summaryText(const model::Model& model, const std::string& file,
                        const Variables& variables);

/// Prints the report as text: the variables first, the findings last.
void printText(const Inspection& inspection, bool colour, std::ostream& os);
/// Prints the report as one JSON object in one line. Absent values are null.
void printJson(const Inspection& inspection, std::ostream& os);

} // namespace tvtool::report
