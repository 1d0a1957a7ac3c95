/// \file
/// The types of a model as rows of the inspection report.
#pragma once

#include "model/model.h"
#include "output/columns.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace tvtool::model {

/// One type that the model declares or uses. Texts are not safe to print.
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
    std::optional<int> leaves =
        std::nullopt; ///< number of elements of a struct type that are no structs
};

/// Returns the types that the model registered and those of the table's own that it uses or makes
/// an alias of, in the order of their ids.
std::vector<TypeRow> typeRows(const Model& model);

extern const output::Columns<TypeRow> typeColumns;

/// The number of variables and types of one base type that the table cannot represent.
struct OutsideRow {
    std::string baseType;
    std::size_t variables = 0;
    std::size_t types = 0;
};

std::vector<OutsideRow> outsideRows(const fmi::Description& description);

extern const output::Columns<OutsideRow> outsideColumns;

} // namespace tvtool::model
